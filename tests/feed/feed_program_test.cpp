// The program corvane-feed as a process.
#include "FeedParts.h"

#include "support/Places.h"
#include "support/ProgramRun.h"
#include "support/Samples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <pty.h>
#include <random>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

using feed_test::BEIJING;
using feed_test::with;
using std::string_literals::operator""s;
using Arguments = std::vector<std::string>;

const std::string HEADER =
    "source,heading,form,part,station,day,hour,slat,slon,selev,launch,mends,doubt,type,pres,tdry,dp,wspd,"
    "wdir,height,time,lat,lon,pres2\n";
const std::string GROUND = "TTAA 2823/ 54511 99015 02257 00000 88999 77999";
const std::string GROUND_ROW = ",,TEMP,A,54511,28,23,,,,,,,surface,1015,2.2,-4.8,0,0,,,,,\n";

std::string summary(const std::string& counts) {
    return "corvane-feed: " + counts + "\n";
}
const std::string ONE_PART =
    summary("1 part: 1 decoded (0 mended, 0 with losses, 0 doubtful), 0 NIL, 0 empty, 0 refused");
const std::string NO_PARTS =
    summary("0 parts: 0 decoded (0 mended, 0 with losses, 0 doubtful), 0 NIL, 0 empty, 0 refused");

ProgramRun runFeed(const Arguments& arguments, Streams streams = {}) {
    streams.program = feedPath();
    return runProgram(arguments, streams);
}

ProgramRun feed(const std::string& input, const Arguments& arguments = {}) {
    Streams streams;
    streams.input = input;
    return runFeed(arguments, streams);
}

// A folder that goes with the test.
class FeedProgram : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = testing::TempDir() + "/corvane-feed-XXXXXX";
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        folder = pattern;
    }
    void TearDown() override { std::filesystem::remove_all(folder); }

    std::string file(const std::string& name, const std::string& content) const {
        const std::string path = (folder / name).string();
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }
    std::string path(const std::string& name) const { return (folder / name).string(); }

    std::filesystem::path folder;
};

// ---- tables ----

TEST_F(FeedProgram, ATableOfLevelsFromStandardInput) {
    for (const Arguments& arguments : {Arguments{}, Arguments{"-"}}) {
        const ProgramRun run = feed(GROUND + "=", arguments);
        EXPECT_EQ(run.output, HEADER + "-:1" + GROUND_ROW);
        EXPECT_EQ(run.errors, ONE_PART);
        EXPECT_EQ(run.exitStatus, 0);
    }
}

TEST_F(FeedProgram, FilesAreReadInTheirOrder) {
    const std::string first = file("first.txt", "\n" + GROUND);
    const std::string second = file("second.txt", with(GROUND, "54511", "54512") + "\n" + GROUND);
    Streams streams;
    streams.input = GROUND;
    const ProgramRun run = runFeed({second, "-", first}, streams);
    EXPECT_EQ(run.output, HEADER + second + ":1" + with(GROUND_ROW, "54511", "54512") + second + ":2" + GROUND_ROW +
                              "-:1" + GROUND_ROW + first + ":2" + GROUND_ROW);
    EXPECT_EQ(run.exitStatus, 0);
}

TEST_F(FeedProgram, PartsDoNotRunFromOneFileIntoTheNext) {
    const std::string first = file("first.txt", "USUS50 KWBC 130000\nTTAA 2823/ 54511 99015");
    const std::string second = file("second.txt", "02257 00000 88999 77999=" + GROUND);
    const ProgramRun run = runFeed({first, second});
    EXPECT_EQ(run.output, HEADER + second + ":1" + GROUND_ROW);
    EXPECT_EQ(run.exitStatus, 1);
}

TEST_F(FeedProgram, ATableOfPartsBesideTheTableOfLevels) {
    const std::string parts = path("parts.csv");
    const ProgramRun run = feed(GROUND + "= TTAA 72576 NIL=", {"--parts", parts});
    EXPECT_EQ(run.output, HEADER + "-:1" + GROUND_ROW);
    EXPECT_EQ(contentOf(parts), "source,heading,form,part,station,day,hour,status,levels,mends,message\n"
                                "-:1,,TEMP,A,54511,28,23,decoded,1,,\n-:1,,TEMP,A,72576,,,NIL,0,,\n");
    EXPECT_EQ(run.exitStatus, 0);
}

TEST_F(FeedProgram, PrintWritesThePartsAsTheyAreDecoded) {
    const ProgramRun run = feed(with(GROUND, "022", "0 22") + "= TTAA 72576 NIL= TTAA 6300/ 72214 1 2 3=", {"--print"});
    EXPECT_EQ(run.output, GROUND + "=\n");
    EXPECT_EQ(run.exitStatus, 1);
}

TEST_F(FeedProgram, WithoutMendsAPartThatNeedsOneIsRefused) {
    const ProgramRun run = feed(with(GROUND, "022", "0 22") + "=" + GROUND + "=", {"--no-mends"});
    EXPECT_EQ(run.output, HEADER + "-:1" + GROUND_ROW);
    EXPECT_EQ(run.errors,
              "-:1: TTAA 54511: refused: A mend is needed: join. Error detected at 0 2257 00000 88999 77999 ...\n" +
                  summary("2 parts: 1 decoded (0 mended, 0 with losses, 0 doubtful), 0 NIL, 0 empty, 1 refused"));
    EXPECT_EQ(run.exitStatus, 1);
}

TEST_F(FeedProgram, ATableOfSoundings) {
    const ProgramRun run = feed(GROUND + "=", {"--soundings"});
    EXPECT_EQ(std::count(run.output.begin(), run.output.end(), '\n'), 2);
    EXPECT_NE(run.output.find("54511"), std::string::npos);
    EXPECT_EQ(run.exitStatus, 0);
}

// ---- what is said ----

TEST_F(FeedProgram, MendsLossesDoubtsAndRefusalsHaveALineEach) {
    const ProgramRun run = feed("TTAA 2823/ 54511 99015 022 57 00000 00156 07652 88501 801// 31524 77999=\n"
                                "XXAA 70035 99153 70659 04355 99007 29456=\n"
                                "TTAA 72576 NIL= TTAA 63001 72214 51515=");
    EXPECT_EQ(run.errors,
              "-:1: TTAA 54511: mended: join: 022 57 read as 02257\n"
              "-:1: TTAA 54511: lost: depression: 07652 read as 076//\n"
              "-:1: TTAA 54511: doubtful: tropopause: a tropopause at 501 hPa\n"
              // 280.75 K * (501/1000)^(2/7) = 230.4 K, and 193.05 K are 37.4 K less
              "-:1: TTAA 54511: doubtful: lapse-rate: 501 hPa is 37.4 K colder than the dry adiabat from 1000 hPa\n"
              "-:2: XXAA: refused: At least 1 code groups are required. Error detected at ...\n" +
                  summary("4 parts: 1 decoded (0 mended, 1 with losses, 1 doubtful), 1 NIL, 1 empty, 1 refused"));
}

TEST_F(FeedProgram, QuietLeavesTheSummary) {
    const ProgramRun run = feed(with(GROUND, "022", "0 22") + "= TTAA 6300/ 72214 1 2 3=", {"--quiet"});
    EXPECT_EQ(run.errors,
              summary("2 parts: 1 decoded (1 mended, 0 with losses, 0 doubtful), 0 NIL, 0 empty, 1 refused"));
    EXPECT_EQ(run.exitStatus, 1);
}

// ---- exit status ----

TEST_F(FeedProgram, ZeroWhenEverythingWithDataIsDecodedWhole) {
    EXPECT_EQ(feed(GROUND).exitStatus, 0);
    EXPECT_EQ(feed(with(GROUND, "022", "0 22")).exitStatus, 0);
    EXPECT_EQ(feed("TTAA 72576 NIL= TTAA 63001 72214 51515=").exitStatus, 0);
    EXPECT_EQ(feed("TTAA 2823/ 54511 99015 02257 00000 00156 ///// 88501 801// 31524 77999").exitStatus, 0);
}

TEST_F(FeedProgram, OneWhenSomethingIsRefusedOrLostOrNothingIsFound) {
    EXPECT_EQ(feed(GROUND + "= TTAA 63001 72214 1 2 3=").exitStatus, 1);
    EXPECT_EQ(feed(with(GROUND, "02257", "02251")).exitStatus, 1);
    for (const std::string text : {"", "\n", "PPAA 12173 54857 55385 25007=", "ttaa 63001"}) {
        const ProgramRun run = feed(text);
        EXPECT_EQ(run.output, HEADER);
        EXPECT_EQ(run.errors, NO_PARTS);
        EXPECT_EQ(run.exitStatus, 1) << text;
    }
}

TEST_F(FeedProgram, AnEmptyFileHoldsNoPart) {
    const ProgramRun run = runFeed({file("empty.txt", "")});
    EXPECT_EQ(run.errors, NO_PARTS);
    EXPECT_EQ(run.exitStatus, 1);
}

TEST_F(FeedProgram, AFileThatIsMissingDoesNotStopTheOthers) {
    const std::string present = file("present.txt", GROUND);
    const std::string missing = path("missing.txt");
    const ProgramRun run = runFeed({missing, present});
    EXPECT_EQ(run.output, HEADER + present + ":1" + GROUND_ROW);
    EXPECT_EQ(run.errors, "corvane-feed: " + missing + ": No such file or directory\n" + ONE_PART);
    EXPECT_EQ(run.exitStatus, 2);
}

TEST_F(FeedProgram, ADirectoryCannotBeRead) {
    const std::string present = file("present.txt", GROUND);
    const ProgramRun run = runFeed({folder.string(), present});
    EXPECT_EQ(run.output, HEADER + present + ":1" + GROUND_ROW);
    EXPECT_EQ(run.errors, "corvane-feed: " + folder.string() + ": Is a directory\n" + ONE_PART);
    EXPECT_EQ(run.exitStatus, 2);
    Streams streams;
    streams.inputFile = folder.string();
    const ProgramRun redirected = runFeed({}, streams);
    EXPECT_EQ(redirected.errors, "corvane-feed: standard input: Is a directory\n" + NO_PARTS);
    EXPECT_EQ(redirected.exitStatus, 2);
}

TEST_F(FeedProgram, OutputThatCannotBeWrittenIsTrouble) {
    Streams streams;
    streams.input = GROUND;
    streams.outputFile = "/dev/full";
    const ProgramRun run = runFeed({}, streams);
    EXPECT_EQ(run.errors, "corvane-feed: standard output: No space left on device\n" + ONE_PART);
    EXPECT_EQ(run.exitStatus, 2);
}

TEST_F(FeedProgram, APartsTableThatCannotBeWrittenIsTrouble) {
    const ProgramRun full = feed(GROUND, {"--parts", "/dev/full"});
    EXPECT_EQ(full.errors, "corvane-feed: /dev/full: No space left on device\n" + ONE_PART);
    EXPECT_EQ(full.output, HEADER + "-:1" + GROUND_ROW);
    EXPECT_EQ(full.exitStatus, 2);
    const ProgramRun missing = feed(GROUND, {"--parts", path("no/such/folder.csv")});
    EXPECT_EQ(missing.errors, "corvane-feed: " + path("no/such/folder.csv") + ": No such file or directory\n");
    EXPECT_EQ(missing.output, "");
    EXPECT_EQ(missing.exitStatus, 2);
}

// A stream without an end must not be read on when nobody can get its rows.
TEST_F(FeedProgram, NothingMoreIsReadWhenOutputFails) {
    Streams streams;
    for (int i = 0; i < 20000; ++i) {
        streams.input += GROUND + "=\n";
    }
    streams.outputFile = "/dev/full";
    const ProgramRun run = runFeed({}, streams);
    EXPECT_EQ(run.errors, "corvane-feed: standard output: No space left on device\n" + ONE_PART);
    EXPECT_EQ(run.exitStatus, 2);
}

TEST_F(FeedProgram, ClosedStandardStreams) {
    Streams noInput;
    noInput.closeInput = true;
    const ProgramRun input = runFeed({}, noInput);
    EXPECT_EQ(input.errors, "corvane-feed: standard input: Bad file descriptor\n" + NO_PARTS);
    EXPECT_EQ(input.exitStatus, 2);

    Streams noOutput;
    noOutput.input = GROUND;
    noOutput.closeOutput = true;
    const ProgramRun output = runFeed({}, noOutput);
    EXPECT_EQ(output.errors, "corvane-feed: standard output: Bad file descriptor\n" + ONE_PART);
    EXPECT_EQ(output.exitStatus, 2);

    Streams noErrors;
    noErrors.input = GROUND;
    noErrors.closeErrors = true;
    const ProgramRun errors = runFeed({}, noErrors);
    EXPECT_EQ(errors.output, HEADER + "-:1" + GROUND_ROW);
    EXPECT_EQ(errors.exitStatus, 0);
}

// A file opened first must not take the place of a stream that is closed.
TEST_F(FeedProgram, NoFileTakesThePlaceOfAClosedStream) {
    const std::string parts = path("parts.csv");
    Streams streams;
    streams.input = GROUND;
    streams.closeOutput = true;
    EXPECT_EQ(runFeed({"--parts", parts}, streams).exitStatus, 2);
    EXPECT_EQ(contentOf(parts), "source,heading,form,part,station,day,hour,status,levels,mends,message\n"
                                "-:1,,TEMP,A,54511,28,23,decoded,1,,\n");
}

// Rows that are appended to an input would be read again, without an end.
TEST_F(FeedProgram, StandardOutputMustNotBeAnInput) {
    const std::string input = file("input.txt", GROUND);
    Streams streams;
    streams.outputFile = input;
    for (const std::string option : {"--print", "--soundings", "--quiet"}) {
        const ProgramRun run = runFeed({option, input}, streams);
        EXPECT_EQ(run.errors, "corvane-feed: standard output goes into an input\n");
        EXPECT_EQ(run.exitStatus, 2);
        EXPECT_EQ(contentOf(input), GROUND);
    }
}

// The messages would be read as bulletins.
TEST_F(FeedProgram, StandardErrorMustNotBeAnInput) {
    const std::string input = file("input.txt", GROUND + "\n");
    Streams streams;
    streams.errorsFile = input;
    EXPECT_EQ(runFeed({input}, streams).exitStatus, 2);
    EXPECT_EQ(contentOf(input), GROUND + "\ncorvane-feed: standard error goes into an input\n");
}

TEST_F(FeedProgram, MessagesThatCannotBeWrittenAreTrouble) {
    const std::string input = file("input.txt", GROUND);
    Streams streams;
    streams.errorsFile = "/dev/full";
    const ProgramRun run = runFeed({input}, streams);
    EXPECT_EQ(run.output, HEADER + input + ":1" + GROUND_ROW);
    EXPECT_EQ(run.exitStatus, 2);
}

TEST_F(FeedProgram, BothTablesMustNotGoToOneFile) {
    const std::string input = file("input.txt", GROUND);
    const std::string table = file("table.csv", "");
    Streams streams;
    streams.outputFile = table;
    const ProgramRun run = runFeed({"--parts", table, input}, streams);
    EXPECT_EQ(run.errors, "corvane-feed: " + table + ": standard output goes to the same file\n");
    EXPECT_EQ(run.exitStatus, 2);
    EXPECT_EQ(contentOf(table), "");
}

// CLI11 alone would take the input for the value.
TEST_F(FeedProgram, AnOptionThatEndsWithAnEqualsSignHasNoValue) {
    const std::string input = file("input.txt", GROUND);
    const ProgramRun run = runFeed({"--parts=", input});
    EXPECT_EQ(run.errors, "corvane-feed: --parts= needs a value\nTry 'corvane-feed --help'.\n");
    EXPECT_EQ(run.exitStatus, 2);
    EXPECT_EQ(contentOf(input), GROUND);
}

// The table of parts is opened before anything is read, and an input would be empty then.
TEST_F(FeedProgram, TheTableOfPartsDoesNotOverwriteAnInput) {
    const std::string other = file("other.txt", GROUND);
    const std::string input = file("input.txt", GROUND);
    const std::string link = path("link.txt");
    std::filesystem::create_hard_link(input, link);
    Streams streams;
    streams.inputFile = input;
    for (const ProgramRun& run : {runFeed({"--parts", input, other, input}), runFeed({"--parts", link, input}),
                                  runFeed({"--parts", input}, streams), runFeed({"--parts", link, "-"}, streams)}) {
        EXPECT_EQ(run.output, "");
        EXPECT_NE(run.errors.find(": the table of parts would overwrite an input\n"), std::string::npos) << run.errors;
        EXPECT_EQ(run.exitStatus, 2);
        EXPECT_EQ(contentOf(input), GROUND);
    }
    EXPECT_EQ(runFeed({"--parts", other, input}).exitStatus, 0);
    EXPECT_EQ(runFeed({"--parts", "/dev/null", "/dev/null"}).exitStatus, 1);
}

// ---- progress ----

// What the program writes to a terminal until it has shown a share of the bytes, or has ended.
std::string progressOf(const std::string& input, bool redirected) {
    int terminal = -1;
    const std::string program = feedPath();
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        if (redirected) {
            dup2(open(input.c_str(), O_RDONLY), STDIN_FILENO);
        }
        execl(program.c_str(), program.c_str(), redirected ? "-" : input.c_str(), nullptr);
        _exit(127);
    }
    std::string text;
    std::array<char, 4096> buffer{};
    pollfd end{terminal, POLLIN, 0};
    while (text.find(" %") == std::string::npos && poll(&end, 1, 60000) == 1) {
        const ssize_t length = read(terminal, buffer.data(), buffer.size());
        if (length <= 0) {
            break;
        }
        text.append(buffer.data(), static_cast<std::size_t>(length));
    }
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    close(terminal);
    return text;
}

// A long file without a single part shows progress too, however it is named. Its zero bytes take no room on the disk.
TEST_F(FeedProgram, ProgressIsShownOnATerminal) {
    const std::string input = file("long.txt", "");
    std::filesystem::resize_file(input, 20000000000);
    EXPECT_NE(progressOf(input, false).find("\r\033[K" + input + ": "), std::string::npos);
    EXPECT_NE(progressOf(input, true).find("\r\033[K-: "), std::string::npos);
}

// ---- usage ----

TEST_F(FeedProgram, UsageErrorsAreTrouble) {
    for (const Arguments& arguments :
         {Arguments{"--nonsense"}, Arguments{"-x"}, Arguments{"--parts"}, Arguments{"--parts", ""},
          Arguments{"--print", "--soundings"}, Arguments{"--quiet=maybe"}}) {
        const ProgramRun run = feed(GROUND, arguments);
        EXPECT_EQ(run.exitStatus, 2) << arguments.front();
        EXPECT_EQ(run.output, "") << arguments.front();
        EXPECT_EQ(run.errors.substr(0, 14), "corvane-feed: ") << arguments.front();
        EXPECT_NE(run.errors.find("\nTry 'corvane-feed --help'.\n"), std::string::npos) << arguments.front();
    }
}

TEST_F(FeedProgram, HelpNamesEveryOption) {
    const ProgramRun run = feed("", {"--help"});
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.errors, "");
    for (const std::string option :
         {"--no-mends", "--print", "--soundings", "--parts", "--quiet", "--help", "--version", "FILE"}) {
        EXPECT_NE(run.output.find(option), std::string::npos) << option;
    }
}

TEST_F(FeedProgram, Version) {
    const ProgramRun run = feed("", {"--version"});
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.output.substr(0, 13), "corvane-feed ");
    EXPECT_EQ(std::count(run.output.begin(), run.output.end(), '\n'), 1);
}

// ---- streams ----

// A program whose standard input stays open.
class LiveProgram {
public:
    LiveProgram() {
        std::array<int, 2> in{};
        std::array<int, 2> out{};
        if (pipe(in.data()) != 0 || pipe(out.data()) != 0) {
            throw std::runtime_error("pipe");
        }
        const std::string program = feedPath();
        child = fork();
        if (child == 0) {
            signal(SIGPIPE, SIG_DFL);
            dup2(in[0], STDIN_FILENO);
            dup2(out[1], STDOUT_FILENO);
            for (const int end : {in[0], in[1], out[0], out[1]}) {
                close(end);
            }
            execl(program.c_str(), program.c_str(), "--quiet", nullptr);
            _exit(127);
        }
        close(in[0]);
        close(out[1]);
        input = in[1];
        output = out[0];
    }
    ~LiveProgram() {
        finish();
        closeOutput();
    }
    LiveProgram(const LiveProgram&) = delete;
    LiveProgram& operator=(const LiveProgram&) = delete;

    void send(const std::string& text) const {
        EXPECT_EQ(write(input, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }

    // Reads until this many lines have come, ten seconds at most.
    std::string receive(int lines) const {
        std::string text;
        while (std::count(text.begin(), text.end(), '\n') < lines) {
            pollfd end{output, POLLIN, 0};
            std::array<char, 4096> buffer{};
            ssize_t length = 0;
            if (poll(&end, 1, 10000) != 1 || (length = read(output, buffer.data(), buffer.size())) <= 0) {
                return text + "<nothing more>";
            }
            text.append(buffer.data(), static_cast<std::size_t>(length));
        }
        return text;
    }

    void closeOutput() {
        if (output >= 0) {
            close(output);
            output = -1;
        }
    }

    // The status as waitpid gives it.
    int finish() {
        if (input >= 0) {
            close(input);
            input = -1;
            waitpid(child, &status, 0);
        }
        return status;
    }

private:
    pid_t child = 0;
    int input = -1;
    int output = -1;
    int status = 0;
};

TEST_F(FeedProgram, ALiveStreamGivesItsRowsAsSoonAsAPartIsClosed) {
    LiveProgram program;
    program.send(GROUND + "=");
    EXPECT_EQ(program.receive(2), HEADER + "-:1" + GROUND_ROW);
    program.send("\n" + with(GROUND, "54511", "54512"));
    program.send("\nNNNN");
    program.send("\n");
    EXPECT_EQ(program.receive(1), "-:2" + with(GROUND_ROW, "54511", "54512"));
    program.send("\n\n" + GROUND);
    EXPECT_EQ(WEXITSTATUS(program.finish()), 0);
    EXPECT_EQ(program.receive(1), "-:6" + GROUND_ROW);
}

TEST_F(FeedProgram, AClosedPipeEndsItQuietly) {
    LiveProgram program;
    program.send(GROUND + "=");
    EXPECT_EQ(program.receive(2), HEADER + "-:1" + GROUND_ROW);
    program.closeOutput();
    program.send(GROUND + "=");
    const int status = program.finish();
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGPIPE);
}

// ---- hostile inputs ----

TEST_F(FeedProgram, ALineOfTenMegabytes) {
    std::string line;
    while (line.size() < 10000000) {
        line += "TTAATTAATTAATTAATTAATTAATTAATTAATTAATTAATTAATTAA";
    }
    const ProgramRun word = feed(line + "\n" + GROUND);
    EXPECT_EQ(word.output, HEADER + "-:2" + GROUND_ROW);
    EXPECT_EQ(word.exitStatus, 0);
    const ProgramRun part = feed("TTAA 63001 72214 " + line + "=" + GROUND);
    EXPECT_EQ(part.output, HEADER + "-:1" + GROUND_ROW);
    EXPECT_EQ(part.errors,
              "-:1: TTAA 72214: refused: A group has more than 1000 characters.\n" +
                  summary("2 parts: 1 decoded (0 mended, 0 with losses, 0 doubtful), 0 NIL, 0 empty, 1 refused"));
}

TEST_F(FeedProgram, ManyMMMM) {
    std::string text;
    for (int i = 0; i < 100000; ++i) {
        text += "TTAA ";
    }
    const ProgramRun run = feed(text);
    EXPECT_EQ(run.output, HEADER);
    EXPECT_EQ(run.errors,
              summary("100000 parts: 0 decoded (0 mended, 0 with losses, 0 doubtful), 0 NIL, 100000 empty, 0 refused"));
    EXPECT_EQ(run.exitStatus, 0);
}

TEST_F(FeedProgram, APartOfAHundredThousandGroups) {
    std::string text = "TTAA 63001 72214";
    for (int i = 0; i < 100000; ++i) {
        text += " 12345";
    }
    const ProgramRun run = feed(text + " TTBB 63008 72214 88999=");
    EXPECT_EQ(run.errors,
              "-:1: TTAA 72214: refused: The part has more than 2000 groups.\n" +
                  summary("2 parts: 0 decoded (0 mended, 0 with losses, 0 doubtful), 0 NIL, 1 empty, 1 refused"));
}

TEST_F(FeedProgram, EveryInputEndsItWithZeroOneOrTwo) {
    std::mt19937 random(1);
    const std::string alphabet = "TTAABBCCDDUXI0123456789/////  ==\r\n\1\3;$NIL\0\xff.()REL"s;
    for (int round = 0; round < 20; ++round) {
        std::string text = BEIJING;
        for (int i = 0; i < 3000; ++i) {
            text += alphabet[random() % alphabet.size()];
        }
        const ProgramRun run = feed(text, {"--quiet"});
        EXPECT_EQ(run.signal, 0);
        EXPECT_TRUE(run.exitStatus == 0 || run.exitStatus == 1) << run.exitStatus;
    }
}

// ---- golden files ----

// Every text in bulletins/ gives the rows and the messages beside it.
TEST_F(FeedProgram, RealBulletinsToTheByte) {
    int texts = 0;
    for (const std::filesystem::path& text : filesIn("tests/feed/bulletins")) {
        if (text.extension() != ".txt") {
            continue;
        }
        ++texts;
        Streams streams;
        streams.inputFile = text.string();
        const ProgramRun run = runFeed({}, streams);
        EXPECT_EQ(run.output, contentOf(std::filesystem::path(text).replace_extension(".csv"))) << text;
        EXPECT_EQ(run.errors, contentOf(std::filesystem::path(text).replace_extension(".err"))) << text;
    }
    EXPECT_GE(texts, 10);
}

}  // namespace
