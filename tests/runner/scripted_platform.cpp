#include "runner/scripted_platform.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::intptr_t kReadEnd = 10;
constexpr std::intptr_t kWriteEnd = 11;
constexpr std::intptr_t kProcess = 12;
constexpr std::intptr_t kThread = 13;

void note(std::string call) {
    test_support::platform().calls.push_back(std::move(call));
}

std::string nameOf(std::intptr_t value) {
    switch (value) {
        case kReadEnd:
            return "read end";
        case kWriteEnd:
            return "write end";
        case kProcess:
            return "process";
        default:
            return std::to_string(value);
    }
}

}  // namespace

namespace test_support {

ScriptedPlatform& platform() {
    static ScriptedPlatform instance;
    return instance;
}

}  // namespace test_support

namespace exiv2_wp::internal {

using test_support::platform;

void closeHandle(std::intptr_t handle) {
    note("close " + nameOf(handle));
}

void closeProcess(std::intptr_t process, std::intptr_t thread) {
    note("close " + nameOf(process) + (thread == kThread ? " and thread" : ""));
}

ErrorCode makePipe(Pipe& pipe) {
    note("make pipe");
    if (platform().makePipeError == 0) {
        pipe.readEnd = Handle(kReadEnd);
        pipe.writeEnd = Handle(kWriteEnd);
    }
    return platform().makePipeError;
}

ErrorCode keepFromChildren(const Handle& end) {
    note("keep " + nameOf(end.value()) + " from children");
    return platform().keepFromChildrenError;
}

ErrorCode startRun(const std::filesystem::path& tool, std::span<const NativeString> arguments,
                   const Handle& output, Process& process) {
    std::string call = "start " + tool.string();
    for (const NativeString& argument : arguments) {
        call += " " + std::filesystem::path(argument).string();
    }
    note(call + " into " + nameOf(output.value()));
    if (platform().startRunError == 0) {
        process = Process(kProcess, kThread);
    }
    return platform().startRunError;
}

std::size_t readSome(const Handle& readEnd, std::span<char> buffer) {
    note("read at most " + std::to_string(buffer.size()) + " from " + nameOf(readEnd.value()));
    if (platform().reads.empty()) {
        return 0;
    }
    const std::string bytes = platform().reads.front();
    platform().reads.erase(platform().reads.begin());
    std::copy(bytes.begin(), bytes.end(), buffer.begin());
    return bytes.size();
}

std::uint32_t waitForExitCode(Process& process) {
    note("wait for " + nameOf(process.value()));
    process.close();
    return platform().exitCode;
}

std::filesystem::path libraryFile() {
    return platform().libraryFile;
}

}  // namespace exiv2_wp::internal
