#include <gtest/gtest.h>

#include "exiv2_wrapper/text/path_text.h"

namespace exiv2_wp::internal {
namespace {

TEST(PathBytes, AreTheNarrowForm) {
    EXPECT_EQ(narrowPath("\xFFphoto\n"), "\xFFphoto\n");
    EXPECT_EQ(utf8Path("\xFFphoto\n"), "\xFFphoto\n");
}

TEST(PathBytes, AreReplacedInTheWideFormWhereTheyAreMalformed) {
    EXPECT_EQ(widePath("\xFFphoto\xE5\x86"), L"\uFFFDphoto\uFFFD");
}

}  // namespace
}  // namespace exiv2_wp::internal
