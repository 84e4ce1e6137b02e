// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/lens_name.h"

#include <gtest/gtest.h>

namespace exiv2_tool {
namespace {

struct KnownLensCase {
    const char* name;
    std::string printed;
    std::string lens;
};

class KnownLens : public ::testing::TestWithParam<KnownLensCase> {};

TEST_P(KnownLens, IsTheNameThatIsPrinted) {
    EXPECT_EQ(knownLens(GetParam().printed), GetParam().lens);
}

const KnownLensCase kKnownLenses[] = {
    {"Name", "EF24-70mm f/2.8L USM", "EF24-70mm f/2.8L USM"},
    {"OuterBlanks", "  50mm F1.4 \t ", "50mm F1.4"},
    {"ControlCharacters", "50mm\nF1.4\r\x1b[1m\x7f", "50mm F1.4  [1m"},
    {"ZeroBytes", std::string("50mm\0\0", 6), "50mm"},
    {"OtherAlphabets", "\xd0\x93\xd0\xb5\xd0\xbb", "\xd0\x93\xd0\xb5\xd0\xbb"},
    {"UnknownInside", "Nikkor or unknown", "Nikkor or unknown"},
    {"Nothing", "", ""},
    {"Blanks", " \t", ""},
    {"Number", "183", ""},
    {"BracketedNumber", "(183)", ""},
    {"Bytes", "0 0 12 255", ""},
    {"Dashes", "----", ""},
    {"NotAvailable", "n/a", ""},
    {"None", "None", ""},
    {"NoLens", "No Lens", ""},
    {"Unknown", "Unknown", ""},
    {"UnknownWithNumber", "Unknown Lens (255)", ""},
    {"UnknownInSmallLetters", "unknown", ""},
};

INSTANTIATE_TEST_SUITE_P(Table, KnownLens, ::testing::ValuesIn(kKnownLenses),
                         [](const auto& row) { return row.param.name; });

TEST(KnownLensText, HasALetterInIt) {
    for (int byte = 1; byte < 256; ++byte) {
        const bool isLetter =
            (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') || byte >= 0x80;
        const std::string text = {'1', static_cast<char>(byte), '1'};
        EXPECT_EQ(knownLens(text), isLetter ? text : "") << byte;
    }
}

}  // namespace
}  // namespace exiv2_tool
