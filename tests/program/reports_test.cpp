// Reports through the program: each text in examples/reports and tests/reports gives its table NAME.csv, or is refused
// with its message NAME.err, both in tests/reports.
#include "support/ProgramRun.h"
#include "support/Samples.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <string>

namespace {

namespace fs = std::filesystem;

void expectItsTableOrItsMessage(const fs::path& report) {
    const fs::path expected = sourceFile("tests/reports") / report.stem();
    const std::string table = expected.string() + ".csv";
    const std::string message = expected.string() + ".err";
    const bool decoded = fs::exists(table);
    ASSERT_NE(decoded, fs::exists(message)) << "a report has a table or a message";

    const ProgramRun named = runProgram({report.string()});
    EXPECT_EQ(named.exitStatus, decoded ? 0 : 1);
    EXPECT_EQ(named.output, decoded ? contentOf(table) : "");
    EXPECT_EQ(named.errors, decoded ? "" : contentOf(message));

    Streams streams;
    streams.input = contentOf(report);
    const ProgramRun piped = runProgram({}, streams);
    EXPECT_EQ(piped.exitStatus, named.exitStatus);
    EXPECT_EQ(piped.output, named.output);
    EXPECT_EQ(piped.errors, named.errors);
}

}  // namespace

TEST(Reports, EachGivesItsTableOrItsMessage) {
    ASSERT_FALSE(reportSamples().empty());
    for (const fs::path& report : reportSamples()) {
        SCOPED_TRACE(report);
        expectItsTableOrItsMessage(report);
    }
}

TEST(Reports, EveryTableAndEveryMessageHasItsReport) {
    std::map<std::string, int> texts;
    for (const fs::path& report : reportSamples()) {
        ++texts[report.stem().string()];
    }
    for (const auto& text : texts) {
        EXPECT_EQ(text.second, 1) << text.first << " is in examples/reports and in tests/reports";
    }
    for (const fs::path& file : filesIn("tests/reports")) {
        if (file.extension() == ".csv" || file.extension() == ".err") {
            EXPECT_EQ(texts.count(file.stem().string()), 1U) << file;
        }
    }
}

TEST(Reports, TheReadmeSaysWhatEachOfThemIs) {
    const std::string readme = contentOf(sourceFile("tests/reports/README.md"));
    for (const fs::path& report : reportSamples()) {
        EXPECT_NE(readme.find("\n| " + report.stem().string() + " | "), std::string::npos) << report;
    }
}
