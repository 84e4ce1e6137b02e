#include <string>
#include <vector>

#include "bare_run.h"
#include "comparison.h"
#include "tool_folder.h"

// What whole processes cost: one that loads the library, and photoinfo.

namespace {

using namespace benchmarks;

std::string outputOf(const std::vector<std::string>& arguments) {
    std::string output;
    if (!runBare(arguments, output)) {
        giveUp(arguments.front() + " fails");
    }
    return output;
}

void loading(benchmark::State& state) {
    const auto load = [](const char* library) {
        return std::stod(outputOf({LOAD_PROBE, library}));
    };
    compareTimes(
        state, {.reference = "loading an empty library"}, [&] { return load(LIBRARY); },
        [&] { return load(EMPTY_LIBRARY); });
}

// photoinfo proves its tool by a run of its own before it asks for a photo's two.
void compareSummary(benchmark::State& state, const Row& row, const std::string& versionRun) {
    const std::string tool = "'" + exiv2Folder().tool().string() + "'";
    compare(
        state, row, 1,
        [] {
            outputOf(
                {PHOTOINFO, "summary", "--tools", exiv2Folder().path(), exiv2Folder().nextPhoto()});
        },
        [&] {
            const std::string photo = "'" + exiv2Folder().nextPhoto().string() + "'";
            outputOf({"/bin/sh", "-c",
                      versionRun + tool + " -PXEkycv -q " + photo + "; " + tool + " pr " + photo});
        });
}

void summary(benchmark::State& state) {
    compareSummary(state, {.reference = "a shell, the two tool runs", .atMost = 1.1}, "");
}

void summaryWithProof(benchmark::State& state) {
    compareSummary(state, {.reference = "a shell, the two tool runs and --version", .atMost = 1.1},
                   "'" + exiv2Folder().tool().string() + "' --version; ");
}

BENCHMARK_ROW(loading, "loading the library", 200);
BENCHMARK_ROW(summary, "photoinfo summary", 200);
BENCHMARK_ROW(summaryWithProof, "photoinfo summary once more", 200);

}  // namespace

BENCHMARK_MAIN();
