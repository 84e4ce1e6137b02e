#include <gtest/gtest.h>

#include <array>
#include <string>

#include "api/summary_fixture.h"
#include "support/case_name.h"

namespace exiv2_wp::internal {
namespace {

using test_support::LogLine;
using test_support::traceLine;
using LensRangeValues = std::array<float, 4>;

constexpr auto kSpecification = "Exif.Photo.LensSpecification";
constexpr auto kXmpSpecification = "Xmp.exifEX.LensSpecification";

class LensRangeOfSummary : public test_support::SummaryFixture {
protected:
    [[nodiscard]] LensRangeValues range() const {
        const SExivMetadataInfo info = summary();
        return {info.lensFocalMin, info.lensFocalMax, info.lensApertureAtFocalMin,
                info.lensApertureAtFocalMax};
    }

    // Of the lines that were logged, those about the lens.
    [[nodiscard]] std::vector<LogLine> lensLines() const {
        std::vector<LogLine> lines = log.lines();
        std::erase_if(lines, [](const LogLine& line) {
            return line != traceLine("No Exif data: ", kSpecification) &&
                   line != traceLine("No Exif data: ", kXmpSpecification);
        });
        return lines;
    }
};

TEST_F(LensRangeOfSummary, ComesFromTheSpecificationFirst) {
    addRationals(kSpecification, {{24, 1}, {700, 10}, {28, 10}, {4, 0}, {9, 9}});
    addIntegers("Exif.CanonCs.Lens", {200, 100, 1});
    addRationals(kXmpSpecification, {{1, 1}, {2, 1}, {3, 1}, {4, 1}});

    EXPECT_EQ(range(), (LensRangeValues{24, 70, 2.8F, 4}));
    EXPECT_EQ(lensLines(), std::vector<LogLine>());
}

TEST_F(LensRangeOfSummary, DividesTheSpecificationInSinglePrecision) {
    addRationals(kSpecification, {{50331651, 16777217}, {1, 3}, {0, 0}, {-1, 2}});

    EXPECT_EQ(range(), (LensRangeValues{3.0F + 0x1p-22F, 1.0F / 3.0F, 0, -0.5F}));
}

TEST_F(LensRangeOfSummary, ComesFromTheLensModelWhenTheSpecificationIsShort) {
    addRationals(kSpecification, {{24, 1}, {70, 1}});
    addText("Exif.Photo.LensModel", "EF 24-70mm f/2.8L");
    addIntegers("Exif.CanonCs.Lens", {200, 100, 1});

    EXPECT_EQ(range(), (LensRangeValues{24, 70, 0, 0}));
    EXPECT_EQ(lensLines(), std::vector<LogLine>());
}

TEST_F(LensRangeOfSummary, AsksOnlyTheExifLensModel) {
    addText(kSpecification, "24 70");
    addText("Exif.Canon.LensModel", "EF 24-70mm");
    addText("Xmp.exifEX.LensModel", "EF 24-70mm");
    addRationals(kXmpSpecification, {{1, 1}, {2, 1}, {3, 1}, {4, 1}});

    EXPECT_EQ(range(), LensRangeValues());
    EXPECT_EQ(lensLines(), std::vector<LogLine>());
}

struct ModelCase {
    const char* name;
    const char* model;
    float shortest;
    float longest;
};

class LensRangeOfModel : public test_support::SummaryFixture,
                         public ::testing::WithParamInterface<ModelCase> {};

TEST_P(LensRangeOfModel, IsConvertedWithin32Bits) {
    addRationals(kSpecification, {});
    addText("Exif.Photo.LensModel", GetParam().model);

    EXPECT_EQ(summary().lensFocalMin, GetParam().shortest);
    EXPECT_EQ(summary().lensFocalMax, GetParam().longest);
    EXPECT_EQ(summary().lensApertureAtFocalMin, 0);
    EXPECT_EQ(summary().lensApertureAtFocalMax, 0);
}

constexpr ModelCase kModels[] = {
    {"Hyphen", "EF 24-70mm f/2.8L", 24, 70},
    {"UpperCaseUnit", "24-70MM", 24, 70},
    {"TrueEnDash",
     "24\xE2\x80\x93"
     "70mm",
     0, 0},
    {"OneByteOfAnEnDash",
     "24\x93"
     "70mm",
     24, 70},
    {"FixedFocalLength", "EF50mm f/1.8", 0, 0},
    {"LeadingZeros", "00000000000000000000024-0070mm", 24, 70},
    {"Largest", "2147483647-2147483647mm", 2147483647.0F, 2147483647.0F},
    {"ShortestOutOfRange", "2147483648-70mm", 0, 0},
    {"LongestOutOfRange", "24-99999999999999999999mm", 24, 0},
    {"Empty", "", 0, 0},
};

INSTANTIATE_TEST_SUITE_P(Models, LensRangeOfModel, ::testing::ValuesIn(kModels),
                         test_support::caseName<ModelCase>);

TEST_F(LensRangeOfSummary, ComesFromCanonsTagWithoutASpecification) {
    addIntegers("Exif.CanonCs.Lens", {70, 24, 1});
    addRationals(kXmpSpecification, {{1, 1}, {2, 1}, {3, 1}, {4, 1}});

    EXPECT_EQ(range(), (LensRangeValues{24, 70, 0, 0}));
    EXPECT_EQ(lensLines(), (std::vector<LogLine>{traceLine("No Exif data: ", kSpecification)}));
}

TEST_F(LensRangeOfSummary, CountsCanonsLengthsInTheirUnits) {
    addIntegers("Exif.CanonCs.Lens", {705, 241, 10, 4});

    EXPECT_EQ(range(), (LensRangeValues{24.1F, 70.5F, 0, 0}));
}

TEST_F(LensRangeOfSummary, AsksNobodyElseWhenCanonsTagIsUnusable) {
    addRationals(kXmpSpecification, {{1, 1}, {2, 1}, {3, 1}, {4, 1}});
    addText("Exif.Photo.LensModel", "24-70mm");
    for (const IntegerList& integers :
         {IntegerList{70, 24, 0}, IntegerList{70, 24}, IntegerList()}) {
        log.clear();
        addIntegers("Exif.CanonCs.Lens", integers);
        EXPECT_EQ(range(), LensRangeValues());
        EXPECT_EQ(lensLines(), (std::vector<LogLine>{traceLine("No Exif data: ", kSpecification)}));
    }
}

TEST_F(LensRangeOfSummary, ComesFromTheXmpSpecificationLast) {
    addRationals(kXmpSpecification, {{24, 1}, {70, 1}, {28, 10}, {4, 1}});

    EXPECT_EQ(range(), (LensRangeValues{24, 70, 2.8F, 4}));
    EXPECT_EQ(lensLines(), (std::vector<LogLine>{traceLine("No Exif data: ", kSpecification)}));
}

TEST_F(LensRangeOfSummary, IsUnknownForAShortXmpSpecification) {
    addRationals(kXmpSpecification, {{24, 1}, {70, 1}, {28, 10}});
    addText("Exif.Photo.LensModel", "24-70mm");

    EXPECT_EQ(range(), LensRangeValues());
    EXPECT_EQ(lensLines(), (std::vector<LogLine>{traceLine("No Exif data: ", kSpecification)}));
}

class LensNames : public test_support::SummaryFixture {};

TEST_F(LensNames, ComeFromTheFirstOfTheirKeys) {
    for (const char* const key : {"Xmp.exifEX.LensMake", "Exif.Photo.LensMake"}) {
        addText(key, key);
        EXPECT_EQ(summary().lensMaker, key);
    }
    for (const char* const key :
         {"Xmp.exifEX.LensModel", "Exif.Canon.LensModel", "Exif.Photo.LensModel"}) {
        addText(key, key);
        EXPECT_EQ(summary().lensModel, key);
    }
}

TEST_F(LensNames, AreReplacedWhenTheyAreNotPlainTheModelByNothing) {
    addText("Exif.Photo.LensMake", "Z\xC3\xA4iss");
    addText("Xmp.exifEX.LensMake", "Zeiss");
    addText("Exif.Photo.LensModel", "Summilux\x80");
    addText("Exif.Canon.LensModel", "EF50mm");

    EXPECT_EQ(summary().lensMaker, "Unknown Lens Maker");
    EXPECT_EQ(summary().lensModel, "");
}

TEST_F(LensNames, StayEmptyInSilenceWithoutAKey) {
    EXPECT_EQ(summary().lensMaker, "");
    EXPECT_EQ(summary().lensModel, "");
    EXPECT_EQ(log.lines().size(), 10U * 2);
}

}  // namespace
}  // namespace exiv2_wp::internal
