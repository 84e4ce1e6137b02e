#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "comparison.h"
#include "exiv2_wrapper/exiftool/exiftool_process.h"
#include "pipe_program.h"
#include "tool_folder.h"

// How fast long answers of the long-lived tool are taken in: against reading the same bytes in the
// same chunks from a tool of its own. A stand-in writes them.

namespace {

using namespace benchmarks;

constexpr std::size_t kMegabyte = 1'000'000;
constexpr std::size_t kChunk = 511;

class Tools {
public:
    static Tools& instance() {
        static Tools tools;
        return tools;
    }

    void ask(const std::string& line) { benchmark::DoNotOptimize(process_.execute({line})); }

    void askBare(const std::string& line, std::size_t bytes) {
        bare_.write(line + "\n-execute\n");
        std::vector<char> answer(bytes + kMegabyte);
        std::size_t count = 0;
        while (count < bytes + std::string_view("{ready}\n").size()) {
            count += bare_.read(std::span(answer).subspan(count, kChunk));
        }
        benchmark::DoNotOptimize(answer.data());
    }

private:
    ToolFolder folder_{ANSWERING_TOOL, "exiftool.exe"};
    exiftool::internal::ExiftoolProcess process_{folder_.path()};
    PipeProgram bare_{{folder_.tool(), "-stay_open", "true", "-@", "-"}};
};

template <std::size_t megabytes>
void answer(benchmark::State& state) {
    constexpr std::size_t kBytes = megabytes * kMegabyte;
    const std::string line = "-bytes=" + std::to_string(kBytes);
    Tools::instance().ask(line);
    Tools::instance().askBare(line, kBytes);
    std::vector<double> times;
    const auto ours = [&] {
        times.push_back(nanosecondsOf(1, [&] { Tools::instance().ask(line); }));
        return times.back();
    };
    const Row row = {.reference = "reading the bytes in the same chunks", .atMost = 1.5};
    compareTimes(state, row, ours, [&] {
        return nanosecondsOf(1, [&] { Tools::instance().askBare(line, kBytes); });
    });
    state.SetLabel(
        row.unit + "|" + row.reference + "|" +
        std::to_string(static_cast<int>(static_cast<double>(kBytes) / median(times) * 1e3)) +
        " MB/s");
}

// Four times the bytes should cost four times the time.
void growth(benchmark::State& state) {
    const auto nanoseconds = [](const char* line) {
        return nanosecondsOf(1, [&] { Tools::instance().ask(line); });
    };
    compareTimes(
        state, {.reference = "an answer of 8 MB", .atMost = 6},
        [&] { return nanoseconds("-bytes=32000000"); },
        [&] { return nanoseconds("-bytes=8000000"); });
}

BENCHMARK_ROW(answer<1>, "ExifTool answer of 1 MB", 50);
BENCHMARK_ROW(answer<8>, "ExifTool answer of 8 MB", 20);
BENCHMARK_ROW(answer<32>, "ExifTool answer of 32 MB", 10);
BENCHMARK_ROW(growth, "ExifTool answer of 32 MB once more", 10);

}  // namespace

BENCHMARK_MAIN();
