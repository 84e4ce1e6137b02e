#include <gtest/gtest.h>

#include "exiv2_wrapper/model/cache_key.h"

namespace exiv2_wp::internal {
namespace {

TEST(CacheKey, HasBackslashesWhateverSeparatesTheCallersFolders) {
    EXPECT_EQ(makeCacheKey(L"C:/Photos/2026\\\\Photo.JPG"), "c:\\photos\\2026\\photo.jpg");
}

TEST(CacheKey, IgnoresTheCaseOfTheDrive) {
    EXPECT_EQ(makeCacheKey(L"c:\\photo.jpg"), makeCacheKey(L"C:\\photo.jpg"));
}

TEST(CacheKey, KeepsAShareOfTheNetworkApartFromADrive) {
    const std::string share = makeCacheKey(L"\\\\server\\photos\\a.jpg");
    const std::filesystem::path drive = std::filesystem::current_path().root_name();
    EXPECT_NE(share, makeCacheKey(drive / L"\\server\\photos\\a.jpg"));
    EXPECT_EQ(share, makeCacheKey(L"\\\\SERVER\\photos/more/..\\A.jpg"));
}

// The system opens the same file for all of these.
TEST(CacheKey, IsWithoutDotsAndBlanksAtTheEndOfTheName) {
    EXPECT_EQ(makeCacheKey(L"C:\\photo.jpg."), "c:\\photo.jpg");
    EXPECT_EQ(makeCacheKey(L"C:\\photo.jpg "), "c:\\photo.jpg");
}

TEST(CacheKey, MayBeLong) {
    const std::wstring name(300, L'x');
    EXPECT_EQ(makeCacheKey(L"C:\\" + name), "c:\\" + std::string(300, 'x'));
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
