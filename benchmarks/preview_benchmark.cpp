#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <memory>
#include <span>
#include <string>

#include "bare_tool.h"
#include "comparison.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "tool_folder.h"

// A large preview: against reading the same bytes into one buffer. A stand-in writes them.

namespace {

using namespace benchmarks;

// More than any power of two that a buffer may have grown to.
constexpr std::size_t kBytes = std::size_t{33} << 20U;

const ToolFolder& toolFolder() {
    static const ToolFolder folder(ANSWERING_TOOL, "exiv2.exe");
    if (static const bool isReady = exiv2_wp::initialize(folder.path()); !isReady) {
        giveUp("no answering tool");
    }
    return folder;
}

void extract() {
    exiv2_wp::TopBottomOffset offset;
    const bool isExtracted = exiv2_wp::readExiv2Thumbnail(
        toolFolder().path() / "photo.jpg", std::to_string(kBytes), 1, 1, offset, [](auto&&...) {},
        [](int) {},
        [](const unsigned char* bytes, std::uint64_t count, const auto&) {
            benchmark::DoNotOptimize(bytes);
            return count == kBytes;
        },
        [](auto&&...) { return false; });
    if (!isExtracted) {
        giveUp("no preview");
    }
}

// The buffer isn't written to before it is read into, as that of the library: the tool, which takes
// its time to begin, would hide what that costs.
void readBare() {
    const BareTool tool({toolFolder().tool(), "-ep", std::to_string(kBytes)});
    constexpr std::size_t kSize = kBytes + 100;
    const auto bytes = std::make_unique_for_overwrite<char[]>(kSize);
    std::span room(bytes.get(), kSize);
    constexpr std::size_t kReadSize = 8192;  // as the library reads
    while (const std::size_t count = tool.read(room.first(std::min(kReadSize, room.size())))) {
        room = room.subspan(count);
    }
    benchmark::DoNotOptimize(bytes.get());
}

void preview(benchmark::State& state) {
    compare(state, {.reference = "reading the bytes into one buffer", .atMost = 1.2}, 1, extract,
            readBare);
}

// From /proc/self/status, in bytes.
double memory(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == name + ":") {
            double kilobytes = 0;
            status >> kilobytes;
            return kilobytes * 1024;
        }
    }
    giveUp("no " + name);
}

void peakMemory(benchmark::State& state) {
    extract();
    const auto peak = [] {
        std::ofstream("/proc/self/clear_refs") << "5";  // the peak is now what is resident
        const double before = memory("VmRSS");
        extract();
        return memory("VmHWM") - before;
    };
    compareMeasures(state, {.reference = "the tool's output", .atMost = 1.3, .unit = "B"}, peak,
                    [] { return static_cast<double>(kBytes); });
}

BENCHMARK_ROW(preview, "readExiv2Thumbnail, 33 MiB", 30);
BENCHMARK_ROW(peakMemory, "readExiv2Thumbnail, 33 MiB, peak memory", 5);

}  // namespace

BENCHMARK_MAIN();
