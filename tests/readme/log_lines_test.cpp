#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "readme/read_text.h"
#include "readme/string_literals.h"

/// docs/troubleshooting.md explains every line that the library logs. What it logs is read off the
/// sources: every text of two words or more counts as a message, but for the few named here.
namespace test_support {
namespace {

constexpr std::array<std::string_view, 14> kNotLogged = {
    // results
    "Unknown Camera Maker",
    "Unknown Camera Model",
    "Unknown Lens Maker",
    // what is looked for in a file or in a tool's output
    "canon eos-1d",
    "canon eos-1ds",
    "eos d2000c",
    "Lens name",
    "Focal length",
    "Subject distance",
    "1 image files updated",
    // told to a tool or a shell
    " -stay_open true -@ -",
    "read -r line; kill -9 0",
    // for other eyes than the log's
    "malformed UTF-8",
    "the library is built for 64-bit Windows",
};

std::vector<std::string> librarySources() {
    std::vector<std::string> sources;
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(sourcePath("exiv2_wrapper"))) {
        const std::string name = entry.path().filename().string();
        if ((name.ends_with(".cpp") || name.ends_with(".h")) && name != "crop_factor_rows.cpp") {
            sources.push_back(withoutComments(readText(entry.path())));
        }
    }
    return sources;
}

bool mayBeMessage(std::string_view literal) {
    const bool isSignature = literal.find("__cdecl") != std::string_view::npos;
    const std::size_t begin = literal.find_first_not_of(' ');
    const std::size_t blank = literal.find(' ', begin);
    const bool hasTwoWords = literal.find_first_not_of(' ', blank) != std::string_view::npos;
    return !isSignature && hasTwoWords &&
           std::find(kNotLogged.begin(), kNotLogged.end(), literal) == kNotLogged.end();
}

std::string troubleshooting() {
    return readText(sourcePath("docs/troubleshooting.md"));
}

TEST(StringLiterals, OfNeighboursAreOneAndCommentsHoldNone) {
    const std::string code = withoutComments(
        "#include \"file.h\"\nf(\"one \" \n  \"two\", 'x', \"a\\\"b\"); // \"not this\"\n/* \"nor "
        "this\" */ int i = 1'000;\n");

    EXPECT_EQ(stringLiterals(code), (std::vector<std::string>{"one two", "a\\\"b"}));
}

TEST(StringLiterals, OfACallAreThoseBetweenItsParentheses) {
    const std::vector<std::string> calls =
        argumentsOfCalls("check(f(a, \"A\"), \"B\") && other(\"C\") && check(\"D\")", "check");

    EXPECT_EQ(calls, (std::vector<std::string>{"f(a, \"A\"), \"B\"", "\"D\""}));
}

TEST(Troubleshooting, ExplainsEveryLineThatIsLogged) {
    const std::string page = troubleshooting();
    std::size_t count = 0;
    for (const std::string& source : librarySources()) {
        for (const std::string& literal : stringLiterals(source)) {
            if (mayBeMessage(literal)) {
                ++count;
                EXPECT_NE(page.find("`" + literal + "`"), std::string::npos) << literal;
            }
        }
    }
    EXPECT_GT(count, 25U) << "The messages aren't found in the sources";
}

TEST(Troubleshooting, ExplainsEveryStepOfExiftoolsStart) {
    const std::string page = troubleshooting();
    std::size_t count = 0;
    for (const std::string& source : librarySources()) {
        for (const std::string& arguments : argumentsOfCalls(source, "checkStep")) {
            for (const std::string& step : stringLiterals(arguments)) {
                ++count;
                EXPECT_NE(page.find("`" + step + "`"), std::string::npos) << step;
            }
        }
    }
    EXPECT_EQ(count, 9U);
}

TEST(Troubleshooting, NamesEveryValueThatATraceLineEndsIn) {
    const std::string page = troubleshooting();
    std::size_t count = 0;
    for (const std::string& source : librarySources()) {
        for (const std::string& arguments : argumentsOfCalls(source, "readExposureValue")) {
            for (const std::string& name : stringLiterals(arguments)) {
                ++count;
                EXPECT_NE(page.find("`" + name + "`"), std::string::npos) << name;
            }
        }
    }
    EXPECT_EQ(count, 7U);
}

}  // namespace
}  // namespace test_support
