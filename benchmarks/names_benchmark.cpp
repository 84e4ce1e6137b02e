#include <array>
#include <string>
#include <unordered_map>

#include "comparison.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/names/crop_factors.h"

// What a canonical name and a crop factor cost.

namespace {

using namespace benchmarks;

constexpr int kCalls = 1000;
const std::string kMake = "Canon";
const std::string kModel = "PowerShot G7 X Mark III";
const std::string kUnknownModel = "EOS 5D Mark CXVII";

std::string canonical(std::string name) {
    exiv2_wp::ImageLens_canonizeName(name);
    return name;
}

// The factors by canonical name, as the queries are.
std::unordered_map<std::string, float> plainTable() {
    std::unordered_map<std::string, float> table;
    for (const auto& [model, cropFactor] : exiv2_wp::internal::cropFactorsByModel()) {
        table.emplace(canonical(std::string(model)), cropFactor);
    }
    return table;
}

void compareWithFind(benchmark::State& state, const std::string& model) {
    const auto table = plainTable();
    const std::string query = canonical(kMake + model);
    compare(
        state, {.reference = "unordered_map::find, canonical query", .atMost = 3, .limit = 1000},
        kCalls, [&] { benchmark::DoNotOptimize(exiv2_wp::getCropFactor(kMake, model)); },
        [&] { benchmark::DoNotOptimize(table.find(query)); });
}

// Goes first: there is one first use in a process.
void firstUse(benchmark::State& state) {
    std::vector<double> times;
    for (auto _ : state) {
        times.push_back(nanosecondsOf(
            1, [] { benchmark::DoNotOptimize(exiv2_wp::getCropFactor(kMake, kModel)); }));
        state.SetIterationTime(times.back() * 1e-9);
    }
    report(state, {.limit = 300'000}, times);
}

// What the library does, done the plain way: the query is made canonical first.
void compareWithCanonicalFind(benchmark::State& state) {
    const auto table = plainTable();
    compare(
        state, {.reference = "the query made canonical and found", .atMost = 3}, kCalls,
        [&] { benchmark::DoNotOptimize(exiv2_wp::getCropFactor(kMake, kModel)); },
        [&] { benchmark::DoNotOptimize(table.find(canonical(kMake + kModel))); });
}

void knownModel(benchmark::State& state) {
    compareWithFind(state, kModel);
}

void unknownModel(benchmark::State& state) {
    compareWithFind(state, kUnknownModel);
}

template <void (*Canonize)(std::string&)>
void canonicalName(benchmark::State& state) {
    const auto table = plainTable();
    const std::string name = kMake + " " + kModel;
    const std::string query = canonical(name);
    std::string copy = name;
    compare(
        state, {.reference = "unordered_map::find, canonical query", .atMost = 3}, kCalls,
        [&] {
            copy = name;
            Canonize(copy);
            benchmark::DoNotOptimize(copy);
        },
        [&] { benchmark::DoNotOptimize(table.find(query)); });
}

BENCHMARK_ROW(firstUse, "getCropFactor, first use", 1);
BENCHMARK_ROW(knownModel, "getCropFactor, known camera", 300);
BENCHMARK_ROW(unknownModel, "getCropFactor, unknown camera", 300);
BENCHMARK_ROW(compareWithCanonicalFind, "getCropFactor once more", 300);
BENCHMARK_ROW(canonicalName<exiv2_wp::CamerasProfiles_canonizeName>, "CamerasProfiles_canonizeName",
              300);
BENCHMARK_ROW(canonicalName<exiv2_wp::ImageLens_canonizeName>, "ImageLens_canonizeName", 300);

}  // namespace

BENCHMARK_MAIN();
