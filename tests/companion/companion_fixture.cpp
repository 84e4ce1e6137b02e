// SPDX-License-Identifier: GPL-2.0-or-later
#include "companion/companion_fixture.h"

#include <sstream>

namespace companion_tests {

std::optional<PreviewAnswer> takeApart(const std::string& output) {
    const std::size_t lineEnd = output.find('\n');
    if (lineEnd == std::string::npos || lineEnd + 1 == output.size()) {
        return std::nullopt;
    }
    PreviewAnswer answer{.payload = output.substr(lineEnd + 1)};
    std::istringstream(output) >> answer.size.width >> answer.size.height;
    const std::string header =
        std::to_string(answer.size.width) + ' ' + std::to_string(answer.size.height) + " 0 0 0 0";
    return output.substr(0, lineEnd) == header ? std::optional(answer) : std::nullopt;
}

std::set<std::filesystem::path> namesIn(const std::filesystem::path& folder) {
    std::set<std::filesystem::path> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        names.insert(entry.path());
    }
    return names;
}

ProgramEnd Companion::call(const std::vector<std::string>& arguments,
                           const std::string& input) const {
    Surroundings surroundings{.input = input};
    surroundings.environment["EXIV2_COMPANION_EXIV2"] = real.toolPath().native();
    return runProgram(COMPANION, arguments, surroundings);
}

std::string Companion::makePhoto(const std::string& name, const PhotoContents& contents) const {
    const std::filesystem::path file = folder.path() / name;
    companion_tests::makePhoto(file, contents);
    return file.native();
}

}  // namespace companion_tests
