#include "photoinfo/show/exif_codes.h"

#include <gtest/gtest.h>

namespace photoinfo {
namespace {

TEST(ExifCodes, HaveNames) {
    EXPECT_EQ(meteringModeName(255), "other");
    EXPECT_EQ(lightSourceName(24), "ISO studio tungsten");
    EXPECT_EQ(whiteBalanceName(1), "manual");
    EXPECT_EQ(exposureProgramName(3), "aperture priority");
    EXPECT_EQ(orientationName(8), "turn left by 90 degrees");
}

TEST(ExifCodes, AreShownAsNumbersWhenExifDoesNotDefineThem) {
    EXPECT_EQ(meteringModeName(7), "code 7");
    EXPECT_EQ(lightSourceName(5), "code 5");
    EXPECT_EQ(whiteBalanceName(2), "code 2");
    EXPECT_EQ(exposureProgramName(9), "code 9");
    EXPECT_EQ(orientationName(-9), "code -9");
}

}  // namespace
}  // namespace photoinfo
