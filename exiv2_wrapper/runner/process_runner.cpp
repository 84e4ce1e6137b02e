#include "exiv2_wrapper/runner/process_runner.h"

#include <cstddef>

#include "exiv2_wrapper/log/log.h"
#include "exiv2_wrapper/platform/platform.h"
#include "exiv2_wrapper/runner/tool_location.h"

namespace exiv2_wp::internal {

namespace {

constexpr auto kRunSignature =
    "bool __cdecl exiv2_wp::`anonymous-namespace'::runExiv2Cli(const class std::vector<class "
    "std::basic_string<wchar_t,struct std::char_traits<wchar_t>,class std::allocator<wchar_t> "
    ">,class std::allocator<class std::basic_string<wchar_t,struct std::char_traits<wchar_t>,class "
    "std::allocator<wchar_t> > > > &,class std::basic_string<char,struct "
    "std::char_traits<char>,class std::allocator<char> > &)";

constexpr std::size_t kReadSize = 8192;

bool readOn() {
    return true;
}

bool isFinished(std::optional<std::uint32_t> exitCode) {
    return exitCode == 0U;
}

void read(const Handle& readEnd, ToolOutput& output, const std::function<bool()>& onOutput) {
    while (const std::size_t count = readSome(readEnd, output.room(kReadSize))) {
        output.keep(count);
        if (!onOutput()) {
            return;
        }
    }
}

std::optional<std::uint32_t> runTool(const std::vector<NativeString>& args, ToolOutput& output,
                                     const std::function<bool()>& onOutput) {
    Process process;  // outlives the pipe: a child is reaped after its output has been let go
    Pipe pipe;
    if (makePipe(pipe) != 0 || keepFromChildren(pipe.readEnd) != 0) {
        return std::nullopt;
    }
    const ErrorCode startError = startRun(exiv2ExecutablePath, args, pipe.writeEnd, process);
    pipe.writeEnd.close();  // or the read end would never see the end of the output
    if (startError != 0) {
        return std::nullopt;
    }
    read(pipe.readEnd, output, onOutput);
    pipe.readEnd.close();
    return waitForExitCode(process);
}

}  // namespace

bool isExiv2Known() {
    if (exiv2ExecutablePath.empty()) {
        logFailure(kRunSignature, "Valid exiv2 executable not found");
        return false;
    }
    return true;
}

bool runExiv2Cli(const std::vector<NativeString>& args, ToolOutput& output) {
    return isFinished(followExiv2Cli(args, output, readOn));
}

std::optional<std::uint32_t> followExiv2Cli(const std::vector<NativeString>& args,
                                            ToolOutput& output,
                                            const std::function<bool()>& onOutput) {
    if (!isExiv2Known()) {
        return std::nullopt;
    }
    output.clear();
    return runTool(args, output, onOutput);
}

bool runExiv2Cli(const std::vector<NativeString>& args, std::string& output) {
    if (!isExiv2Known()) {
        return false;
    }
    ToolOutput bytes;
    const bool isSuccess = isFinished(runTool(args, bytes, readOn));
    output = bytes.text();
    return isSuccess;
}

}  // namespace exiv2_wp::internal
