#include <gtest/gtest.h>

#include "exiv2_wrapper/model/cache_key.h"
#include "support/current_directory.h"
#include "support/tool_directory.h"

namespace exiv2_wp::internal {
namespace {

using test_support::CurrentDirectory;
using test_support::TemporaryDirectory;

TEST(CacheKey, KeepsBytesThatAreNoUtf8) {
    EXPECT_EQ(makeCacheKey("/Photos/\xFF\xC4\x80\xFE.JPG"), "/photos/\xFF\xC4\x80\xFE.jpg");
}

TEST(CacheKey, KeepsALineFeed) {
    EXPECT_EQ(makeCacheKey("/photos/A\nB.jpg"), "/photos/a\nb.jpg");
}

TEST(CacheKey, OfAPathThatCanNotBeMadeAbsoluteIsThePathAsGiven) {
    const TemporaryDirectory folder;
    const CurrentDirectory current(folder.path());
    std::filesystem::remove(folder.path());
    EXPECT_EQ(makeCacheKey("./Photo.JPG"), "photo.jpg");
}

}  // namespace
}  // namespace exiv2_wp::internal
