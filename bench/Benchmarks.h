// What the benchmarks share: the reports that they read, and how they are run.
#ifndef CORVANE_BENCH_BENCHMARKS_H
#define CORVANE_BENCH_BENCHMARKS_H

#include <benchmark/benchmark.h>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

/// The text of a report: its path in the source tree without ".txt".
inline std::string report(const std::string& name) {
    const std::string path = std::string(CORVANE_SOURCES) + '/' + name + ".txt";
    std::ifstream file(path);
    if (!file) {
        throw std::runtime_error("cannot read " + path);
    }
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// Runs the benchmarks that are registered, as the arguments say.
/// @return the exit status.
inline int runBenchmarks(int argc, char* argv[]) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

#endif
