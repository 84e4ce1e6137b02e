#include "exiv2_wrapper/text/native_text.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace exiv2_wp::internal {
namespace {

std::string backToUtf8(const NativeString& text) {
    return utf8Path(std::filesystem::path(text));
}

TEST(NativeText, OfAnEmptyTextIsEmpty) {
    EXPECT_EQ(nativeText(""), NativeString());
}

TEST(NativeText, KeepsEveryWellFormedLength) {
    for (const std::string text : {"A", "\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80",
                                   "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_EQ(backToUtf8(nativeText("<" + text + ">")), "<" + text + ">");
    }
}

TEST(NativeText, KeepsANulInsideTheText) {
    EXPECT_EQ(nativeText(std::string_view("a\0b", 3)).size(), 3U);
}

struct Malformed {
    const char* name;
    const char* text;
};

constexpr std::array<Malformed, 7> kMalformed = {{
    {"AStrayContinuation", "a\x80"},
    {"AByteThatBeginsNothing", "\xFF"},
    {"ACutOffSequence", "\xE2\x82"},
    {"ASequenceThatTheNextCharacterBreaks", "\xE2\x82 a"},
    {"AnOverlongForm", "\xC0\xAF"},
    {"ASurrogate", "\xED\xA0\x80"},
    {"ANumberBeyondUnicode", "\xF4\x90\x80\x80"},
}};

class NativeTexts : public ::testing::TestWithParam<Malformed> {};

TEST_P(NativeTexts, RaiseARangeErrorFor) {
    EXPECT_THROW(static_cast<void>(nativeText(GetParam().text)), std::range_error);
}

INSTANTIATE_TEST_SUITE_P(, NativeTexts, ::testing::ValuesIn(kMalformed),
                         [](const auto& text) { return text.param.name; });

}  // namespace
}  // namespace exiv2_wp::internal
