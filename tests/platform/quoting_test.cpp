#include "exiv2_wrapper/platform/quoting.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "platform/awkward_arguments.h"
#include "platform/split_command_line.h"
#include "support/case_name.h"

namespace exiv2_wp::internal {
namespace {

using test_support::awkwardArguments;
using test_support::randomArguments;
using test_support::splitCommandLine;

struct Case {
    const char* name;
    std::wstring argument;
    std::wstring quoted;
};

class QuoteArgumentOf : public ::testing::TestWithParam<Case> {};

TEST_P(QuoteArgumentOf, FollowsTheRule) {
    EXPECT_EQ(quoteArgument(GetParam().argument), GetParam().quoted);
}

INSTANTIATE_TEST_SUITE_P(
    QuoteArgument, QuoteArgumentOf,
    ::testing::Values(Case{"Nothing", L"", LR"("")"},                  //
                      Case{"PlainText", L"-PXEkycv", L"-PXEkycv"},     //
                      Case{"ABlankInTheMiddle", L"a b", LR"("a b")"},  //
                      Case{"ATab", L"a\tb", L"\"a\tb\""},              //
                      Case{"ALineFeed", L"a\nb", L"\"a\nb\""},         //
                      Case{"AVerticalTab", L"a\vb", L"\"a\vb\""},      //
                      Case{"ACarriageReturn", L"a\rb", L"a\rb"},       //
                      Case{"AFormFeed", L"a\fb", L"a\fb"},             //
                      Case{"OnlyABlank", L" ", LR"(" ")"},             //
                      Case{"ABlankAndAFinalBackslash", LR"(C:\my photos\)", LR"("C:\my photos\\")"},
                      Case{"AFinalBackslashAlone", LR"(C:\photos\)", LR"(C:\photos\)"},
                      Case{"TwoBackslashesInside", LR"(a\\b)", LR"(a\\b)"},
                      Case{"BackslashesBeforeABlank", LR"(a\\ b)", LR"("a\\ b")"},
                      Case{"AQuote", LR"(a"b)", LR"("a\"b")"},  //
                      Case{"AQuoteAndABlank", LR"(a "b)", LR"("a \"b")"},
                      Case{"OnlyAQuote", LR"(")", LR"("\"")"},  //
                      Case{"OneBackslashBeforeAQuote", LR"(a\"b)", LR"("a\\\"b")"},
                      Case{"TwoBackslashesBeforeAQuote", LR"(a\\"b)", LR"("a\\\\\"b")"},
                      Case{"ABlankAndTwoFinalBackslashes", LR"(a b\\)", LR"("a b\\\\")"},
                      Case{"CharactersOutsideAscii", L"\u5199\u771F\u00A0x",
                           L"\u5199\u771F\u00A0x"}),
    test_support::caseName<Case>);

TEST(BuildCommandLine, IsTheQuotedToolAloneWithoutArguments) {
    EXPECT_EQ(buildCommandLine(LR"(C:\my tools\exiv2.exe)", {}), LR"("C:\my tools\exiv2.exe")");
}

TEST(BuildCommandLine, SeparatesQuotedArgumentsByOneBlank) {
    const std::vector<std::wstring> arguments = {L"pr", L"", L"a b", LR"(C:\x\)"};
    EXPECT_EQ(buildCommandLine(LR"(C:\exiv2.exe)", arguments),
              LR"(C:\exiv2.exe pr "" "a b" C:\x\)");
}

TEST(BuildCommandLine, BringsAwkwardArgumentsBack) {
    const std::vector<std::wstring> arguments = awkwardArguments();
    std::vector<std::wstring> expected = arguments;
    expected.insert(expected.begin(), L"C:/my tools/exiv2.exe");
    EXPECT_EQ(splitCommandLine(buildCommandLine(expected.front(), arguments)), expected);
}

TEST(BuildCommandLine, BringsRandomArgumentsBack) {
    constexpr int kRounds = 500;
    for (unsigned seed = 0; seed < kRounds; ++seed) {
        const std::vector<std::wstring> arguments = randomArguments(seed);
        std::vector<std::wstring> expected = arguments;
        expected.insert(expected.begin(), L"exiv2.exe");
        ASSERT_EQ(splitCommandLine(buildCommandLine(L"exiv2.exe", arguments)), expected);
    }
}

// The splitter that the round trips rely on, shown to follow the documented examples.
TEST(SplitCommandLine, FollowsTheDocumentedExamples) {
    using Arguments = std::vector<std::wstring>;
    EXPECT_EQ(splitCommandLine(LR"(x "a b c" d e)"), (Arguments{L"x", L"a b c", L"d", L"e"}));
    EXPECT_EQ(splitCommandLine(LR"(x "ab\"c" "\\" d)"),
              (Arguments{L"x", LR"(ab"c)", LR"(\)", L"d"}));
    EXPECT_EQ(splitCommandLine(LR"(x a\\\b d"e f"g h)"),
              (Arguments{L"x", LR"(a\\\b)", L"de fg", L"h"}));
    EXPECT_EQ(splitCommandLine(LR"(x a\\\"b c d)"), (Arguments{L"x", LR"(a\"b)", L"c", L"d"}));
    EXPECT_EQ(splitCommandLine(LR"(x a\\\\"b c" d e)"),
              (Arguments{L"x", LR"(a\\b c)", L"d", L"e"}));
    EXPECT_EQ(splitCommandLine(LR"(x a"b"" c d)"), (Arguments{L"x", LR"(ab" c d)"}));
}

TEST(CommandLineRoom, OfAnArgumentIsWhatItAddsToTheLine) {
    std::wstring line = buildCommandLine(L"tool", {});
    for (const std::wstring& argument : awkwardArguments()) {
        const std::wstring longer = buildCommandLine(L"tool", std::array{argument});
        EXPECT_EQ(line.size() + commandLineRoom(argument), longer.size());
    }
}

TEST(CommandLineRoom, OfBytesHasTheZeroBehindThem) {
    EXPECT_EQ(commandLineRoom(std::string("a \"b\"")), 6U);
    EXPECT_EQ(commandLineRoom(std::string()), 1U);
}

}  // namespace
}  // namespace exiv2_wp::internal
