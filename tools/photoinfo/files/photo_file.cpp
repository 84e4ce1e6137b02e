#include "photoinfo/files/photo_file.h"

#include <fstream>
#include <string_view>
#include <system_error>

#include "photoinfo/exit_code.h"
#include "photoinfo/platform.h"

namespace photoinfo {

namespace fs = std::filesystem;

fs::path filePathOf(const std::string& argument) {
    // An option to both tools; a comment and white space at the start of a line to exiftool.
    constexpr std::string_view kMisunderstood = "-# \t\v\f";
    const bool isPlain =
        argument.empty() || kMisunderstood.find(argument.front()) == std::string_view::npos;
    return isPlain ? platform::pathOf(argument) : "." / platform::pathOf(argument);
}

std::string readingError(const fs::path& file) {
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (!fs::exists(status)) {
        return "no such file";
    }
    if (fs::is_directory(status)) {
        return "is a folder, not a photo";
    }
    // Opening a pipe would wait for somebody to write into it.
    if (!fs::is_regular_file(status)) {
        return "is no regular file";
    }
    return std::ifstream(file, std::ios::binary) ? "" : "cannot be read";
}

void requireReadable(const std::string& argument) {
    const std::string error = readingError(filePathOf(argument));
    if (!error.empty()) {
        throw Failure(ExitCode::file, aboutFile(argument, error));
    }
}

std::string aboutFile(const std::string& argument, const std::string& message) {
    constexpr auto kEmptyName = "\"\"";
    return (argument.empty() ? kEmptyName : argument) + ": " + message;
}

}  // namespace photoinfo
