// The seeds of the fuzz targets and the reports, each through its target once, with whatever compiler there is. A
// property that does not hold ends the test with a message on standard error.
#include "../../fuzz/Properties.h"
#include "support/ProgramRun.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

// The entry points of the targets, each by the name that the build gives it here.
extern "C" {
int fuzzAnyBytes(const std::uint8_t* data, std::size_t size);
int fuzzGroups(const std::uint8_t* data, std::size_t size);
int fuzzProgram(const std::uint8_t* data, std::size_t size);
}

namespace {

namespace fs = std::filesystem;

struct Replay {
    std::string target;
    int (*run)(const std::uint8_t*, std::size_t);
    fs::path file;
};

std::vector<fs::path> filesOf(const fs::path& folder) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<fs::path> seedsOf(const std::string& target) {
    return filesOf(fs::path(CORVANE_FUZZ_SEEDS) / target);
}

std::vector<Replay> replays() {
    std::vector<Replay> all;
    const std::vector<Replay> targets{
        {"any_bytes", fuzzAnyBytes, {}}, {"groups", fuzzGroups, {}}, {"program", fuzzProgram, {}}};
    for (const Replay& target : targets) {
        for (const fs::path& seed : seedsOf(target.target)) {
            all.push_back({target.target, target.run, seed});
        }
        for (const fs::path& report : filesOf(CORVANE_REPORTS)) {
            if (report.extension() == ".txt") {
                all.push_back({target.target, target.run, report});
            }
        }
    }
    return all;
}

std::string testName(const testing::TestParamInfo<Replay>& info) {
    std::string name = info.param.target + "_" + info.param.file.filename().string();
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}

// The named seeds of what a report may hold; all others may be garbled.
bool isWellFormed(const fs::path& seed) {
    const std::string name = seed.filename().string();
    return name.rfind("form-", 0) == 0 || name.rfind("heading-", 0) == 0 || name.rfind("section-", 0) == 0 ||
           name.rfind("remark-", 0) == 0;
}

class FuzzReplay : public testing::TestWithParam<Replay> {};

}  // namespace

TEST_P(FuzzReplay, HoldsEveryProperty) {
    const std::string content = contentOf(GetParam().file.string());
    const std::vector<std::uint8_t> bytes(content.begin(), content.end());
    EXPECT_EQ(GetParam().run(bytes.data(), bytes.size()), 0);
}

INSTANTIATE_TEST_SUITE_P(Seeds, FuzzReplay, testing::ValuesIn(replays()), testName);

TEST(FuzzSeeds, EachTargetHasSeeds) {
    for (const char* target : {"any_bytes", "groups", "program"}) {
        EXPECT_FALSE(seedsOf(target).empty()) << target;
    }
}

TEST(FuzzSeeds, SeedsNamedForAFormASectionOrARemarkDecode) {
    for (const char* target : {"any_bytes", "program"}) {
        for (const fs::path& seed : seedsOf(target)) {
            if (isWellFormed(seed)) {
                const fuzz::Outcome outcome = fuzz::decode(contentOf(seed.string()));
                EXPECT_EQ(outcome.end, fuzz::End::DECODED) << seed << ": " << outcome.fault;
            }
        }
    }
}

TEST(FuzzSeeds, RemarksOfEachKindAreFiled) {
    const std::vector<std::pair<std::string, Corvane::LEVEL_TYPE>> remarks{
        {"remark-release-point", Corvane::LT_RELEASEPOINT},
        {"remark-splash-point-gps", Corvane::LT_SPLASHPOINTRAWGPS},
        {"remark-splash-point-wind", Corvane::LT_SPLASHPOINTWINDINTEG},
        {"remark-lowest-150-m-wind", Corvane::LT_150MLAYERWIND},
        {"remark-deep-layer-wind", Corvane::LT_DEEPLAYERWIND},
        {"remark-boundary-layer-wind", Corvane::LT_MEANBLWIND},
        {"remark-last-wind", Corvane::LT_LASTWINDHEIGHT},
    };
    for (const auto& remark : remarks) {
        const fs::path seed = fs::path(CORVANE_FUZZ_SEEDS) / "any_bytes" / remark.first;
        const fuzz::Outcome outcome = fuzz::decode(contentOf(seed.string()));
        ASSERT_EQ(outcome.end, fuzz::End::DECODED) << seed << ": " << outcome.fault;
        EXPECT_EQ(outcome.report->levels({remark.second}).size(), 1U) << seed;
    }
}

TEST(FuzzProperties, ViolationsEndTheProcess) {
    const fuzz::Outcome report = fuzz::decode("TTBB 56128 72201 00014 22556 31313 58708 81102");
    ASSERT_EQ(report.end, fuzz::End::DECODED);
    const std::string table = fuzz::tableOf(*report.report);
    EXPECT_DEATH(fuzz::tokensAreTheSplitText(*report.report, "TTBB 56128"), "VIOLATED: tokens");
    EXPECT_DEATH(fuzz::tableHasARowForEachLevel("type\n", *report.report), "VIOLATED: the table");
    EXPECT_DEATH(fuzz::tableHasARowForEachLevel(table + table, *report.report), "VIOLATED: the table");
    EXPECT_DEATH(fuzz::outcomesAgree("agreement", report, fuzz::decode("")), "VIOLATED: agreement");
    EXPECT_DEATH(fuzz::outcomesAgree("agreement", report, fuzz::decode("TTBB")), "VIOLATED: agreement");
}
