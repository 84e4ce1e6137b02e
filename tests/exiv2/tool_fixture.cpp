// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/tool_fixture.h"

namespace exiv2_tool {

std::set<std::filesystem::path> namesIn(const std::filesystem::path& folder) {
    std::set<std::filesystem::path> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        names.insert(entry.path());
    }
    return names;
}

ProgramResult ToolTest::call(const Call& arguments) const {
    std::vector<test_support::NativeString> texts;
    for (const std::filesystem::path& argument : arguments) {
        texts.push_back(argument.native());
    }
    return test_support::runProgram(EXIV2_TOOL, texts, outputs_.path());
}

std::filesystem::path ToolTest::makePhoto(std::string_view name,
                                          const PhotoContents& contents) const {
    return folder.makeFile(name, photoBytes(contents));
}

}  // namespace exiv2_tool
