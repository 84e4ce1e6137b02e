#include <fstream>
#include <string>

#include "allocation_counter.h"
#include "comparison.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/model/print_all_parser.h"
#include "print_outs.h"
#include "tool_folder.h"

// How much memory what the library remembers takes.

namespace {

using namespace benchmarks;

constexpr int kFiles = 200;
constexpr int kTags = 180;

// A tool that prints the same about every file.
ToolFolder& folderOfCat() {
    static ToolFolder folder(ANSWERING_TOOL, "exiv2.exe", kFiles);
    std::ofstream(folder.path() / "print_all", std::ios::binary) << makePrintOut(kTags);
    if (!exiv2_wp::initialize(folder.path())) {
        giveUp("no answering tool");
    }
    return folder;
}

void bytesATag(benchmark::State& state) {
    ToolFolder& folder = folderOfCat();
    const std::size_t before = allocations().bytes;
    for (int i = 0; i < kFiles; ++i) {
        readSummary(folder.nextPhoto());
    }
    const auto bytes = static_cast<double>(allocations().bytes - before) / kFiles / kTags;
    for (auto _ : state) {
        state.SetIterationTime(1e-9);
    }
    report(state, {.limit = 400, .unit = "B"}, {bytes});
}

void allocationsATag(benchmark::State& state) {
    const std::string printOut = makePrintOut(kTags);
    exiv2_wp::internal::CliExifMetadata record;
    const std::size_t before = allocations().count;
    benchmark::DoNotOptimize(exiv2_wp::internal::parsePrintAllOutput(printOut, record));
    const auto count = static_cast<double>(allocations().count - before) / kTags;
    for (auto _ : state) {
        state.SetIterationTime(1e-9);
    }
    report(state, {.unit = "allocations"}, {count});
}

BENCHMARK_ROW(bytesATag, "a tag of 200 cached records of 180", 1);
BENCHMARK_ROW(allocationsATag, "print-out parser, a tag", 1);

}  // namespace

BENCHMARK_MAIN();
