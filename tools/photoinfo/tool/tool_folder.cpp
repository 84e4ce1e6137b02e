#include "photoinfo/tool/tool_folder.h"

#include <filesystem>
#include <system_error>

#include "photoinfo/platform.h"

namespace photoinfo {

std::string whyToolFails(const std::string& toolDirectory, const std::string& program) {
    std::error_code error;
    const std::filesystem::path directory = platform::pathOf(toolDirectory);
    if (!std::filesystem::is_directory(directory, error)) {
        return toolDirectory + ": no such folder";
    }
    if (!std::filesystem::is_regular_file(directory / program, error)) {
        return toolDirectory + ": no " + program + " in this folder";
    }
    return toolDirectory + ": the " + program + " of this folder does not run";
}

}  // namespace photoinfo
