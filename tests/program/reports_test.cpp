// Real and made reports through the program: each NAME.txt of the reports folder with its table NAME.csv, or refused
// with the message NAME.err.
#include "support/ProgramRun.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

std::vector<std::string> reportNames() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(CORVANE_REPORTS)) {
        if (entry.path().extension() == ".txt") {
            names.push_back(entry.path().stem().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string testName(const testing::TestParamInfo<std::string>& info) {
    std::string name = info.param;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}

class Report : public testing::TestWithParam<std::string> {};

}  // namespace

TEST_P(Report, GivesItsTableOrItsMessage) {
    const std::string base = std::string(CORVANE_REPORTS) + "/" + GetParam();
    const bool decoded = fs::exists(base + ".csv");
    ASSERT_NE(decoded, fs::exists(base + ".err")) << "a report has a table or a message";

    const ProgramRun named = runProgram({base + ".txt"});
    EXPECT_EQ(named.exitStatus, decoded ? 0 : 1);
    EXPECT_EQ(named.output, decoded ? contentOf(base + ".csv") : "");
    EXPECT_EQ(named.errors, decoded ? "" : contentOf(base + ".err"));

    Streams streams;
    streams.input = contentOf(base + ".txt");
    const ProgramRun piped = runProgram({}, streams);
    EXPECT_EQ(piped.exitStatus, named.exitStatus);
    EXPECT_EQ(piped.output, named.output);
    EXPECT_EQ(piped.errors, named.errors);
}

INSTANTIATE_TEST_SUITE_P(Reports, Report, testing::ValuesIn(reportNames()), testName);

TEST(Reports, NoExpectationIsLeftWithoutItsReport) {
    for (const auto& entry : fs::directory_iterator(CORVANE_REPORTS)) {
        const fs::path path = entry.path();
        if (path.extension() == ".csv" || path.extension() == ".err") {
            EXPECT_TRUE(fs::exists(fs::path(path).replace_extension(".txt"))) << path;
        }
    }
}
