#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "api/photo_with_tool.h"

namespace exiv2_wp {
namespace {

class Orientation : public PhotoWithTool {
protected:
    std::vector<int> read() {
        std::vector<int> told;
        readExiv2Orientation(file, [&told](int orientation) { told.push_back(orientation); });
        return told;
    }
};

TEST_F(Orientation, OfAFileWithoutMetadataIsNotTold) {
    EXPECT_EQ(read(), std::vector<int>());
}

TEST_F(Orientation, ThatIsMissingIsNotTold) {
    photoHas("Exif.Photo.Orientation Short 1 6\n");
    EXPECT_EQ(read(), std::vector<int>());
}

TEST_F(Orientation, IsTheFirstInteger) {
    photoHas("Exif.Image.Orientation Short 2 6 1\n");
    EXPECT_EQ(read(), std::vector{6});
}

TEST_F(Orientation, OutsideOneToEightIsToldAsItStands) {
    photoHas("Exif.Image.Orientation Short 1 -9\n");
    EXPECT_EQ(read(), std::vector{-9});
}

// A rational tag has no integers, so its text is read; a lone number is no rational.
TEST_F(Orientation, WithoutIntegersIsReadFromTheText) {
    photoHas("Exif.Image.Orientation Rational 1 +6\n");
    EXPECT_EQ(read(), std::vector{6});
}

TEST_F(Orientation, ThatIsNoNumberIsNotTold) {
    photoHas("Exif.Image.Orientation Ascii 2 6a\n");
    EXPECT_EQ(read(), std::vector<int>());
}

TEST_F(Orientation, BeyondThirtyTwoBitsIsNotTold) {
    photoHas("Exif.Image.Orientation Short 1 4294967296\n");
    EXPECT_EQ(read(), std::vector<int>());
}

TEST_F(Orientation, ThatIsMissingNeedsNoCallback) {
    photoHas("Exif.Image.Make Ascii 6 Canon\n");
    EXPECT_NO_THROW(readExiv2Orientation(file, nullptr));
}

TEST_F(Orientation, ThatIsThereNeedsACallback) {
    photoHas("Exif.Image.Orientation Short 1 6\n");
    EXPECT_THROW(readExiv2Orientation(file, nullptr), std::bad_function_call);
}

TEST_F(Orientation, LogsNothing) {
    photoHas("Exif.Image.Make Ascii 6 Canon\n");
    read();
    EXPECT_TRUE(log.lines().empty());
}

}  // namespace
}  // namespace exiv2_wp
