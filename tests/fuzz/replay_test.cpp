// The seeds of the fuzz targets and the reports, each through its target once, with whatever compiler there is. A
// property that is violated ends the test with a message on standard error.
#include "../../fuzz/Properties.h"
#include "support/Samples.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

// The entry points of the targets, each by the name that the build gives it here.
extern "C" {
int fuzzAnyBytes(const std::uint8_t* data, std::size_t size);
int fuzzBulletins(const std::uint8_t* data, std::size_t size);
int fuzzProgram(const std::uint8_t* data, std::size_t size);
}

namespace {

namespace fs = std::filesystem;

struct Target {
    std::string name;
    int (*run)(const std::uint8_t*, std::size_t);
};

const std::vector<Target> TARGETS{{"any_bytes", fuzzAnyBytes}, {"bulletins", fuzzBulletins}, {"program", fuzzProgram}};

std::vector<fs::path> seedsOf(const std::string& target) {
    return filesIn("fuzz/seeds/" + target);
}

// One file through one target.
struct Replay {
    Target target;
    fs::path file;
    std::string name;  // of the test: letters, digits and underscores
};

void PrintTo(const Replay& replay, std::ostream* os) {
    *os << replay.file.string() << " through " << replay.target.name;
}

std::vector<Replay> replays() {
    std::vector<Replay> all;
    std::set<std::string> names;
    const auto add = [&](const Target& target, const fs::path& file) {
        std::string name = target.name + "_" + file.filename().string();
        std::replace_if(
            name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
        // Two files may give the same name, such as a-b and a_b.
        while (!names.insert(name).second) {
            name += "_";
        }
        all.push_back({target, file, name});
    };
    for (const Target& target : TARGETS) {
        for (const fs::path& seed : seedsOf(target.name)) {
            add(target, seed);
        }
        for (const fs::path& report : reportSamples()) {
            add(target, report);
        }
    }
    return all;
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
    const std::string content = contentOf(GetParam().file);
    const std::vector<std::uint8_t> bytes(content.begin(), content.end());
    EXPECT_EQ(GetParam().target.run(bytes.data(), bytes.size()), 0);
}

INSTANTIATE_TEST_SUITE_P(Seeds, FuzzReplay, testing::ValuesIn(replays()),
                         [](const testing::TestParamInfo<Replay>& replay) { return replay.param.name; });

TEST(FuzzSeeds, EachTargetHasSeeds) {
    for (const Target& target : TARGETS) {
        EXPECT_FALSE(seedsOf(target.name).empty()) << target.name;
    }
}

TEST(FuzzSeeds, EachFolderOfSeedsHasItsTarget) {
    std::set<std::string> folders;
    for (const auto& entry : fs::directory_iterator(sourceFile("fuzz/seeds"))) {
        folders.insert(entry.path().filename().string());
    }
    std::set<std::string> targets;
    for (const Target& target : TARGETS) {
        targets.insert(target.name);
    }
    EXPECT_EQ(folders, targets);
}

TEST(FuzzSeeds, SeedsNamedForAFormASectionOrARemarkDecode) {
    for (const char* target : {"any_bytes", "program"}) {
        for (const fs::path& seed : seedsOf(target)) {
            if (isWellFormed(seed)) {
                const fuzz::Outcome outcome = fuzz::decode(contentOf(seed));
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
        const fs::path seed = sourceFile("fuzz/seeds/any_bytes") / remark.first;
        const fuzz::Outcome outcome = fuzz::decode(contentOf(seed));
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
