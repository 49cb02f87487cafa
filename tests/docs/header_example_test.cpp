// The guide at the top of Corvane.h: its code is compiled and run here, and what it says about its report holds.
#include "support/CapturedOutput.h"
#include "support/LevelMatchers.h"
#include "support/Samples.h"

#include <corvane/Corvane.h>

#include <gtest/gtest.h>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

// Corvane.h shows the body of this function, character by character.
void walkTheLevels(const std::string& text) {
    // clang-format off
    try {
        const Corvane report(text);
        for (const Corvane::Level& level : report.allLevels()) {
            std::cout << level.name();
            if (level.has(Corvane::LF_HEIGHT)) {        // the report may not give it
                std::cout << " at " << level.value(Corvane::LF_HEIGHT) << " m";
            }
            std::cout << '\n';
        }
    } catch (const std::string& fault) {                // a coding fault: what is wrong, and the groups there
        std::cerr << fault << '\n';
    } catch (const std::out_of_range& fault) {          // a group is shorter than what is read from it
        std::cerr << fault.what() << '\n';
    }
    // clang-format on
}

// The indented blocks of the comment at the top of the header, without their indentation.
std::vector<std::string> blocksOfTheHeader() {
    const std::string mark = "///     ";
    std::istringstream lines(contentOf(sourceFile("include/corvane/Corvane.h")));
    std::vector<std::string> blocks;
    std::string line;
    bool inside = false;
    while (std::getline(lines, line) && line.rfind("///", 0) == 0) {
        if (line.rfind(mark, 0) != 0) {
            inside = false;
            continue;
        }
        if (!inside) {
            blocks.emplace_back();
        }
        inside = true;
        blocks.back() += line.substr(mark.size()) + "\n";
    }
    return blocks;
}

// The body of walkTheLevels in this file, indented one level less.
std::string bodyCompiledHere() {
    const std::string source = contentOf(sourceFile("tests/docs/header_example_test.cpp"));
    const std::string before = "// clang-format off\n";
    const std::size_t begin = source.find(before) + before.size();
    std::istringstream lines(source.substr(begin, source.find("    // clang-format on\n") - begin));
    std::string body;
    std::string line;
    while (std::getline(lines, line)) {
        body += line.substr(4) + "\n";
    }
    return body;
}

}  // namespace

TEST(HeaderExample, TheCodeShownIsCompiledHere) {
    const std::vector<std::string> blocks = blocksOfTheHeader();
    ASSERT_EQ(blocks.size(), 2U);
    EXPECT_EQ(blocks[1], bodyCompiledHere());
}

TEST(HeaderExample, TheCodeShownPrintsTheLevelsOfTheReportShown) {
    const std::vector<std::string> blocks = blocksOfTheHeader();
    ASSERT_EQ(blocks.size(), 2U);
    EXPECT_EQ(outputOf([&] { walkTheLevels(blocks[0]); }), "surface\nmandatory at 140 m\n");
}

TEST(HeaderExample, TheCodeShownPrintsFaultsOfBothKinds) {
    const CapturedOutput errors(std::cerr);
    walkTheLevels("TTAA 56001 7220");
    EXPECT_EQ(errors.text(), "Block and station number is incorrect: 7220\n");
    walkTheLevels("TTAA 56001 72201 88999 77999 X");
    EXPECT_NE(errors.text().find("basic_string::substr"), std::string::npos) << errors.text();
}

TEST(HeaderExample, TheReportShownSaysWhatTheGuideSays) {
    const std::vector<std::string> blocks = blocksOfTheHeader();
    ASSERT_EQ(blocks.size(), 2U);
    const Corvane report(blocks[0]);
    EXPECT_EQ(report.wmoType(), "TEMP");
    EXPECT_EQ(report.dayOfMonth(), 6);
    EXPECT_TRUE(report.windsInKnots());
    EXPECT_EQ(report.obsHour(), 0);
    EXPECT_EQ(report.bsn(), "72201");
    EXPECT_TRUE(sameLevels(
        report.allLevels(),
        {levelOf(SURFACE, {{PRES, 1014}, {TDRY, 32.2}, {DP, 32.2 - 9.0}, {WDIR, 115}, {WSPD, 4 * KNOT}}),
         levelOf(MANDATORY,
                 {{PRES, 1000}, {HEIGHT, 140}, {TDRY, 30.0}, {DP, 30.0 - 7.0}, {WDIR, 115}, {WSPD, 6 * KNOT}})}));
}
