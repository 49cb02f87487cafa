// The whole path of the program: any bytes as its input, from standard input and from a named file, to its table or its
// message.
#include "Properties.h"

#include "support/CapturedOutput.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <stdexcept>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

int corvaneProgram(int argc, char** argv);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

// The harness fails, not the program.
[[noreturn]] void cannot(const char* what) {
    std::fprintf(stderr, "corvane: cannot %s: %s\n", what, std::strerror(errno));
    std::abort();
}

// A file in memory with this content, to be read from its beginning.
class MemoryFile {
public:
    explicit MemoryFile(const std::string& content) : descriptor(memfd_create("report", MFD_CLOEXEC)) {
        if (descriptor < 0) {
            cannot("create a file in memory");
        }
        for (std::size_t written = 0; written < content.size();) {
            const ssize_t length = write(descriptor, content.data() + written, content.size() - written);
            if (length < 0) {
                cannot("write a file in memory");
            }
            written += static_cast<std::size_t>(length);
        }
        if (lseek(descriptor, 0, SEEK_SET) != 0) {
            cannot("rewind a file in memory");
        }
    }

    ~MemoryFile() { close(descriptor); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string name() const { return "/proc/self/fd/" + std::to_string(descriptor); }

    int descriptor;
};

// Connects standard input to a descriptor while the object lives.
class StandardInput {
public:
    explicit StandardInput(int descriptor) : previous(dup(STDIN_FILENO)) {
        if (dup2(descriptor, STDIN_FILENO) < 0) {
            cannot("redirect standard input");
        }
    }

    ~StandardInput() {
        if (previous >= 0) {
            dup2(previous, STDIN_FILENO);
            close(previous);
        } else {
            close(STDIN_FILENO);
        }
    }

    StandardInput(const StandardInput&) = delete;
    StandardInput& operator=(const StandardInput&) = delete;

private:
    int previous;
};

struct Run {
    int exitStatus = -1;
    bool ended = true;  // false when a group too short to be read ends the program abnormally
    std::string output;
    std::string errors;
};

Run runProgram(const std::string& argument) {
    std::string name = "corvane";
    std::string file = argument;
    std::array<char*, 3> argv{name.data(), file.empty() ? nullptr : file.data(), nullptr};

    Run run;
    const CapturedOutput output(std::cout);
    const CapturedOutput errors(std::cerr);
    try {
        run.exitStatus = corvaneProgram(file.empty() ? 1 : 2, argv.data());
    } catch (const std::out_of_range&) {
        run.ended = false;
    }
    run.output = output.text();
    run.errors = errors.text();
    return run;
}

Run runOnStandardInput(const std::string& content) {
    const MemoryFile file(content);
    const StandardInput input(file.descriptor);
    return runProgram("");
}

Run runOnNamedFile(const std::string& content) {
    const MemoryFile file(content);
    return runProgram(file.name());
}

void runMeets(const char* way, const Run& run, const fuzz::Outcome& outcome) {
    switch (outcome.end) {
    case fuzz::End::DECODED:
        if (!run.ended || run.exitStatus != 0) {
            fuzz::violated(way, "the exit status of a good report is " + std::to_string(run.exitStatus));
        }
        if (!run.errors.empty()) {
            fuzz::violated(way, "a message about a good report: " + run.errors);
        }
        fuzz::tableHasARowForEachLevel(run.output, *outcome.report);
        break;
    case fuzz::End::FAULT:
        if (!run.ended || run.exitStatus != 1) {
            fuzz::violated(way, "the exit status of a faulty report is " + std::to_string(run.exitStatus));
        }
        if (!run.output.empty()) {
            fuzz::violated(way, "a table of a faulty report: " + run.output);
        }
        if (run.errors != outcome.fault + "\n") {
            fuzz::violated(way, "'" + run.errors + "' instead of '" + outcome.fault + "'");
        }
        break;
    case fuzz::End::TOO_SHORT:
        if (run.ended || !run.output.empty() || !run.errors.empty()) {
            fuzz::violated(way, "a group too short to be read does not end the program: " + run.output + run.errors);
        }
        break;
    }
}

// The text after as much white space as puts the end of the program's read buffer at this place of the text.
std::string shifted(const std::string& content, std::size_t border) {
    constexpr std::size_t BUFFER = 4096;
    return std::string(BUFFER - border % BUFFER, '\n') + content;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string content(data, data + size);
    fuzz::everythingHolds(content);

    const fuzz::Outcome outcome = fuzz::decode(content);
    runMeets("standard input through the program", runOnStandardInput(content), outcome);
    runMeets("a named file through the program", runOnNamedFile(content), outcome);
    if (size % 8 == 1) {
        // In the middle of the text, mostly inside a group, and where the group ends.
        const std::size_t middle = size / 2;
        const std::size_t groupEnd = std::min(content.find_first_of(" \t\n\v\f\r", middle), size);
        for (const std::size_t border : {middle, groupEnd}) {
            runMeets("a file longer than the read buffer", runOnNamedFile(shifted(content, border)), outcome);
        }
    }
    return 0;
}
