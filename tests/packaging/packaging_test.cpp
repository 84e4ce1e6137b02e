#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "support/run_program.h"
#include "support/tool_directory.h"

/// The example projects, built as their users build them.
namespace test_support {
namespace {

// As it reads: the C runtime of Windows ends lines in its own way.
std::string readable(std::string text) {
    std::erase(text, '\r');
    return text;
}

class Package : public ::testing::Test {
protected:
    ProgramResult run(const char* program, const std::filesystem::path& tools) {
        ProgramResult result =
            runProgram(program, {tools.native(), photo.native()}, scratch.path());
        return {result.exitCode, readable(result.output), readable(result.error)};
    }

    ToolDirectory tool;
    TemporaryDirectory scratch;
    std::filesystem::path photo = tool.makeFile("photo.jpg");
};

TEST_F(Package, IsFoundByAnApplicationAfterItWasMoved) {
    tool.answerMetadata("Exif.Image.Model  Ascii  13  Canon EOS 7D\n");

    const ProgramResult result = run(CONSUMER, tool.path());

    EXPECT_EQ(result.exitCode, 0) << result.error;
    EXPECT_EQ(result.output, "Canon EOS 7D, crop factor 1.61\n");
}

TEST_F(Package, LogsThroughItsStandInWhereTheHostHasNone) {
    const ProgramResult result = run(CONSUMER, scratch.path());

    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.error.find("[3] bool __cdecl exiv2_wp::initialize"), std::string::npos)
        << result.error;
}

TEST_F(Package, ServesAnEditorThatContainsItsSources) {
    tool.answerMetadata("Exif.Image.Orientation  Short  1  6\n");

    const ProgramResult result = run(EMBEDDED, tool.path());

    EXPECT_EQ(result.exitCode, 0) << result.error;
    EXPECT_EQ(result.output, "Exif orientation 6\n");
}

TEST_F(Package, LogsThroughTheEditorsOwnLogger) {
    const ProgramResult result = run(EMBEDDED, scratch.path());

    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.error.find("editor: <6> exiv2 init with path "), 0U) << result.error;
    EXPECT_NE(result.error.find("\neditor: <3> bool __cdecl exiv2_wp::initialize"),
              std::string::npos)
        << result.error;
    EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 3) << result.error;
}

}  // namespace
}  // namespace test_support
