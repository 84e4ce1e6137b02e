#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "bare_tool.h"
#include "comparison.h"
#include "exiv2_wrapper/exiftool/exiftool_process.h"
#include "tool_folder.h"

// What the library adds to a request to the long-lived tool: against the same bytes, written and
// read in the same chunks by a minimal loop, on a tool of its own.

namespace {

using namespace benchmarks;

// A tool, once for the library and once for the loop.
class Tools {
public:
    explicit Tools(const char* tool) : folder_(tool, "exiftool.exe") {}

    void ask(const std::vector<std::string>& lines) {
        benchmark::DoNotOptimize(process_.execute(lines));
    }

    // As the library asks, and all that comes until the tool is ready, into fresh memory of this
    // size.
    void askBare(const std::vector<std::string>& lines, std::size_t size) const {
        std::string request = "-charset\nfilename=utf8\n";
        for (const std::string& line : lines) {
            request += line + "\n";
        }
        bare_.write(request + "-execute\n");
        std::vector<char> answer(size);
        std::size_t count = 0;
        while (!std::string_view(answer.data(), count).ends_with("{ready}\n")) {
            constexpr std::size_t kChunk = 511;
            const std::span room = std::span(answer).subspan(count);
            count += bare_.read(room.first(std::min(kChunk, room.size())));
        }
        benchmark::DoNotOptimize(answer.data());
    }

    [[nodiscard]] std::string photo() const { return folder_.makePhotos(1, {SAMPLE_PHOTO})[0]; }

private:
    ToolFolder folder_;
    exiftool::internal::ExiftoolProcess process_{folder_.path()};
    BareTool bare_{{folder_.tool(), "-stay_open", "true", "-@", "-"}};
};

void compareRequests(benchmark::State& state, Tools& tools, double atMost, int calls,
                     const std::vector<std::string>& lines, std::size_t answerSize = 10'000) {
    tools.ask(lines);
    tools.askBare(lines, answerSize);
    compare(
        state, {.reference = "the same bytes by a minimal loop", .atMost = atMost}, calls,
        [&] { tools.ask(lines); }, [&] { tools.askBare(lines, answerSize); });
}

void smallestRequest(benchmark::State& state) {
    Tools tools(EXIFTOOL);
    compareRequests(state, tools, 1.15, 10, {});
}

void tagRequest(benchmark::State& state) {
    Tools tools(EXIFTOOL);
    compareRequests(state, tools, 1.03, 1, {"-Lens", "-LensID", "-s2", tools.photo()});
}

// A stand-in writes it.
void longAnswer(benchmark::State& state) {
    Tools tools(ANSWERING_TOOL);
    compareRequests(state, tools, 1.5, 1, {"-bytes=32000000"}, 33'000'000);
}

BENCHMARK_ROW(smallestRequest, "the smallest ExifTool request", 300);
BENCHMARK_ROW(tagRequest, "ExifTool request for two tags", 300);
BENCHMARK_ROW(longAnswer, "ExifTool answer of 32 MB", 10);

}  // namespace

BENCHMARK_MAIN();
