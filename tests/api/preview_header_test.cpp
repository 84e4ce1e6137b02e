#include "exiv2_wrapper/api/preview_header.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <locale>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <tuple>

namespace exiv2_wp::internal {

bool operator==(const PreviewHeader& a, const PreviewHeader& b) {
    const auto fields = [](const PreviewHeader& header) {
        return std::tie(header.previewWidth, header.previewHeight, header.notifyValue,
                        header.payloadMode, header.top, header.bottom);
    };
    return fields(a) == fields(b);
}

bool operator==(const PreviewOutput& a, const PreviewOutput& b) {
    return a.header == b.header && a.payload == b.payload;
}

void PrintTo(const PreviewOutput& output, std::ostream* stream) {
    const PreviewHeader& header = output.header;
    *stream << header.previewWidth << " " << header.previewHeight << " " << header.notifyValue
            << " " << header.payloadMode << " " << header.top << " " << header.bottom << " "
            << ::testing::PrintToString(output.payload);
}

namespace {

using Split = std::optional<PreviewOutput>;

struct Output {
    const char* name;
    std::string_view output;
    Split split;
};

void PrintTo(const Output& output, std::ostream* stream) {
    *stream << ::testing::PrintToString(output.output);
}

using namespace std::string_view_literals;

constexpr PreviewHeader kHeader = {1, 2, 3, 4, 5, 6};

const std::array<Output, 25> kOutputs = {{
    {"ALineFeed", "1 2 3 4 5 6\nJPEG", {{kHeader, "JPEG"sv}}},
    {"ACarriageReturnAndALineFeed", "1 2 3 4 5 6\r\nJPEG", {{kHeader, "JPEG"sv}}},
    {"OneBlank", "1 2 3 4 5 6 JPEG", {{kHeader, "JPEG"sv}}},
    {"NothingBeforeThePayload", "1 2 3 4 5 6JPEG", {{kHeader, "JPEG"sv}}},
    {"WhiteSpaceEverywhere", "\n\t1\r\n2\v3\f4 \t5\n\n6\n", {{kHeader, ""sv}}},
    {"APayloadThatBeginsWithWhiteSpace", "1 2 3 4 5 6\n\t\n \xFF\xD8 ", {{kHeader, "\xFF\xD8 "sv}}},
    {"APayloadWithZeros", "1 2 3 4 5 6\n\0\0\xFF"sv, {{kHeader, "\0\0\xFF"sv}}},
    {"APayloadThatLooksLikeASign", "1 2 3 4 5 6-7", {{kHeader, "-7"sv}}},
    {"NothingBehindTheHeader", "1 2 3 4 5 6", {{kHeader, std::nullopt}}},
    {"ALineFeedAlone", "1 2 3 4 5 6\n", {{kHeader, ""sv}}},
    {"WhiteSpaceAlone", "1 2 3 4 5 6\r\n \t\n", {{kHeader, ""sv}}},
    {"Signs", "+1 -2 +3 -4 -0 +6x", {{{1, -2, 3, -4, 0, 6}, "x"sv}}},
    {"SignsWithoutBlanks", "1-2+3-4+5-6x", {{{1, -2, 3, -4, 5, -6}, "x"sv}}},
    {"LeadingZeros", "0001 02 0000000000003 4 5 6x", {{kHeader, "x"sv}}},
    {"BothEndsOfTheRange",
     "2147483647 -2147483648 3 4 5 6x",
     {{{2147483647, -2147483647 - 1, 3, 4, 5, 6}, "x"sv}}},
    {"ANumberAboveTheRange", "2147483648 2 3 4 5 6x", std::nullopt},
    {"ANumberBelowTheRange", "1 -2147483649 3 4 5 6x", std::nullopt},
    {"AVeryLongNumber", "1 2 3 4 5 99999999999999999999999999999999 x", std::nullopt},
    {"NoOutput", "", std::nullopt},
    {"WhiteSpaceOnly", " \r\n", std::nullopt},
    {"FiveNumbers", "1 2 3 4 5", std::nullopt},
    {"FiveNumbersAndAPayload", "1 2 3 4 5 JPEG", std::nullopt},
    {"ASignAlone", "1 2 3 4 5 - 6", std::nullopt},
    {"TwoSigns", "1 2 3 4 5 --6", std::nullopt},
    {"AFraction", "1.5 2 3 4 5 6", std::nullopt},
}};

class PreviewOutputs : public ::testing::TestWithParam<Output> {};

TEST_P(PreviewOutputs, AreSplitWith) {
    EXPECT_EQ(splitPreviewOutput(GetParam().output), GetParam().split);
}

INSTANTIATE_TEST_SUITE_P(, PreviewOutputs, ::testing::ValuesIn(kOutputs),
                         [](const auto& output) { return output.param.name; });

// The same with a stream over the whole output, step by step.
Split splitByStream(const std::string& output) {
    std::istringstream stream(output);
    stream.imbue(std::locale::classic());
    PreviewOutput split;
    PreviewHeader& header = split.header;
    if (!(stream >> header.previewWidth >> header.previewHeight >> header.notifyValue >>
          header.payloadMode >> header.top >> header.bottom)) {
        return std::nullopt;
    }
    const std::streamoff position = stream.tellg();
    if (position < 0 || static_cast<std::size_t>(position) >= output.size()) {
        return split;
    }
    auto at = static_cast<std::size_t>(position);
    if (output[at] == '\r' || output[at] == '\n') {
        ++at;
    }
    while (at < output.size() && std::isspace(output[at], std::locale::classic())) {
        ++at;
    }
    split.payload = std::string_view(output).substr(at);
    return split;
}

std::string randomOutput(std::mt19937& random) {
    constexpr std::array kPieces = {
        "0 ", "1\n", "12 ", "2147483647 ", "-2147483648 ", "-3\t", "+4 ",        " 5 ", "6\r\n",
        "7",  "-",   "+",   " ",           "\n",           "x",    "2147483648 "};
    std::string output;
    for (auto pieces = random() % 24; pieces > 0; --pieces) {
        output += kPieces[random() % kPieces.size()];
    }
    return output;
}

TEST(PreviewSplit, RandomOutputsAreSplitAsByAStream) {
    std::mt19937 random(5);
    int readable = 0;
    for (int round = 0; round < 50000; ++round) {
        const std::string output = randomOutput(random);
        const Split expected = splitByStream(output);
        readable += expected ? 1 : 0;
        ASSERT_EQ(splitPreviewOutput(output), expected) << ::testing::PrintToString(output);
    }
    EXPECT_GT(readable, 1000);
}

TEST(PreviewSplit, ThePayloadIsAViewIntoTheOutput) {
    const std::string output = "1 2 3 4 5 6\nJPEG";
    EXPECT_EQ(splitPreviewOutput(output)->payload->data(), output.data() + 12);
}

}  // namespace
}  // namespace exiv2_wp::internal
