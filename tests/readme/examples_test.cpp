#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/read_file.h"
#include "support/run_program.h"
#include "support/tool_directory.h"

/// The programs of the README and the documents, run as their readers run them.
namespace test_support {
namespace {

class Example : public ::testing::Test {
protected:
    // With arguments behind the folder of the tools. Lines end as the platform ends them.
    ProgramResult runIn(const std::filesystem::path& tools, const char* program,
                        std::vector<NativeString> arguments) {
        arguments.insert(arguments.begin(), tools.native());
        ProgramResult result = runProgram(program, arguments, scratch.path());
        std::erase(result.output, '\r');
        return result;
    }
    ProgramResult run(const char* program, std::vector<NativeString> arguments) {
        return runIn(tool.path(), program, std::move(arguments));
    }

    ToolDirectory tool;
    TemporaryDirectory scratch;
    std::filesystem::path photo = tool.makeFile("photo.jpg");
};

TEST_F(Example, FirstProgramShowsAPhoto) {
    tool.answerMetadata(
        "Exif.Image.Model  Ascii  13  Canon EOS 6D\n"
        "Exif.Photo.FNumber  Rational  1  56/10\n"
        "Exif.Photo.ISOSpeedRatings  Short  1  200\n");

    const ProgramResult result = run(FIRST_PROGRAM, {photo.native()});

    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output, "Canon EOS 6D, f/5.6, ISO 200\n");
}

TEST_F(Example, FirstProgramTellsWhenTheToolIsMissing) {
    const TemporaryDirectory empty;

    EXPECT_EQ(runIn(empty.path(), FIRST_PROGRAM, {photo.native()}).exitCode, 1);
}

TEST_F(Example, StartUpStartsBothTools) {
    const ToolDirectory exiftool("exiftool.exe", tool);

    const ProgramResult result = run(START_UP, {});

    EXPECT_EQ(result.exitCode, 0) << result.error;
    EXPECT_EQ(result.output, "photos can be read\nexports can get metadata\n");
}

TEST_F(Example, StartUpGoesOnWithoutExiftool) {
    const ProgramResult result = run(START_UP, {});

    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.output, "photos can be read\nexports cannot get metadata\n");
}

TEST_F(Example, PreviewWritesTheBytesOfAPreview) {
    tool.answer({"-ep"}, {.output = "640 427 0 0 0 0\npicture"});
    const std::filesystem::path file = scratch.path() / "preview.jpg";

    const ProgramResult result = run(PREVIEW, {photo.native(), file.native()});

    EXPECT_EQ(result.exitCode, 0) << result.error;
    EXPECT_EQ(result.output, "640 x 427\n");
    EXPECT_EQ(readFile(file), "picture");
}

TEST_F(Example, PreviewTakesASizedPayloadToo) {
    tool.answer({"-ep"}, {.output = "640 427 0 1 3 4\npicture"});

    const ProgramResult result =
        run(PREVIEW, {photo.native(), (scratch.path() / "preview.jpg").native()});

    EXPECT_EQ(result.exitCode, 0) << result.error;
}

TEST_F(Example, RawBytesTellsTheSizeOfTheMakerNotes) {
    tool.answer({"--key"}, {.output = "Exif.Photo.MakerNote\n  4e 69 6b 6f 6e\n"});

    const ProgramResult result = run(RAW_BYTES, {photo.native()});

    EXPECT_EQ(result.exitCode, 0) << result.error;
    EXPECT_EQ(result.output, "5 bytes of maker notes, the first is 78\n");
}

TEST_F(Example, LongListShowsPhotosInTheirOrder) {
    std::vector<NativeString> photos;
    std::string expected;
    for (int i = 1; i <= 6; ++i) {
        const std::string iso = std::to_string(100 * i);
        const auto file = tool.makeFile("photo" + iso + ".jpg");
        tool.answerMetadata("Exif.Photo.ISOSpeedRatings  Short  1  " + iso + "\n", "", file);
        photos.push_back(file.native());
        expected += "no date, ISO " + iso + "\n";
    }

    const ProgramResult result = run(LONG_LIST, photos);

    EXPECT_EQ(result.exitCode, 0) << result.error;
    EXPECT_EQ(result.output, expected);
}

TEST_F(Example, ExportCopiesMetadataWithTheExportsValues) {
    ToolDirectory exiftool("exiftool.exe", tool);
    exiftool.answerRequest("-TagsFromFile", {.answer = {.output = "    1 image files updated\n"}});

    const ProgramResult result =
        run(EXPORT, {photo.native(), tool.makeFile("exported.tif").native()});

    EXPECT_EQ(result.exitCode, 0) << result.error;
    EXPECT_EQ(result.output, "metadata copied\n");
    ASSERT_EQ(exiftool.requests().size(), 1U);
    EXPECT_NE(
        exiftool.requests().front().find("-exif:Software=Editor 1.0\n-CreatorTool=Editor 1.0\n"
                                         "-Rating=4\n"),
        std::string::npos)
        << exiftool.requests().front();
}

}  // namespace
}  // namespace test_support
