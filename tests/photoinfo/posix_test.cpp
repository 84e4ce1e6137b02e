#include <nlohmann/json.hpp>

#include "photoinfo/photoinfo_fixture.h"

namespace test_support {
namespace {

class PhotoinfoOnPosix : public PhotoinfoTest {};

TEST_F(PhotoinfoOnPosix, TakesAFileNameThatIsNotUtf8) {
    tool.answerMetadata("Exif.Image.Make  Ascii  6  Canon\n");
    tool.makeFile("photo.jpg");
    const std::filesystem::path photo = tool.path() / "\xFF.jpg";
    std::filesystem::rename(tool.path() / "photo.jpg", photo);

    const ProgramResult result = summary({photo.native(), native("--json")});

    EXPECT_EQ(result.exitCode, 0);
    const auto answer = nlohmann::json::parse(result.output).at(0);
    EXPECT_EQ(answer.at("file"), tool.path().native() + "/\xEF\xBF\xBD.jpg");
    EXPECT_EQ(answer.at("summary").at("cameraMaker"), "Canon");
}

TEST_F(PhotoinfoOnPosix, ReportsOutputThatCannotBeWritten) {
    const auto photo = tool.makeFile("photo.jpg");
    const std::filesystem::path error = scratch.path() / "standard-error";

    const int exitCode =
        runIntoFiles(PHOTOINFO, {"summary", photo.native(), "--tools", tool.path().native()},
                     "/dev/full", error);

    EXPECT_EQ(exitCode, 1);
}

TEST_F(PhotoinfoOnPosix, DoesNotWaitForAPipe) {
    EXPECT_EQ(summary({"/dev/null"}),
              (ProgramResult{4, "", "photoinfo: /dev/null: is no regular file\n"}));
}

class PhotoinfoExiftoolOnPosix : public PhotoinfoExiftoolTest {};

// On Windows the tool goes with its host, as a rule before it has read that it should quit.
TEST_F(PhotoinfoExiftoolOnPosix, AsksTheToolToQuit) {
    tool.answerRequest("-s2", {.answer = {.output = "ISO: 200\n"}});

    (void)photoinfo({native("tags"), tool.makeFile("photo.jpg").native()});

    EXPECT_EQ(tool.countQuits(), 1U);
}

}  // namespace
}  // namespace test_support
