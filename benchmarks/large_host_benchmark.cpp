#include <cstddef>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "bare_tool.h"
#include "comparison.h"
#include "tool_folder.h"

// What a large host costs: one with gigabytes of resident memory against a small one. Both are this
// program, started anew as a measuring host.

namespace {

using namespace benchmarks;

// A host of so many gigabytes: for each line that it reads it reads a photo and tells the
// nanoseconds.
int beMeasuringHost(int size) {
    std::vector<char> memory(static_cast<std::size_t>(size) << 30U, 'x');
    benchmark::DoNotOptimize(memory.data());
    for (std::string request; std::getline(std::cin, request);) {
        const std::filesystem::path& photo = nextPhoto();
        std::cout << nanosecondsOf(1, [&] { readSummary(photo); }) << std::endl;
    }
    return EXIT_SUCCESS;
}

void largeHost(benchmark::State& state) {
    const char* const gigabytes = std::getenv("LARGE_HOST_GIGABYTES");
    const std::string size = gigabytes == nullptr ? "4" : gigabytes;
    const BareTool large({"/proc/self/exe", "--host", size});
    const BareTool small({"/proc/self/exe", "--host", "0"});
    const auto measureIn = [](const BareTool& host) {
        host.write("next\n");
        return std::stod(host.readLine());
    };
    measureIn(large);
    measureIn(small);
    compareMeasures(
        state,
        {.reference = "the same in a small host", .atMost = 1.05, .remark = size + " GB resident"},
        [&] { return measureIn(large); }, [&] { return measureIn(small); });
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
