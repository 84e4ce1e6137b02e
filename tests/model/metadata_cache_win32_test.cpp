#include <gtest/gtest.h>

#include "exiv2_wrapper/model/metadata_cache.h"

namespace exiv2_wp::internal {
namespace {

TEST(CacheKey, HasBackslashesWhateverSeparatesTheCallersFolders) {
    EXPECT_EQ(makeCacheKey(L"C:/Photos/2026\\\\Photo.JPG"), "c:\\photos\\2026\\photo.jpg");
}

TEST(CacheKey, IgnoresTheCaseOfTheDrive) {
    EXPECT_EQ(makeCacheKey(L"c:\\photo.jpg"), makeCacheKey(L"C:\\photo.jpg"));
}

TEST(CacheKey, KeepsLoneSurrogatesApart) {
    EXPECT_EQ(makeCacheKey(L"C:\\\xD83D.jpg"), "c:\\\xED\xA0\xBD.jpg");
    EXPECT_EQ(makeCacheKey(L"C:\\\xDCF7.jpg"), "c:\\\xED\xB3\xB7.jpg");
}

TEST(CacheKey, IsUtf8) {
    EXPECT_EQ(makeCacheKey(L"C:\\B\u00E4r \U0001F4F7.jpg"), "c:\\b\xC3\xA4r \xF0\x9F\x93\xB7.jpg");
}

}  // namespace
}  // namespace exiv2_wp::internal
