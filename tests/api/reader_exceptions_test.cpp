#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <stdexcept>

#include "api/photo_with_tool.h"
#include "support/case_name.h"

namespace exiv2_wp {
namespace {

// A question about one file, by the function that asks it.
struct Question {
    const char* name;
    void (*ask)(const std::filesystem::path& file);
};

void PrintTo(const Question& question, std::ostream* stream) {
    *stream << question.name;
}

constexpr std::array<Question, 5> kQuestions = {{
    {"createImageMetadata",
     [](const std::filesystem::path& file) {
         createImageMetadata(file, [](const SExivMetadataInfo&) {});
     }},
    {"readExiv2Orientation",
     [](const std::filesystem::path& file) { readExiv2Orientation(file, [](int) {}); }},
    {"isTiffRaw", [](const std::filesystem::path& file) { isTiffRaw(file); }},
    {"readExiv2Info",
     [](const std::filesystem::path& file) {
         readExiv2Info(
             file, "", "", [](const SLensInfo&) {}, [](const SMetadataExiv&) {}, [] {});
     }},
    {"readExiv2Win", [](const std::filesystem::path& file) { readExiv2Win(file); }},
}};

class ReaderExceptions : public PhotoWithTool, public ::testing::WithParamInterface<Question> {};

TEST_P(ReaderExceptions, OfABrokenSummaryReachTheCallerOf) {
    photoHas("Exif.Image.Orientation Short 1 6\n", "Lens name:\n");
    EXPECT_THROW(GetParam().ask(file), std::out_of_range);
}

// The exception isn't remembered, so a summary that has become whole is read.
TEST_P(ReaderExceptions, AreOverOnceTheSummaryIsWholeFor) {
    photoHas("Exif.Image.Orientation Short 1 6\n", "Lens name:\n");
    EXPECT_THROW(GetParam().ask(file), std::out_of_range);

    test_support::ToolDirectory mended;
    mended.answerMetadata("Exif.Image.Orientation Short 1 6\n", "Lens name: EF50mm\n");
    ASSERT_TRUE(initialize(mended.path()));
    EXPECT_NO_THROW(GetParam().ask(file));
}

INSTANTIATE_TEST_SUITE_P(, ReaderExceptions, ::testing::ValuesIn(kQuestions),
                         test_support::caseName<Question>);

}  // namespace
}  // namespace exiv2_wp
