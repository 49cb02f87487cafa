// Runs the program as a process and keeps what it writes and how it ends.
#ifndef CORVANE_TESTS_PROGRAM_RUN_H
#define CORVANE_TESTS_PROGRAM_RUN_H

#include <string>
#include <vector>

struct ProgramRun {
    int exitStatus = -1;  // -1 when a signal ended it
    int signal = 0;       // 0 when none did
    std::string output;
    std::string errors;
};

// The program, and what its standard streams are connected to. Without a file name it is a pipe: its content is
// `input`, or is kept in the result.
struct Streams {
    std::string program;  // another program than corvane
    std::string input;
    std::string inputFile;
    std::string outputFile;
    std::string errorsFile;
    bool closeInput = false;
    bool closeOutput = false;
    bool closeErrors = false;
};

// Runs the program with these arguments. Throws std::runtime_error when it cannot be started.
ProgramRun runProgram(const std::vector<std::string>& arguments, const Streams& streams = {});

#endif
