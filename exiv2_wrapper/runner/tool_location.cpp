#include "exiv2_wrapper/runner/tool_location.h"

#include <string>
#include <system_error>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/log/log.h"
#include "exiv2_wrapper/platform/platform.h"
#include "exiv2_wrapper/runner/process_runner.h"
#include "exiv2_wrapper/runner/read_call.h"
#include "exiv2_wrapper/text/path_text.h"

namespace exiv2_wp {

namespace internal {

std::filesystem::path exiv2ExecutablePath;

std::filesystem::path libraryDirectory() {
    return libraryFile().parent_path();
}

}  // namespace internal

namespace {

constexpr auto kSignature =
    "bool __cdecl exiv2_wp::initialize(const class std::filesystem::path &)";

// The same name on every platform.
constexpr auto kToolName = "exiv2.exe";

// The one line with a wide text. Like that of isTiffRaw it isn't begun by the logger itself: the
// host's own logger has presets of its own for these two.
void logStartUp(const std::filesystem::path& directory) {
    vesk::logstream line;
    internal::beginLine(line, internal::LogType::startUp);
    line << "exiv2 init with path " << internal::widePath(directory);
    vesk::LOG(line);
}

bool isFile(const std::filesystem::path& path) {
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    return std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

bool answersVersion() {
    std::string ignoredOutput;
    return internal::runExiv2Cli({internal::asciiArgument("--version")}, ignoredOutput);
}

}  // namespace

bool initialize(const std::filesystem::path& dir) {
    const std::filesystem::path directory = dir.empty() ? internal::libraryDirectory() : dir;
    logStartUp(directory);

    // These two failures leave a tool that was found earlier in use; the later two, which have
    // already put the new path in its place, fall back to no tool at all.
    if (directory.empty()) {
        internal::logFailure(kSignature,
                             "Exiv2 initialization failed: empty path and could not determine "
                             "library directory");
        return false;
    }
    std::error_code error;
    if (!std::filesystem::is_directory(directory, error)) {
        internal::logFailure(kSignature,
                             "Exiv2 initialization failed: path is not a directory: ", directory);
        return false;
    }

    const std::filesystem::path tool = directory / kToolName;
    internal::exiv2ExecutablePath = tool;
    internal::forgetReadCall();
    if (!isFile(tool)) {
        internal::logFailure(kSignature,
                             "Exiv2 initialization failed: executable not found: ", tool);
        internal::exiv2ExecutablePath.clear();
        return false;
    }
    if (!answersVersion()) {
        internal::logFailure(kSignature, "Exiv2 initialization failed: cannot execute ", tool);
        internal::exiv2ExecutablePath.clear();
        return false;
    }
    return true;
}

}  // namespace exiv2_wp
