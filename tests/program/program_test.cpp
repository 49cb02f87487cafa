// The program as a process: arguments, standard input, files that cannot be read, exit statuses, and what it writes to
// which stream.
#include "corvane.h"
#include "support/CapturedOutput.h"
#include "support/Places.h"
#include "support/ProgramRun.h"

#include <array>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace {

const std::string HEADER = "type,pres,tdry,dp,wspd,wdir,height,time,lat,lon,pres2\n";

// A TEMP of day 6 with winds in knots up to 1000 hPa. The rows are worked out by hand: 14 knots are 7.2016 m/s.
const std::string REPORT = "TTAA 56000 72403 99014 32259 11514 00140 30057 11500 88999 77999";
const std::string TABLE = HEADER + "surface,1014,32.2,23.2,7.2016,115,,,,,\n"
                                   "mandatory,1000,30,23,0,115,140,,,,\n";

// A file that is there as long as the object is.
class ReportFile {
public:
    explicit ReportFile(const std::string& content) {
        _path = testing::TempDir() + "corvane-report-" + std::to_string(getpid()) + ".txt";
        std::ofstream(_path, std::ios::binary) << content;
    }
    ~ReportFile() { std::remove(_path.c_str()); }
    ReportFile(const ReportFile&) = delete;
    ReportFile& operator=(const ReportFile&) = delete;
    const std::string& path() const { return _path; }

private:
    std::string _path;
};

void expectTable(const ProgramRun& run, const std::string& table) {
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.output, table);
    EXPECT_EQ(run.errors, "");
}

void expectFault(const ProgramRun& run, const std::string& message) {
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors, message);
}

}  // namespace

TEST(Program, DecodesTheFileThatIsNamed) {
    const ReportFile file(REPORT);
    expectTable(runProgram({file.path()}), TABLE);
}

TEST(Program, DecodesStandardInputWithoutAnArgument) {
    Streams streams;
    streams.input = REPORT + "\n";
    expectTable(runProgram({}, streams), TABLE);
}

TEST(Program, LineBreaksAndRepeatedSpacesDoNotMatter) {
    Streams streams;
    streams.input = "\r\n  TTAA\t56000\v72403\f99014\n\n32259   11514\r\n00140 30057 11500 88999\n\t 77999  \n\n";
    expectTable(runProgram({}, streams), TABLE);
}

TEST(Program, AReportWithoutAFinalLineBreakIsTheSame) {
    Streams streams;
    streams.input = REPORT;
    expectTable(runProgram({}, streams), TABLE);
}

TEST(Program, MoreThanOneArgumentPrintsTheUsageOnStandardOutput) {
    const ProgramRun run = runProgram({"one", "two"});
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_EQ(run.output, "Usage:\n   " + programPath() + " file\n   " + programPath() + " < file\n    cat file | " +
                              programPath() + "\n");
    EXPECT_EQ(run.errors, "");
}

TEST(Program, EveryLineOfTheUsageIsFlushed) {
    std::string name = "corvane";
    std::string file = "report.txt";
    std::array<char*, 4> arguments{name.data(), file.data(), file.data(), nullptr};
    const CapturedOutput output;
    EXPECT_EQ(corvaneProgram(3, arguments.data()), 1);
    EXPECT_EQ(output.flushed(),
              (std::vector<std::string>{"Usage:\n", "Usage:\n   corvane file\n",
                                        "Usage:\n   corvane file\n   corvane < file\n",
                                        "Usage:\n   corvane file\n   corvane < file\n    cat file | corvane\n"}));
}

TEST(Program, TheUsageIsPrintedWithoutReadingAnything) {
    const ReportFile file(REPORT);
    const ProgramRun run = runProgram({file.path(), file.path(), file.path()});
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_EQ(run.output.substr(0, 7), "Usage:\n");
}

TEST(Program, AnEmptyInputGivesOnlyTheHeader) {
    expectTable(runProgram({}), HEADER);
}

TEST(Program, AnInputOfWhiteSpaceGivesOnlyTheHeader) {
    Streams streams;
    streams.input = " \n\t\r\n ";
    expectTable(runProgram({}, streams), HEADER);
}

TEST(Program, AMissingFileIsAnEmptyReport) {
    expectTable(runProgram({testing::TempDir() + "corvane-no-such-file"}), HEADER);
}

TEST(Program, AnEmptyFileNameIsAnEmptyReport) {
    expectTable(runProgram({""}), HEADER);
}

TEST(Program, ADirectoryIsAReadFault) {
    expectFault(runProgram({"/"}), "corvane: /: Is a directory\n");
}

TEST(Program, ADirectoryOnStandardInputIsAReadFault) {
    Streams streams;
    streams.inputFile = "/";
    expectFault(runProgram({}, streams), "corvane: standard input: Is a directory\n");
}

TEST(Program, AClosedStandardInputIsAReadFault) {
    Streams streams;
    streams.closeInput = true;
    expectFault(runProgram({}, streams), "corvane: standard input: Bad file descriptor\n");
}

TEST(Program, ACodingFaultIsOnStandardErrorOnly) {
    Streams streams;
    streams.input = "TTAA 56000 7240 99014 32259 11514\n";
    expectFault(runProgram({}, streams), "Block and station number is incorrect: 7240\n");
}

TEST(Program, ACodingFaultShowsTheGroupsWhereItIs) {
    Streams streams;
    streams.input = "ttaa 56000 72403 99014 32259 11514 00140";
    expectFault(runProgram({}, streams), "Message type identifier (TT, UU, XX or II) was not found. Error detected at "
                                         "ttaa 56000 72403 99014 32259 11514 ...\n");
}

TEST(Program, NoRowIsWrittenWhenAFaultFollowsGoodLevels) {
    Streams streams;
    streams.input = REPORT + " 51515 TTBB 56000 72403 00014 32255";
    expectFault(runProgram({}, streams),
                "Dewpoint depression code may not be between 51 to 56. Error detected at 32255 ...\n");
}

TEST(Program, AGroupTooShortForItsDigitsEndsTheProgramAbnormally) {
    Streams streams;
    streams.input = "TTBB 56000 72403 1 32259";
    const ProgramRun run = runProgram({}, streams);
    EXPECT_EQ(run.signal, SIGABRT);
    EXPECT_EQ(run.output, "");
    EXPECT_NE(run.errors.find("basic_string::substr"), std::string::npos) << run.errors;
}

TEST(Program, AFullDiskIsAWriteFault) {
    const ReportFile file(REPORT);
    Streams streams;
    streams.outputFile = "/dev/full";
    const ProgramRun run = runProgram({file.path()}, streams);
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_EQ(run.errors, "corvane: standard output: No space left on device\n");
}

TEST(Program, AClosedStandardOutputIsAWriteFault) {
    const ReportFile file(REPORT);
    Streams streams;
    streams.closeOutput = true;
    const ProgramRun run = runProgram({file.path()}, streams);
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_EQ(run.errors, "corvane: standard output: Bad file descriptor\n");
}

TEST(Program, EveryByteValueIsReadWithoutHarm) {
    std::string bytes;
    for (int value = 0; value < 256; ++value) {
        bytes += static_cast<char>(value);
    }
    Streams streams;
    streams.input = bytes;
    const ProgramRun run = runProgram({}, streams);
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_EQ(run.errors.substr(0, 60), "WMO type and part identifier (MMMM) must be 4 characters. Er");
}

TEST(Program, AReportOfNulBytesIsAFault) {
    Streams streams;
    streams.input = std::string(1000, '\0');
    const ProgramRun run = runProgram({}, streams);
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors, "WMO type and part identifier (MMMM) must be 4 characters. Error detected at " +
                              streams.input + " ...\n");
}

TEST(Program, AWordOfAMegabyteIsAFault) {
    Streams streams;
    streams.input = std::string(1000000, 'X');
    const ProgramRun run = runProgram({}, streams);
    expectFault(run, "WMO type and part identifier (MMMM) must be 4 characters. Error detected at " + streams.input +
                         " ...\n");
}
