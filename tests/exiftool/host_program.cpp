#include "exiftool/host_program.h"

#include <utility>

#include "support/tool_directory.h"
#include "support/wait_until.h"

namespace test_support {

ProgramResult runHost(const std::vector<std::string>& commands) {
    const TemporaryDirectory folder("exiftool-host-");
    ProgramResult result = runProgram(EXIFTOOL_HOST, nativeArguments(commands), folder.path());
    std::erase(result.output, '\r');
    return result;
}

std::future<ProgramResult> startHost(std::vector<std::string> commands) {
    return std::async(std::launch::async,
                      [commands = std::move(commands)] { return runHost(commands); });
}

bool waitForFile(const std::filesystem::path& file) {
    return waitUntil([&] { return std::filesystem::exists(file); });
}

std::vector<NativeString> nativeArguments(const std::vector<std::string>& arguments) {
    std::vector<NativeString> natives;
    natives.reserve(arguments.size());
    for (const std::string& argument : arguments) {
        const std::u8string text(argument.begin(), argument.end());
        natives.push_back(std::filesystem::path(text).native());
    }
    return natives;
}

}  // namespace test_support
