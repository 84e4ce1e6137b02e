// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/tool_fixture.h"

namespace exiv2_tool {
namespace {

/// What "pr" prints about a photo with these tags.
class Summary : public ToolTest {
protected:
    [[nodiscard]] ProgramResult summaryOf(const std::map<std::string, std::string>& tags) const {
        return call({"pr", makePhoto("photo.jpg", {.tags = tags})});
    }
};

TEST_F(Summary, HasALineForEachOfThreeValues) {
    EXPECT_EQ(summaryOf({{"Exif.Photo.LensModel", "EF24-70mm f/2.8L USM"},
                         {"Exif.Photo.FocalLength", "35/1"},
                         {"Exif.Photo.SubjectDistance", "100/10"}}),
              (ProgramResult{0,
                             "Lens name       : EF24-70mm f/2.8L USM\n"
                             "Focal length    : 35.0 mm\n"
                             "Subject distance: 1.2\n",
                             ""}));
}

TEST_F(Summary, IsEmptyWhereNothingIsKnown) {
    EXPECT_EQ(summaryOf({{"Exif.Photo.LensModel", "n/a"},
                         {"Exif.Photo.FocalLength", "0/0"},
                         {"Exif.Photo.SubjectDistance", "0/1"}}),
              ProgramResult{});
}

TEST_F(Summary, IsEmptyForAnImageWithoutExif) {
    const Bytes picture = makeJpeg({64, 48});
    EXPECT_EQ(
        call({"pr", folder.makeFile("bare.jpg", std::string(picture.begin(), picture.end()))}),
        ProgramResult{});
}

TEST_F(Summary, StopsAtNothingForInfinity) {
    EXPECT_EQ(summaryOf({{"Exif.Photo.SubjectDistance", "4294967295/1"}}).output,
              "Subject distance: 4\n");
}

TEST_F(Summary, KeepsOnOneLineWhatHasSeveral) {
    EXPECT_EQ(summaryOf({{"Exif.Photo.LensModel", "50mm\nFocal length    : 1"}}).output,
              "Lens name       : 50mm Focal length    : 1\n");
}

TEST_F(Summary, PassesOverALensTagThatTellsNone) {
    EXPECT_EQ(summaryOf({{"Exif.CanonCs.LensType", "65535"},
                         {"Exif.Photo.LensModel", "A lens"},
                         {"Exif.Image.Make", "Canon"}})
                  .output,
              "Lens name       : A lens\n");
}

}  // namespace
}  // namespace exiv2_tool
