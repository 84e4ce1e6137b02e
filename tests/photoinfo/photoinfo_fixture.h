#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "support/run_program.h"
#include "support/tool_directory.h"

namespace test_support {

using Json = nlohmann::ordered_json;

/// Runs photoinfo with these arguments and nothing else.
class PhotoinfoProgramTest : public ::testing::Test {
protected:
    [[nodiscard]] ProgramResult run(const std::vector<NativeString>& arguments) const {
        return runProgram(PHOTOINFO, arguments, scratch.path());
    }

    /// Puts the folder of the tools before the other arguments.
    [[nodiscard]] ProgramResult runWith(const ToolDirectory& tools,
                                        std::vector<NativeString> arguments) const {
        arguments.insert(arguments.begin(), {native("--tools"), tools.path().native()});
        return run(arguments);
    }

    TemporaryDirectory scratch;
};

/// The built program against the stand-in exiv2.exe, and no exiftool.exe.
class PhotoinfoTest : public PhotoinfoProgramTest {
protected:
    /// Runs photoinfo with the stand-in's folder.
    [[nodiscard]] ProgramResult photoinfo(const std::vector<NativeString>& arguments) const {
        return runWith(tool, arguments);
    }

    /// Runs "photoinfo summary".
    [[nodiscard]] ProgramResult summary(std::vector<NativeString> arguments) const {
        arguments.insert(arguments.begin(), native("summary"));
        return photoinfo(arguments);
    }

    ToolDirectory tool;
};

/// The same against the stand-in exiftool.exe, and no exiv2.exe.
class PhotoinfoExiftoolTest : public PhotoinfoProgramTest {
protected:
    [[nodiscard]] ProgramResult photoinfo(const std::vector<NativeString>& arguments) const {
        return runWith(tool, arguments);
    }

    ToolDirectory tool{"exiftool.exe"};
};

/// A path as photoinfo shows it.
inline std::string shown(const std::filesystem::path& path) {
    return utf8(path);
}

/// The document of a command that was asked about one file, and what it wrote beside that.
inline ProgramResult jsonOfOne(const std::filesystem::path& file, const char* name,
                               const Json& finding) {
    const Json document =
        Json::array({{{"file", shown(file)}, {name, finding}, {"error", nullptr}}});
    return {0, document.dump(2) + "\n", ""};
}

}  // namespace test_support
