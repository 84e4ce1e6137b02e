#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "comparison.h"
#include "exiv2_wrapper/exiftool/exiftool_process.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "pipe_program.h"
#include "tool_folder.h"

// What the library adds to a request to the long-lived tool: against the same bytes, written and
// read by a minimal loop, on a tool of its own.

namespace {

using namespace benchmarks;

namespace fs = std::filesystem;

// The real tool, once for the library and once for the loop.
class Tools {
public:
    static Tools& instance() {
        static Tools tools;
        return tools;
    }

    [[nodiscard]] const fs::path& photo() const { return photo_; }

    // As the library asks, and all that comes until the tool is ready.
    void askBare(std::string_view lines) {
        bare_.write("-charset\nfilename=utf8\n" + std::string(lines) + "-execute\n");
        std::array<char, 511> buffer{};
        std::string answer;
        while (answer.find("{ready}") == std::string::npos) {
            answer.append(buffer.data(), bare_.read(buffer));
        }
    }

private:
    Tools() : bare_({folder_.tool(), "-stay_open", "true", "-@", "-"}) {
        if (!exiftool::initialize(folder_.path())) {
            giveUp("exiftool doesn't run");
        }
    }

    ToolFolder folder_{findProgram("exiftool"), "exiftool.exe"};
    fs::path photo_ = folder_.nextPhoto();
    PipeProgram bare_;
};

void tagRequest(benchmark::State& state) {
    Tools& tools = Tools::instance();
    const std::string lines = "-Lens\n-LensID\n-s2\n" + tools.photo().string() + "\n";
    compare(
        state, {.reference = "the same bytes by a minimal loop", .atMost = 1.02}, 1,
        [&] { benchmark::DoNotOptimize(exiftool::readTags(tools.photo(), "-Lens -LensID")); },
        [&] { tools.askBare(lines); });
}

void smallestRequest(benchmark::State& state) {
    Tools& tools = Tools::instance();
    exiftool::internal::ExiftoolProcess& process = exiftool::internal::getExiftoolProcess({});
    compare(
        state, {.reference = "the same bytes by a minimal loop", .atMost = 1.15}, 10,
        [&] { benchmark::DoNotOptimize(process.execute({})); }, [&] { tools.askBare(""); });
}

BENCHMARK_ROW(tagRequest, "readTags of two tags", 300);
BENCHMARK_ROW(smallestRequest, "the smallest ExifTool request", 300);

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    exiftool::uninitialize();
    return 0;
}
