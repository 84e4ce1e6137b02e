#include "exiv2_wrapper/text/to_wide.h"

#include <gtest/gtest.h>

#include "support/case_name.h"

namespace exiv2_wp::internal {
namespace {

// Conversions in the platform's place. Each counts its calls, since which call is refused matters.
int calls = 0;

int refuse(std::string_view, std::span<wchar_t>) {
    ++calls;
    return 0;
}

int refuseWithANegativeNumber(std::string_view, std::span<wchar_t>) {
    ++calls;
    return -1;
}

int refuseTheSecondCall(std::string_view utf8, std::span<wchar_t>) {
    return ++calls == 1 ? static_cast<int>(utf8.size()) : 0;
}

struct Case {
    const char* name;
    std::string utf8;
    std::wstring wide;
};

class ToWideText : public ::testing::TestWithParam<Case> {};

TEST_P(ToWideText, IsWidened) {
    EXPECT_EQ(toWide(GetParam().utf8), GetParam().wide);
}

INSTANTIATE_TEST_SUITE_P(
    ToWide, ToWideText,
    ::testing::Values(Case{"Empty", "", L""},
                      Case{"Ascii", "C:/tools/exiv2.exe", L"C:/tools/exiv2.exe"},
                      Case{"TwoBytes", "B\xC3\xA4r", L"B\u00E4r"},
                      Case{"ThreeBytes", "\xE5\x86\x99\xE7\x9C\x9F", L"\u5199\u771F"},
                      Case{"OutsideTheFirstPlane", "\xF0\x9F\x93\xB7", L"\U0001F4F7"},
                      Case{"ZeroInTheMiddle", std::string("a\0b", 3), std::wstring(L"a\0b", 3)},
                      Case{"AStrayByte",
                           "a\xFF"
                           "b",
                           L"a\uFFFDb"},
                      Case{"ALoneContinuation",
                           "a\x80"
                           "b",
                           L"a\uFFFDb"}),
    test_support::caseName<Case>);

class ToWideFallback : public ::testing::Test {
protected:
    void SetUp() override { calls = 0; }
};

TEST_F(ToWideFallback, NeverAsksThePlatformAboutAnEmptyText) {
    EXPECT_EQ(toWideBy(&refuse, ""), L"");
    EXPECT_EQ(calls, 0);
}

TEST_F(ToWideFallback, WidensByteByByteWhenThePlatformRefuses) {
    EXPECT_EQ(toWideBy(&refuse, "tool"), L"tool");
    EXPECT_EQ(calls, 1);
}

TEST_F(ToWideFallback, TakesANegativeLengthForARefusal) {
    EXPECT_EQ(toWideBy(&refuseWithANegativeNumber, "tool"), L"tool");
    EXPECT_EQ(calls, 1);
}

TEST_F(ToWideFallback, WidensByteByByteWhenTheSecondCallIsRefused) {
    EXPECT_EQ(toWideBy(&refuseTheSecondCall, "tool"), L"tool");
    EXPECT_EQ(calls, 2);
}

TEST_F(ToWideFallback, TakesEachByteForASignedCharacter) {
    const std::string bytes("\x01\x7F\x80\xC3\xA4\xFF", 6);
    const std::wstring expected = L"\x0001\x007F\xFF80\xFFC3\xFFA4\xFFFF";
    EXPECT_EQ(toWideBy(&refuse, bytes), expected);
}

TEST_F(ToWideFallback, KeepsAZeroByte) {
    EXPECT_EQ(toWideBy(&refuse, std::string("a\0b", 3)), std::wstring(L"a\0b", 3));
}

}  // namespace
}  // namespace exiv2_wp::internal
