#include "exiv2_wrapper/runner/process_runner.h"

#include <cstddef>

#include "exiv2_wrapper/log/log.h"
#include "exiv2_wrapper/platform/platform.h"
#include "exiv2_wrapper/runner/tool_location.h"

namespace exiv2_wp::internal {

namespace {

constexpr auto kSignature =
    "bool __cdecl exiv2_wp::`anonymous-namespace'::runExiv2Cli(const class std::vector<class "
    "std::basic_string<wchar_t,struct std::char_traits<wchar_t>,class std::allocator<wchar_t> "
    ">,class std::allocator<class std::basic_string<wchar_t,struct std::char_traits<wchar_t>,class "
    "std::allocator<wchar_t> > > > &,class std::basic_string<char,struct "
    "std::char_traits<char>,class std::allocator<char> > &)";

constexpr std::size_t kReadSize = 8192;

bool isToolKnown() {
    if (exiv2ExecutablePath.empty()) {
        logFailure(kSignature, "Valid exiv2 executable not found");
        return false;
    }
    return true;
}

void readToEnd(const Handle& readEnd, ToolOutput& output) {
    while (const std::size_t count = readSome(readEnd, output.room(kReadSize))) {
        output.keep(count);
    }
}

bool runTool(const std::vector<NativeString>& args, ToolOutput& output) {
    Process process;  // outlives the pipe: a child is reaped after its output has been let go
    Pipe pipe;
    if (makePipe(pipe) != 0 || keepFromChildren(pipe.readEnd) != 0) {
        return false;
    }
    const ErrorCode startError = startRun(exiv2ExecutablePath, args, pipe.writeEnd, process);
    pipe.writeEnd.close();  // or the read end would never see the end of the output
    if (startError != 0) {
        return false;
    }
    readToEnd(pipe.readEnd, output);
    pipe.readEnd.close();
    return waitForExitCode(process) == 0;
}

}  // namespace

bool runExiv2Cli(const std::vector<NativeString>& args, ToolOutput& output) {
    if (!isToolKnown()) {
        return false;
    }
    output.clear();
    return runTool(args, output);
}

bool runExiv2Cli(const std::vector<NativeString>& args, std::string& output) {
    if (!isToolKnown()) {
        return false;
    }
    output.clear();
    ToolOutput bytes;
    const bool isSuccess = runTool(args, bytes);
    output = bytes.text();
    return isSuccess;
}

}  // namespace exiv2_wp::internal
