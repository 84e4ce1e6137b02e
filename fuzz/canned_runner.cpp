#include "fuzz/canned_runner.h"

#include <algorithm>
#include <string_view>

#include "exiv2_wrapper/runner/process_runner.h"

namespace fuzz {

CannedRunner& cannedRunner() {
    static CannedRunner runner;
    return runner;
}

}  // namespace fuzz

namespace exiv2_wp::internal {

bool runExiv2Cli(const std::vector<NativeString>& args, std::string& output) {
    fuzz::CannedRunner& runner = fuzz::cannedRunner();
    const bool isSummary = !args.empty() && args.front() == asciiArgument("pr");
    output = isSummary ? runner.summaryOutput : runner.output;
    runner.arguments = args;
    return runner.result;
}

bool isExiv2Known() {
    return true;
}

// The output comes in pieces, as from a pipe.
std::optional<std::uint32_t> followExiv2Cli(const std::vector<NativeString>& args,
                                            ToolOutput& output,
                                            const std::function<bool()>& onOutput) {
    fuzz::CannedRunner& runner = fuzz::cannedRunner();
    runner.arguments = args;
    output.clear();
    std::string_view rest = runner.output;
    while (!rest.empty()) {
        const std::string_view piece = rest.substr(0, runner.pieceSize);
        std::ranges::copy(piece, output.room(piece.size()).begin());
        output.keep(piece.size());
        rest.remove_prefix(piece.size());
        if (!onOutput()) {
            break;
        }
    }
    return runner.result ? 0 : 1;
}

bool runExiv2Cli(const std::vector<NativeString>& args, ToolOutput& output) {
    std::string text;
    const bool result = runExiv2Cli(args, text);
    output.clear();
    std::ranges::copy(text, output.room(text.size()).begin());
    output.keep(text.size());
    return result;
}

}  // namespace exiv2_wp::internal
