#include "exiv2_wrapper/exiftool/process_channel.h"

#include <algorithm>
#include <string>

#include "exiv2_wrapper/exiftool/request_protocol.h"
#include "exiv2_wrapper/log/log.h"
#include "exiv2_wrapper/text/path_text.h"
#include "exiv2_wrapper/text/text.h"

namespace exiftool::internal {

namespace {

namespace platform = exiv2_wp::internal;

// The same name on every platform.
constexpr auto kToolName = "exiftool.exe";

// Stay, and take arguments from standard input.
constexpr std::string_view kArguments = " -stay_open true -@ -";

bool isAscii(const std::filesystem::path& path) {
    const auto& text = path.native();
    return std::all_of(text.begin(), text.end(),
                       platform::isAscii<platform::NativeString::value_type>);
}

// The tool can't be started from every path that isn't plain ASCII, so its short form goes first
// where there is one. A path with blanks goes as it is and, on Windows, unquoted: the system finds
// the tool by it, unless another program lies where the path's first word ends.
std::filesystem::path startablePath(const std::filesystem::path& tool) {
    if (isAscii(tool)) {
        return tool;
    }
    const std::filesystem::path shortForm = platform::shortPath(tool);
    return shortForm.empty() ? tool : shortForm;
}

}  // namespace

ProcessChannel::~ProcessChannel() {
    platform::endService(service_);
}

bool ProcessChannel::start(const std::filesystem::path& exiftoolDir) {
    if (exiftoolDir.empty()) {
        platform::logPlain(platform::LogType::failure,
                           "exiftool initialization: exiftoolDir is empty");
        return false;
    }
    const std::filesystem::path tool = startablePath(exiftoolDir / kToolName);
    if (!makePipes()) {
        return false;
    }
    if (checkStep(
            platform::startService(tool, kArguments, input_.readEnd, output_.writeEnd, service_),
            "CreateProcessW")) {
        return false;
    }
    output_.writeEnd.close();
    input_.readEnd.close();
    if (!tieToHost()) {
        write(kQuitRequest);
        closePipes();
        return false;
    }
    platform::settleService(service_);
    return true;
}

void ProcessChannel::write(std::string_view bytes) {
    static_cast<void>(platform::writeAll(input_.writeEnd, bytes));
}

std::size_t ProcessChannel::read(std::span<char> buffer) {
    return platform::readSome(output_.readEnd, buffer);
}

platform::ErrorCode ProcessChannel::countActiveProcesses(std::uint32_t& count) {
    return platform::countActiveProcesses(service_, count);
}

void ProcessChannel::close() {
    closePipes();
    platform::awaitQuit(service_);
}

bool ProcessChannel::makePipes() {
    return !checkStep(platform::makePipe(output_), "CreatePipe OUT") &&
           !checkStep(platform::makePipe(input_), "CreatePipe IN") &&
           !checkStep(platform::keepFromChildren(output_.readEnd), "SetHandleInformation OUT") &&
           !checkStep(platform::keepFromChildren(input_.writeEnd), "SetHandleInformation IN");
}

// The tool must not outlive the host, however that ends.
bool ProcessChannel::tieToHost() {
    return !checkStep(platform::createJob(service_), "CreateJobObjectA") &&
           !checkStep(platform::killJobWithHost(service_), "SetInformationJobObject") &&
           !checkStep(platform::assignToJob(service_), "AssignProcessToJobObject");
}

void ProcessChannel::closePipes() {
    output_.readEnd.close();
    input_.writeEnd.close();
}

bool checkStep(platform::ErrorCode error, const char* step) {
    if (error == 0) {
        return false;
    }
    platform::logStepFailure(step, error);
    return true;
}

}  // namespace exiftool::internal
