#include "support/ProgramRun.h"

#include "support/Places.h"
#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct Pipe {
    int read = -1;
    int write = -1;
};

Pipe makePipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error(std::strerror(errno));
    }
    return {ends[0], ends[1]};
}

void closeEnd(int& end) {
    if (end >= 0) {
        close(end);
        end = -1;
    }
}

// In the child: connects the standard streams, then becomes the program.
[[noreturn]] void become(std::vector<char*>& argv, const Streams& streams, const Pipe& in, const Pipe& out,
                         const Pipe& err) {
    const int input = streams.inputFile.empty() ? in.read : open(streams.inputFile.c_str(), O_RDONLY);
    const int output = streams.outputFile.empty() ? out.write : open(streams.outputFile.c_str(), O_WRONLY);
    const int errors = streams.errorsFile.empty() ? err.write : open(streams.errorsFile.c_str(), O_WRONLY | O_APPEND);
    dup2(input, STDIN_FILENO);
    dup2(output, STDOUT_FILENO);
    dup2(errors, STDERR_FILENO);
    if (streams.closeInput) {
        close(STDIN_FILENO);
    }
    if (streams.closeOutput) {
        close(STDOUT_FILENO);
    }
    if (streams.closeErrors) {
        close(STDERR_FILENO);
    }
    execv(argv[0], argv.data());
    _exit(127);
}

}  // namespace

ProgramRun runProgram(const std::vector<std::string>& arguments, const Streams& streams) {
    const std::string program = streams.program.empty() ? programPath() : streams.program;
    std::vector<std::string> words{program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);

    signal(SIGPIPE, SIG_IGN);  // a program that does not read its input must not end the tests
    Pipe in = makePipe();
    Pipe out = makePipe();
    Pipe err = makePipe();
    const pid_t child = fork();
    if (child < 0) {
        throw std::runtime_error(std::strerror(errno));
    }
    if (child == 0) {
        signal(SIGPIPE, SIG_DFL);
        become(argv, streams, in, out, err);
    }
    closeEnd(in.read);
    closeEnd(out.write);
    closeEnd(err.write);

    ProgramRun run;
    std::size_t sent = 0;
    while (out.read >= 0 || err.read >= 0) {
        if (sent == streams.input.size()) {
            closeEnd(in.write);
        }
        std::array<pollfd, 3> ends{{{in.write, POLLOUT, 0}, {out.read, POLLIN, 0}, {err.read, POLLIN, 0}}};
        poll(ends.data(), ends.size(), -1);
        if (ends[0].revents != 0) {
            const ssize_t length =
                write(in.write, streams.input.data() + sent, std::min<std::size_t>(streams.input.size() - sent, 4096));
            if (length < 0) {
                closeEnd(in.write);
            } else {
                sent += static_cast<std::size_t>(length);
            }
        }
        std::array<char, 65536> buffer{};
        const auto receive = [&](const pollfd& end, int& descriptor, std::string& text) {
            if (end.revents == 0) {
                return;
            }
            const ssize_t length = read(descriptor, buffer.data(), buffer.size());
            if (length <= 0) {
                closeEnd(descriptor);
            } else {
                text.append(buffer.data(), static_cast<std::size_t>(length));
            }
        };
        receive(ends[1], out.read, run.output);
        receive(ends[2], err.read, run.errors);
    }
    closeEnd(in.write);

    int status = 0;
    waitpid(child, &status, 0);
    if (WIFEXITED(status)) {
        run.exitStatus = WEXITSTATUS(status);
    } else if (WIFSIGNALED(status)) {
        run.signal = WTERMSIG(status);
    }
    if (run.exitStatus == 127) {
        throw std::runtime_error("cannot run " + program);
    }
    return run;
}
