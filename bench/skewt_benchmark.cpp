// Drawing in process: the picture of one sounding, its indices alone, and for comparison the parts read and joined.
#include "Benchmarks.h"

#include <corvane/Feed.h>
#include <corvane/Indices.h>
#include <corvane/SkewT.h>
#include <corvane/Sounding.h>

#include <sstream>
#include <string>

namespace {

corvane::Sounding soundingOf(const std::string& text) {
    std::istringstream input(text);
    corvane::BulletinReader bulletins(input, "benchmark");
    corvane::Soundings collected;
    for (corvane::Part part; bulletins.next(part);) {
        collected.add(part, corvane::read(part));
    }
    return collected.soundings().at(0);
}

void join(benchmark::State& state, const std::string& text) {
    for (auto iteration : state) {
        benchmark::DoNotOptimize(soundingOf(text));
    }
    state.SetItemsProcessed(state.iterations());
}

void computeIndices(benchmark::State& state, const std::string& text) {
    const corvane::Sounding sounding = soundingOf(text);
    for (auto iteration : state) {
        benchmark::DoNotOptimize(corvane::indicesOf(sounding));
    }
    state.SetItemsProcessed(state.iterations());
}

void draw(benchmark::State& state, const std::string& text) {
    const corvane::Sounding sounding = soundingOf(text);
    for (auto iteration : state) {
        benchmark::DoNotOptimize(corvane::skewT(sounding));
    }
    state.SetItemsProcessed(state.iterations());
}

}  // namespace

int main(int argc, char* argv[]) {
    const std::string drop = report("examples/reports/drop-maria-2017");
    const std::string land = report("tests/reports/temp-camborne-2026");
    benchmark::RegisterBenchmark("join/drop", join, drop);
    benchmark::RegisterBenchmark("indices/drop", computeIndices, drop);
    benchmark::RegisterBenchmark("picture/drop", draw, drop);
    benchmark::RegisterBenchmark("join/land", join, land);
    benchmark::RegisterBenchmark("indices/land", computeIndices, land);
    benchmark::RegisterBenchmark("picture/land", draw, land);
    return runBenchmarks(argc, argv);
}
