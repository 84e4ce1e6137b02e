#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

#include "support/run_program.h"
#include "support/tool_directory.h"

namespace test_support {
namespace {

namespace fs = std::filesystem;

/// The installed files in a folder of the test's own, with a stand-in exiv2.exe in the folder
/// tools.
class InstalledPhotoinfoWithTools : public ::testing::Test {
protected:
    InstalledPhotoinfoWithTools() {
        tool.answerMetadata("Exif.Image.Model  Ascii  13  Canon EOS 7D\n");
        fs::copy(program.parent_path().parent_path(), installed, fs::copy_options::recursive);
        fs::remove_all(installed / "tools");
        fs::copy(tool.path(), installed / "tools", fs::copy_options::recursive);
    }

    [[nodiscard]] ProgramResult summary(std::vector<NativeString> options) const {
        options.insert(options.begin(), {native("summary"), photo.native()});
        return runProgram(installed / "bin" / program.filename(), options, scratch.path());
    }

    const fs::path program = PHOTOINFO;
    TemporaryDirectory scratch;
    const fs::path installed = scratch.path() / "installed";
    ToolDirectory tool;
    fs::path photo = scratch.makeFile("photo.jpg");
};

TEST_F(InstalledPhotoinfoWithTools, FindsThoseByItself) {
    const ProgramResult result = summary({});

    EXPECT_EQ(result.exitCode, 0) << result.error;
    EXPECT_NE(result.output.find("Canon EOS 7D"), std::string::npos) << result.output;
}

TEST_F(InstalledPhotoinfoWithTools, TakesThoseThatTheUserNames) {
    ToolDirectory named;
    named.answerMetadata("Exif.Image.Model  Ascii  10  NIKON D70\n");

    const ProgramResult result = summary({native("--tools"), named.path().native()});

    EXPECT_NE(result.output.find("NIKON D70"), std::string::npos) << result.output;
}

TEST_F(InstalledPhotoinfoWithTools, LooksBesideTheLibraryWhereThatFolderHoldsNoTool) {
    fs::remove(installed / "tools" / "exiv2.exe");

    EXPECT_EQ(summary({}), (ProgramResult{3, "",
                                          "photoinfo: no working exiv2.exe beside the library; "
                                          "name its folder with --tools DIR\n"}));
}

TEST(InstalledPhotoinfo, FindsItsLibrariesAfterItWasMoved) {
    const TemporaryDirectory scratch;

    const ProgramResult result = runProgram(PHOTOINFO, {native("--version")}, scratch.path());

    EXPECT_EQ(result.exitCode, 0) << result.error;
    EXPECT_EQ(result.output.find("photoinfo " PHOTOINFO_VERSION), 0U) << result.output;
}

}  // namespace
}  // namespace test_support
