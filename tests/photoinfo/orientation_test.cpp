#include "photoinfo/photoinfo_fixture.h"

namespace test_support {
namespace {

class PhotoinfoOrientation : public PhotoinfoTest {};

TEST_F(PhotoinfoOrientation, SaysHowToTurnThePhoto) {
    tool.answerMetadata("Exif.Image.Orientation  Short  1  6\n");
    const auto photo = tool.makeFile("photo.jpg");

    EXPECT_EQ(photoinfo({native("orientation"), photo.native()}),
              (ProgramResult{0, shown(photo) + "\n  Orientation         turn right by 90 degrees\n",
                             ""}));
}

TEST_F(PhotoinfoOrientation, WritesTheNumberInJson) {
    tool.answerMetadata("Exif.Image.Orientation  Short  1  6\n");
    const auto photo = tool.makeFile("photo.jpg");

    EXPECT_EQ(photoinfo({native("orientation"), photo.native(), native("--json")}),
              jsonOfOne(photo, "orientation", 6));
}

TEST_F(PhotoinfoOrientation, SaysThatThereIsNone) {
    tool.answerMetadata("Exif.Image.Make  Ascii  6  Canon\n");
    const auto photo = tool.makeFile("photo.jpg");

    EXPECT_EQ(photoinfo({native("orientation"), photo.native()}),
              (ProgramResult{0, shown(photo) + "\n  no orientation\n", ""}));
    EXPECT_EQ(photoinfo({native("orientation"), photo.native(), native("--json")}),
              jsonOfOne(photo, "orientation", nullptr));
}

TEST_F(PhotoinfoOrientation, AnswersForSeveralPhotos) {
    const auto first = tool.makeFile("first.jpg");
    const auto second = tool.makeFile("second.jpg");
    tool.answerMetadata("Exif.Image.Orientation  Short  1  1\n", "", first);
    tool.answerMetadata("Exif.Image.Orientation  Short  1  3\n", "", second);

    EXPECT_EQ(photoinfo({native("orientation"), first.native(), second.native()}).output,
              shown(first) + "\n  Orientation         upright\n\n" + shown(second) +
                  "\n  Orientation         turn by 180 degrees\n");
}

}  // namespace
}  // namespace test_support
