#include "fuzz/canned_runner.h"

#include <algorithm>

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

bool runExiv2Cli(const std::vector<NativeString>& args, ToolOutput& output) {
    std::string text;
    const bool result = runExiv2Cli(args, text);
    output.clear();
    std::ranges::copy(text, output.room(text.size()).begin());
    output.keep(text.size());
    return result;
}

}  // namespace exiv2_wp::internal
