#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
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
    std::string unit = "ns";     ///< "ns", "B" or another name
};

/// The middle one of some values, which must not be none.
double median(std::vector<double> values);

/// Reports medians, their ratio and a remark that needs no room of its own. Without a reference
/// `reference` is empty.
void report(benchmark::State& state, const Row& row, const std::vector<double>& ours,
            const std::vector<double>& reference = {}, const std::string& remark = {});

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

/// Measures two actions by turns, once for each iteration of the benchmark. The one that goes first
/// changes too, so that whatever else the machine does meets both. Each returns its nanoseconds.
template <typename Ours, typename Reference>
void compareTimes(benchmark::State& state, const Row& row, const Ours& ours,
                  const Reference& reference, const std::string& remark = {}) {
    std::vector<double> oursTimes;
    std::vector<double> referenceTimes;
    for (auto _ : state) {
        const bool isOursFirst = oursTimes.size() % 2 == 0;
        if (isOursFirst) {
            oursTimes.push_back(ours());
        }
        referenceTimes.push_back(reference());
        if (!isOursFirst) {
            oursTimes.push_back(ours());
        }
        state.SetIterationTime(oursTimes.back() * 1e-9);
    }
    report(state, row, oursTimes, referenceTimes, remark);
}

/// The same for two actions that are called so many times in a row.
template <typename Ours, typename Reference>
void compare(benchmark::State& state, const Row& row, int calls, const Ours& ours,
             const Reference& reference, const std::string& remark = {}) {
    compareTimes(
        state, row, [&] { return nanosecondsOf(calls, ours); },
        [&] { return nanosecondsOf(calls, reference); }, remark);
}

}  // namespace benchmarks

/// Registers a function as the benchmark of one row, measured so many times.
#define BENCHMARK_ROW(function, what, times) \
    BENCHMARK(function)->Name(what)->Iterations(times)->UseManualTime()
