// Decoding in process: the life of a decoder, its construction only, its table written to a string stream, and as a
// floor the same text split into a deque of strings. Then how these grow with the report.
#include "Benchmarks.h"
#include "Table.h"

#include <corvane/Corvane.h>

#include <chrono>
#include <deque>
#include <optional>
#include <sstream>
#include <string>
#include <utility>

namespace {

// A part B of about this many groups: significant levels, every tenth pair garbled.
std::string reportOfGroups(long groups) {
    std::string text = "TTBB 56008 72403";
    for (long pair = 0; pair < groups / 2; ++pair) {
        const long pressure = 999 - pair % 900;
        text += pair % 10 == 9 ? " 11+9/ 1/245" : " 11" + std::to_string(1000 + pressure).substr(1) + " 12345";
    }
    return text;
}

std::deque<std::string> split(const std::string& text) {
    std::deque<std::string> groups;
    const char* const whiteSpace = " \t\n\v\f\r";
    std::size_t begin = text.find_first_not_of(whiteSpace);
    while (begin != std::string::npos) {
        const std::size_t end = std::min(text.find_first_of(whiteSpace, begin), text.size());
        groups.emplace_back(text, begin, end - begin);
        begin = text.find_first_not_of(whiteSpace, end);
    }
    return groups;
}

void count(benchmark::State& state, const std::string& text) {
    state.SetItemsProcessed(state.iterations());
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void splitText(benchmark::State& state, const std::string& text) {
    for (auto iteration : state) {
        benchmark::DoNotOptimize(split(text));
    }
    count(state, text);
}

// The whole life of a decoder, from its text to its destruction.
void decode(benchmark::State& state, const std::string& text) {
    for (auto iteration : state) {
        const Corvane decoder(text);
        benchmark::DoNotOptimize(&decoder);
    }
    count(state, text);
}

// Only the construction is timed; the counter destruction_s gives the mean time of the destruction. (The time of split
// includes the destruction of its deque.)
void construct(benchmark::State& state, const std::string& text) {
    std::chrono::duration<double> destruction{0.0};
    for (auto iteration : state) {
        const auto begin = std::chrono::steady_clock::now();
        std::optional<Corvane> decoder(std::in_place, text);
        const auto constructed = std::chrono::steady_clock::now();
        decoder.reset();
        destruction += std::chrono::steady_clock::now() - constructed;
        state.SetIterationTime(std::chrono::duration<double>(constructed - begin).count());
    }
    count(state, text);
    state.counters["destruction_s"] = benchmark::Counter(destruction.count(), benchmark::Counter::kAvgIterations);
}

void refuse(benchmark::State& state, const std::string& text) {
    for (auto iteration : state) {
        try {
            const Corvane decoder(text);
            state.SkipWithError("the report is not refused");
        } catch (const std::string& fault) {
            benchmark::DoNotOptimize(fault.data());
        }
    }
    count(state, text);
}

void writeTable(benchmark::State& state, const std::string& text) {
    const Corvane decoder(text);
    for (auto iteration : state) {
        std::ostringstream table;
        corvane::table::writeTable(table, decoder);
        benchmark::DoNotOptimize(table);
    }
    count(state, text);
}

// One of the above, with a report of a given number of groups.
void grow(benchmark::State& state, void (*run)(benchmark::State&, const std::string&)) {
    run(state, reportOfGroups(state.range(0)));
    state.counters["per_group"] =
        benchmark::Counter(static_cast<double>(state.range(0)),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

}  // namespace

int main(int argc, char* argv[]) {
    benchmark::RegisterBenchmark("split/drop", splitText, report("examples/reports/drop-maria-2017"));
    benchmark::RegisterBenchmark("decode/drop", decode, report("examples/reports/drop-maria-2017"));
    benchmark::RegisterBenchmark("construct/drop", construct, report("examples/reports/drop-maria-2017"))
        ->UseManualTime();
    benchmark::RegisterBenchmark("table/drop", writeTable, report("examples/reports/drop-maria-2017"));
    benchmark::RegisterBenchmark("split/land", splitText, report("tests/reports/temp-camborne-2026"));
    benchmark::RegisterBenchmark("decode/land", decode, report("tests/reports/temp-camborne-2026"));
    benchmark::RegisterBenchmark("construct/land", construct, report("tests/reports/temp-camborne-2026"))
        ->UseManualTime();
    benchmark::RegisterBenchmark("table/land", writeTable, report("tests/reports/temp-camborne-2026"));
    benchmark::RegisterBenchmark("split/refused", splitText, report("tests/reports/temp-key-west-2022"));
    benchmark::RegisterBenchmark("decode/refused", refuse, report("tests/reports/temp-key-west-2022"));
    benchmark::RegisterBenchmark("split/grow", grow, splitText)->RangeMultiplier(10)->Range(1000, 1000000);
    benchmark::RegisterBenchmark("decode/grow", grow, decode)->RangeMultiplier(10)->Range(1000, 1000000);
    benchmark::RegisterBenchmark("construct/grow", grow, construct)
        ->RangeMultiplier(10)
        ->Range(1000, 1000000)
        ->UseManualTime();
    return runBenchmarks(argc, argv);
}
