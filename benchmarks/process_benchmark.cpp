#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "bare_tool.h"
#include "comparison.h"
#include "tool_folder.h"

// What whole processes cost: one that loads the library, and photoinfo.

namespace {

using namespace benchmarks;

namespace fs = std::filesystem;

// The output of a program of ours.
std::string outputOf(const std::vector<std::string>& arguments) {
    std::string output = runBare(arguments);
    if (output.empty()) {
        giveUp(arguments.front() + " fails");
    }
    return output;
}

void loading(benchmark::State& state) {
    measure(state, {.limit = 200'000}, [] { return std::stod(outputOf({LOAD_PROBE, LIBRARY})); });
}

// Like every host, photoinfo loads the library and proves its tool before it asks for a photo's two
// runs.
void summary(benchmark::State& state) {
    compare(
        state,
        {.reference = "a program that loads the library, the tool's --version and two runs",
         .atMost = 1.1},
        1,
        [] {
            outputOf({PHOTOINFO, "summary", "--tools", exiv2Folder().path(), nextPhoto()});
        },
        [] {
            outputOf({LOAD_PROBE, LIBRARY});
            runBare({exiv2Folder().tool(), "--version"});
            runBareTwice(nextPhoto());
        });
}

void scan(benchmark::State& state) {
    constexpr std::size_t kPhotos = 300;
    const ToolFolder tool(EXIV2, "exiv2.exe");
    const std::vector<fs::path> scanned = tool.makePhotos(kPhotos, photos());
    const std::string folder = scanned.front().parent_path();
    compare(
        state, {.reference = "a loop of the two tool runs", .timesFaster = 1.8}, 1,
        [&] {
            outputOf({PHOTOINFO, "scan", "--jobs", "2", "--tools", tool.path(), folder});
        },
        [&] {
            for (const fs::path& photo : scanned) {
                runBareTwice(photo);
            }
        });
}

BENCHMARK_ROW(loading, "loading the library", 200);
BENCHMARK_ROW(summary, "photoinfo summary", 200);
BENCHMARK_ROW(scan, "photoinfo scan of 300 photos, two jobs", 7);

}  // namespace

BENCHMARK_MAIN();
