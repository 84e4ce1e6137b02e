#include "photoinfo/photoinfo_fixture.h"

namespace test_support {
namespace {

struct CommandCase {
    const char* name;  // of the command
    std::vector<const char*> more;
    const char* program;
    int toolExitCode;
};

/// What every command that asks about files does alike.
class PhotoinfoCommand : public PhotoinfoProgramTest,
                         public ::testing::WithParamInterface<CommandCase> {
protected:
    [[nodiscard]] ProgramResult ask(const ToolDirectory& tools, const NativeString& file,
                                    std::vector<NativeString> more = {}) const {
        std::vector<NativeString> arguments = {native(GetParam().name), file};
        for (const char* const argument : GetParam().more) {
            arguments.push_back(native(argument));
        }
        arguments.insert(arguments.end(), more.begin(), more.end());
        return runWith(tools, arguments);
    }
};

TEST_P(PhotoinfoCommand, SaysThatItsToolIsMissing) {
    const bool needsExiv2 = GetParam().program == std::string("exiv2.exe");
    const ToolDirectory other(needsExiv2 ? "exiftool.exe" : "exiv2.exe");
    const auto photo = other.makeFile("photo.jpg");

    EXPECT_EQ(ask(other, photo.native()),
              (ProgramResult{GetParam().toolExitCode, "",
                             "photoinfo: " + shown(other.path()) + ": no " + GetParam().program +
                                 " in this folder\n"}));
    EXPECT_EQ(other.calls(), std::vector<Arguments>{});
}

TEST_P(PhotoinfoCommand, SaysThatItsToolDoesNotRun) {
    ToolDirectory tool(GetParam().program);
    tool.answer({"--version"}, {.signal = 9});
    tool.live({.exitAtStart = true});
    const auto photo = tool.makeFile("photo.jpg");

    EXPECT_EQ(ask(tool, photo.native()),
              (ProgramResult{GetParam().toolExitCode, "",
                             "photoinfo: " + shown(tool.path()) + ": the " + GetParam().program +
                                 " of this folder does not run\n"}));
}

TEST_P(PhotoinfoCommand, SaysThatAFileIsMissing) {
    const ToolDirectory tool(GetParam().program);
    const auto missing = tool.path() / "missing.jpg";

    EXPECT_EQ(ask(tool, missing.native()),
              (ProgramResult{4, "", "photoinfo: " + shown(missing) + ": no such file\n"}));
}

TEST_P(PhotoinfoCommand, TellsOfAMissingFileInJsonToo) {
    const ToolDirectory tool(GetParam().program);
    const auto missing = tool.path() / "missing.jpg";

    const ProgramResult result = ask(tool, missing.native(), {native("--json")});

    const Json answer = Json::parse(result.output).at(0);
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_EQ(answer.at("file"), Json(shown(missing)));
    EXPECT_EQ(answer.at("error"), Json("no such file"));
}

TEST_P(PhotoinfoCommand, NeedsAFile) {
    EXPECT_EQ(run({native(GetParam().name)}).exitCode, 2);
}

// A tool that dies in the middle of its work has told nothing; exiftool's commands say so.
TEST_P(PhotoinfoCommand, SurvivesAToolThatDies) {
    ToolDirectory tool(GetParam().program);
    tool.answer({"-PXEkycv"}, {.output = "Exif.Image.Ma", .signal = 9});
    tool.answerRequest("", {.ready = false, .exit = true});
    const auto photo = tool.makeFile("photo.jpg");

    const ProgramResult result = ask(tool, photo.native());

    if (GetParam().program == std::string("exiftool.exe")) {
        EXPECT_EQ(result.exitCode, 5);
    } else if (GetParam().name == std::string("preview")) {
        EXPECT_EQ(result.exitCode, 6);
    } else {
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.output.find(shown(photo) + "\n  no "), 0U) << result.output;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Each, PhotoinfoCommand,
    ::testing::Values(
        CommandCase{"summary", {}, "exiv2.exe", 3}, CommandCase{"info", {}, "exiv2.exe", 3},
        CommandCase{"batch", {}, "exiv2.exe", 3}, CommandCase{"orientation", {}, "exiv2.exe", 3},
        CommandCase{"tag", {"Exif.Image.Make"}, "exiv2.exe", 3},
        CommandCase{"xmp", {}, "exiv2.exe", 3},
        CommandCase{"preview", {"-o", "preview-not-written.jpg"}, "exiv2.exe", 3},
        CommandCase{"tags", {}, "exiftool.exe", 5}, CommandCase{"lens", {}, "exiftool.exe", 5}),
    [](const auto& each) { return std::string(each.param.name); });

class PhotoinfoExiftoolFailures : public PhotoinfoExiftoolTest {};

TEST_F(PhotoinfoExiftoolFailures, AskForTheToolFolder) {
    EXPECT_EQ(
        run({native("lens"), native("photo.jpg")}),
        (ProgramResult{5, "", "photoinfo: name the folder of exiftool.exe with --tools DIR\n"}));
}

TEST_F(PhotoinfoExiftoolFailures, SayThatTheFolderIsMissing) {
    const auto folder = scratch.path() / "nowhere";

    EXPECT_EQ(run({native("lens"), native("photo.jpg"), native("--tools"), folder.native()}),
              (ProgramResult{5, "", "photoinfo: " + shown(folder) + ": no such folder\n"}));
}

}  // namespace
}  // namespace test_support
