#include "photoinfo/tool/tool_folder.h"

#include <filesystem>
#include <system_error>

#include "photoinfo/platform.h"

namespace photoinfo {

std::string usualToolFolder() {
    const std::filesystem::path program = platform::programFolder();
    const std::filesystem::path folder = program.parent_path() / "tools";
    std::error_code error;
    const bool holdsTool =
        !program.empty() && (std::filesystem::is_regular_file(folder / "exiv2.exe", error) ||
                             std::filesystem::is_regular_file(folder / "exiftool.exe", error));
    return holdsTool ? platform::argumentOf(folder) : std::string();
}

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
