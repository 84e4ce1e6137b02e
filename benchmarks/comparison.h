#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <vector>

/// Measures the library against what its work can cost at least, in one run, and reports both as
/// one row of a table (scripts/bench.sh prints it).
namespace benchmarks {

/// What a row compares, and how good it has to be. A target that is 0 isn't one.
struct Row {
    std::string reference = {};  ///< what the library is compared with; empty: nothing
    double atMost = 0;           ///< so many times the reference
    double timesFaster = 0;      ///< so many times faster than the reference
    double limit = 0;            ///< so much, in the unit
    std::string unit = "ns";     ///< "ns" or "B"
    std::string remark = {};     ///< shown behind the row's name
};

/// Reports the medians. Without a reference `reference` is empty.
void report(benchmark::State& state, const Row& row, std::vector<double> ours,
            std::vector<double> reference = {});

/// How many nanoseconds one of `calls` calls of an action takes.
template <typename Action>
double nanosecondsOf(int calls, const Action& action) {
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < calls; ++i) {
        action();
    }
    const std::chrono::duration<double, std::nano> time = std::chrono::steady_clock::now() - begin;
    return time.count() / calls;
}

/// Takes a measure of `ours` once for each iteration of the benchmark.
template <typename Ours>
void measure(benchmark::State& state, const Row& row, const Ours& ours) {
    std::vector<double> measures;
    for (auto _ : state) {
        measures.push_back(ours());
        state.SetIterationTime(1e-9);
    }
    report(state, row, measures);
}

/// Takes two measures by turns, once for each iteration of the benchmark. The one that goes first
/// changes too, so that whatever else the machine does meets both.
template <typename Ours, typename Reference>
void compareMeasures(benchmark::State& state, const Row& row, const Ours& ours,
                     const Reference& reference) {
    std::vector<double> measures;
    std::vector<double> references;
    for (auto _ : state) {
        const bool isOursFirst = measures.size() % 2 == 0;
        if (isOursFirst) {
            measures.push_back(ours());
        }
        references.push_back(reference());
        if (!isOursFirst) {
            measures.push_back(ours());
        }
        state.SetIterationTime(1e-9);
    }
    report(state, row, measures, references);
}

/// The same for the times of two actions that are called so many times in a row.
template <typename Ours, typename Reference>
void compare(benchmark::State& state, const Row& row, int calls, const Ours& ours,
             const Reference& reference) {
    compareMeasures(
        state, row, [&] { return nanosecondsOf(calls, ours); },
        [&] { return nanosecondsOf(calls, reference); });
}

/// `times`, or 1 where a brief run is wanted.
inline int iterations(int times) {
    return std::getenv("EXIV2_WRAPPER_BENCH_BRIEF") == nullptr ? times : 1;
}

}  // namespace benchmarks

/// Registers a function as the benchmark of one row, measured so many times: once, where the
/// environment variable EXIV2_WRAPPER_BENCH_BRIEF only wants to see that it runs.
#define BENCHMARK_ROW(function, what, times) \
    BENCHMARK(function)->Name(what)->Iterations(benchmarks::iterations(times))->UseManualTime()
