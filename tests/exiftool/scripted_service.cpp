#include "exiftool/scripted_service.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace {

using exiv2_wp::internal::ErrorCode;
using test_support::service;

// What the platform hands out, and how the list of calls names it.
constexpr std::array kNames = {"output read end",
                               "output write end",
                               "input read end",
                               "input write end",
                               "process",
                               "thread",
                               "job"};

enum Value : std::intptr_t {
    kOutputReadEnd,
    kOutputWriteEnd,
    kInputReadEnd,
    kInputWriteEnd,
    kProcess,
    kThread,
    kJob,
};

std::string nameOf(std::intptr_t value) {
    return kNames.at(static_cast<std::size_t>(value));
}

std::string utf8(const std::filesystem::path& path) {
    const std::u8string text = path.generic_u8string();
    return {text.begin(), text.end()};
}

ErrorCode note(const std::string& call) {
    service().calls.push_back(call);
    const std::string& failing = service().failingCall;
    return !failing.empty() && call.starts_with(failing) ? service().error : 0;
}

// The first pipe is the one for the tool's output.
bool isFirstPipe() {
    const std::vector<std::string>& calls = service().calls;
    return std::ranges::find(calls, "make output pipe") == calls.end();
}

}  // namespace

namespace test_support {

ScriptedService& service() {
    static ScriptedService instance;
    return instance;
}

}  // namespace test_support

namespace exiv2_wp::internal {

void closeHandle(std::intptr_t handle) {
    note("close " + nameOf(handle));
}

void closeProcess(std::intptr_t, std::intptr_t) {
    note("close process and thread");
}

ErrorCode makePipe(Pipe& pipe) {
    const bool isOutput = isFirstPipe();
    const ErrorCode error = note(isOutput ? "make output pipe" : "make input pipe");
    if (error == 0) {
        pipe.readEnd = Handle(isOutput ? kOutputReadEnd : kInputReadEnd);
        pipe.writeEnd = Handle(isOutput ? kOutputWriteEnd : kInputWriteEnd);
    }
    return error;
}

ErrorCode keepFromChildren(const Handle& end) {
    return note("keep " + nameOf(end.value()) + " from children");
}

std::size_t readSome(const Handle&, std::span<char>) {
    return 0;
}

ErrorCode writeAll(const Handle& writeEnd, std::string_view bytes) {
    return note("write " + std::string(bytes) + " to " + nameOf(writeEnd.value()));
}

ErrorCode startService(const std::filesystem::path& tool, std::string_view arguments,
                       const Handle& input, const Handle& output, Service& service) {
    const ErrorCode error = note("start " + utf8(tool) + std::string(arguments) + " from " +
                                 nameOf(input.value()) + " to " + nameOf(output.value()));
    if (error == 0) {
        service.process = Process(kProcess, kThread);
    }
    return error;
}

ErrorCode createJob(Service& service) {
    const ErrorCode error = note("create job");
    if (error == 0) {
        service.job = Handle(kJob);
    }
    return error;
}

ErrorCode killJobWithHost(const Service&) {
    return note("kill job with host");
}

ErrorCode assignToJob(const Service&) {
    return note("assign tool to job");
}

void settleService(Service& service) {
    service.process.close();
}

ErrorCode countActiveProcesses(const Service&, std::uint32_t& count) {
    count = 1;
    return note("count active processes");
}

void awaitQuit(Service&) {
    note("await quit");
}

// As on Windows: the job is given up unclosed.
void endService(Service& service) {
    note("end service");
    service.job.release();
}

std::uint32_t currentProcessId() {
    return 1;
}

std::filesystem::path shortPath(const std::filesystem::path& path) {
    note("short path of " + utf8(path));
    return service().shortPath;
}

}  // namespace exiv2_wp::internal
