// Runs the program as a process and keeps what it wrote and how it ended.
#ifndef CORVANE_TESTS_PROGRAM_RUN_H
#define CORVANE_TESTS_PROGRAM_RUN_H

#include <string>
#include <vector>

struct ProgramRun {
    int exitStatus = -1;  // -1 when a signal ended it
    int signal = 0;       // 0 when it ended by itself
    std::string output;
    std::string errors;
};

// Where the standard streams of a run lead. An empty name: a pipe whose content is `input` or kept in the result.
struct Streams {
    std::string input;
    std::string inputFile;
    std::string outputFile;
    bool closeInput = false;
    bool closeOutput = false;
};

// Runs the program with these arguments. Throws std::runtime_error when it cannot be started.
ProgramRun runProgram(const std::vector<std::string>& arguments, const Streams& streams = {});

// The path under which the tests call the program.
std::string programPath();

// The content of a file. Throws std::runtime_error when it cannot be read.
std::string contentOf(const std::string& path);

#endif
