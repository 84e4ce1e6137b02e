#include <windows.h>

#include <gtest/gtest.h>

#include <cstddef>

#include "exiv2_wrapper/text/path_text.h"

namespace exiv2_wp::internal {
namespace {

std::string byCodePage(UINT codePage, const std::wstring& wide) {
    std::string narrow(4 * wide.size(), '\0');
    const int length = WideCharToMultiByte(codePage, WC_NO_BEST_FIT_CHARS, wide.data(),
                                           static_cast<int>(wide.size()), narrow.data(),
                                           static_cast<int>(narrow.size()), nullptr, nullptr);
    narrow.resize(static_cast<std::size_t>(length));
    return narrow;
}

// Lets the file functions take narrow text for OEM text until it dies.
class OemFileFunctions {
public:
    OemFileFunctions() { SetFileApisToOEM(); }
    OemFileFunctions(const OemFileFunctions&) = delete;
    OemFileFunctions& operator=(const OemFileFunctions&) = delete;
    ~OemFileFunctions() { SetFileApisToANSI(); }
};

constexpr auto kPhotoOfABear = L"B\u00E4r \u5199\u771F.jpg";

TEST(NarrowPath, IsInTheAnsiCodePage) {
    EXPECT_EQ(narrowPath(kPhotoOfABear), byCodePage(CP_ACP, kPhotoOfABear));
}

TEST(NarrowPath, IsInTheOemCodePageWhenTheFileFunctionsAre) {
    const OemFileFunctions oem;
    EXPECT_EQ(narrowPath(kPhotoOfABear), byCodePage(CP_OEMCP, kPhotoOfABear));
}

TEST(NarrowPath, TakesALoneSurrogate) {
    EXPECT_EQ(narrowPath(L"a\xD83D.jpg"), byCodePage(CP_ACP, L"a\xD83D.jpg"));
}

// "a" would name another file.
TEST(NarrowPath, HasNoLookAlikeForALetterThatTheCodePageLacks) {
    EXPECT_NE(narrowPath(L"\u0101.jpg"), "a.jpg");
    EXPECT_NE(narrowPath(L"C:\u2216a.jpg"), "C:\\a.jpg");
}

TEST(Utf8Path, WritesALoneSurrogateAsThreeBytes) {
    EXPECT_EQ(utf8Path(L"a\xD83D.jpg"), "a\xED\xA0\xBD.jpg");
    EXPECT_EQ(utf8Path(L"\xDCF7\xD83D"), "\xED\xB3\xB7\xED\xA0\xBD");
}

TEST(WidePath, IsThePathAsItIs) {
    EXPECT_EQ(widePath(L"a\xD83D.jpg"), L"a\xD83D.jpg");
}

}  // namespace
}  // namespace exiv2_wp::internal
