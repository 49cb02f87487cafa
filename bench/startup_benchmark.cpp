// Whole-process times, from the start of a process to its end: a program that does nothing, corvane on a report, and
// cat of the same report, in turn. Their output is discarded.
//
//     startup_benchmark EMPTY_PROGRAM CORVANE REPORT [ROUNDS]
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <vector>

namespace {

struct Contender {
    const char* name;
    std::vector<std::string> command;
    std::vector<double> microseconds;
};

double timeOf(const std::vector<std::string>& command, const posix_spawn_file_actions_t& actions) {
    std::vector<char*> argv;
    for (const std::string& word : command) {
        argv.push_back(const_cast<char*>(word.c_str()));
    }
    argv.push_back(nullptr);
    std::array<char*, 1> environment{nullptr};

    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    if (posix_spawn(&child, argv[0], &actions, nullptr, argv.data(), environment.data()) != 0) {
        throw std::runtime_error("cannot start " + command[0]);
    }
    int status = 0;
    waitpid(child, &status, 0);
    const std::chrono::duration<double, std::micro> elapsed = std::chrono::steady_clock::now() - start;
    if (status != 0) {
        throw std::runtime_error(command[0] + " failed");
    }
    return elapsed.count();
}

double quantile(std::vector<double> values, double fraction) {
    std::sort(values.begin(), values.end());
    return values[static_cast<std::size_t>(fraction * static_cast<double>(values.size() - 1))];
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc < 4) {
        std::fprintf(stderr, "usage: %s EMPTY_PROGRAM CORVANE REPORT [ROUNDS]\n", argv[0]);
        return 1;
    }
    const std::string report = argv[3];
    const int rounds = argc > 4 ? std::atoi(argv[4]) : 2000;
    std::array<Contender, 3> contenders{
        {{"empty", {argv[1]}, {}}, {"corvane", {argv[2], report}, {}}, {"cat", {"/bin/cat", report}, {}}}};

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    for (int round = 0; round < rounds; ++round) {
        for (Contender& contender : contenders) {
            contender.microseconds.push_back(timeOf(contender.command, actions));
        }
    }
    posix_spawn_file_actions_destroy(&actions);

    std::printf("%-8s %10s %10s %10s %8s\n", "program", "p10 us", "median us", "p90 us", "x empty");
    const double floor = quantile(contenders[0].microseconds, 0.5);
    for (const Contender& contender : contenders) {
        const double median = quantile(contender.microseconds, 0.5);
        std::printf("%-8s %10.1f %10.1f %10.1f %8.2f\n", contender.name, quantile(contender.microseconds, 0.1), median,
                    quantile(contender.microseconds, 0.9), median / floor);
    }
    return 0;
}
