#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "comparison.h"
#include "pipe_program.h"
#include "tool_folder.h"

// What a large host costs: one with gigabytes of resident memory against a small one. Both are this
// program, started anew as a measuring host.

namespace {

using namespace benchmarks;

// Gigabytes in use, from the environment variable LARGE_HOST_GIGABYTES.
int gigabytes() {
    return std::stoi(environmentOr("LARGE_HOST_GIGABYTES", "4"));
}

// A host of so many gigabytes: for each line that it reads it reads a photo and tells the
// nanoseconds.
int beMeasuringHost(int size) {
    std::vector<char> memory(static_cast<std::size_t>(size) << 30U, 'x');
    benchmark::DoNotOptimize(memory.data());
    const ToolFolder& folder = exiv2Folder();
    benchmark::DoNotOptimize(&folder);
    for (std::string request; std::getline(std::cin, request);) {
        std::cout << nanosecondsOf(1, [] { readSummary(exiv2Folder().nextPhoto()); }) << std::endl;
    }
    return EXIT_SUCCESS;
}

void largeHost(benchmark::State& state) {
    const PipeProgram large({"/proc/self/exe", "--host", std::to_string(gigabytes())});
    const PipeProgram small({"/proc/self/exe", "--host", "0"});
    const auto measure = [](const PipeProgram& host) {
        host.write("next\n");
        return std::stod(host.readLine());
    };
    const std::string remark = std::to_string(gigabytes()) + " GB resident";
    measure(large);
    measure(small);
    compareTimes(
        state, {.reference = "the same in a small host", .atMost = 1.05},
        [&] { return measure(large); }, [&] { return measure(small); }, remark);
}

BENCHMARK_ROW(largeHost, "createImageMetadata, uncached, large host", 1000);

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv, argv + argc);
    if (argc == 3 && arguments[1] == "--host") {
        return beMeasuringHost(std::stoi(arguments[2]));
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}
