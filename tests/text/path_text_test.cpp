#include "exiv2_wrapper/text/path_text.h"

#include <gtest/gtest.h>

namespace exiv2_wp::internal {
namespace {

TEST(Paths, OfAsciiAreTheSameInEveryForm) {
    const std::filesystem::path path = "photos/IMG_0001.JPG";
    EXPECT_EQ(narrowPath(path), "photos/IMG_0001.JPG");
    EXPECT_EQ(widePath(path), L"photos/IMG_0001.JPG");
    EXPECT_EQ(utf8Path(path), "photos/IMG_0001.JPG");
}

TEST(Paths, OfOneCharacterAreThatCharacter) {
    EXPECT_EQ(narrowPath("a"), "a");
    EXPECT_EQ(widePath("a"), L"a");
    EXPECT_EQ(utf8Path("a"), "a");
    EXPECT_EQ(pathFromNarrow("a"), "a");
}

TEST(Paths, OfNothingAreEmptyInEveryForm) {
    EXPECT_EQ(narrowPath({}), "");
    EXPECT_EQ(widePath({}), L"");
    EXPECT_EQ(utf8Path({}), "");
}

TEST(Paths, BeyondAsciiKeepTheirCharacters) {
    const std::filesystem::path path = u8"B\u00E4r \u5199\u771F \U0001F4F7";
    EXPECT_EQ(widePath(path), L"B\u00E4r \u5199\u771F \U0001F4F7");
    EXPECT_EQ(utf8Path(path), "B\xC3\xA4r \xE5\x86\x99\xE7\x9C\x9F \xF0\x9F\x93\xB7");
}

TEST(PathFromNarrow, IsTheOppositeOfTheNarrowForm) {
    const std::filesystem::path path = std::filesystem::path("folder") / "my photo.jpg";
    EXPECT_EQ(pathFromNarrow(narrowPath(path)), path);
    EXPECT_EQ(pathFromNarrow(""), std::filesystem::path());
}

}  // namespace
}  // namespace exiv2_wp::internal
