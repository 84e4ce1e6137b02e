#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>

#include "api/summary_fixture.h"
#include "support/case_name.h"

namespace exiv2_wp::internal {
namespace {

using test_support::LogLine;
using test_support::traceLine;

class Exposure : public test_support::SummaryFixture {};

struct ExposureCase {
    const char* name;
    float SExivMetadataInfo::*field;
    float unknown;
};

class ExposureValue : public test_support::SummaryFixture,
                      public ::testing::WithParamInterface<ExposureCase> {
protected:
    [[nodiscard]] float value() const { return summary().*GetParam().field; }
};

TEST_P(ExposureValue, ComesFromTheFirstOfFourPlaces) {
    EXPECT_EQ(value(), GetParam().unknown);
    float expected = 1;
    for (const char* const prefix : {"Xmp.exifEX.", "Xmp.exif.", "Exif.Image.", "Exif.Photo."}) {
        addText(prefix + std::string(GetParam().name), std::to_string(++expected));
        EXPECT_EQ(value(), expected) << prefix;
    }
}

TEST_P(ExposureValue, DoesNotFallBackFromAnUnreadablePlace) {
    addText("Exif.Photo." + std::string(GetParam().name), "f/2.8");
    addText("Xmp.exif." + std::string(GetParam().name), "2.8");

    EXPECT_EQ(value(), GetParam().unknown);
    const std::vector<LogLine> lines = log.lines();
    EXPECT_EQ(std::count(lines.begin(), lines.end(),
                         traceLine("Cannot parse Exif data: ", GetParam().name)),
              1);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), traceLine("No Exif data: ", GetParam().name)),
              0);
}

// The parser makes fractions of Exif entries only: XMP is text, and a number in text ends at a
// slash.
TEST_F(Exposure, OfAnXmpFractionIsItsNumerator) {
    addText("Xmp.exif.ExposureTime", "1/250");
    addText("Xmp.exif.ExposureBiasValue", "-1/3");

    EXPECT_EQ(summary().exposureTime, 1.0F);
    EXPECT_EQ(summary().exposureBias, -1.0F);
}

constexpr ExposureCase kExposureCases[] = {
    {"ISOSpeedRatings", &SExivMetadataInfo::iso, -1},
    {"ExposureTime", &SExivMetadataInfo::exposureTime, -1},
    {"FNumber", &SExivMetadataInfo::fNumber, -1},
    {"FocalLength", &SExivMetadataInfo::focalLength, -1},
    {"ExposureBiasValue", &SExivMetadataInfo::exposureBias, -999},
    {"FocalLengthIn35mmFilm", &SExivMetadataInfo::focalLength35mm, -1},
};

INSTANTIATE_TEST_SUITE_P(Names, ExposureValue, ::testing::ValuesIn(kExposureCases),
                         test_support::caseName<ExposureCase>);

TEST_F(Exposure, TakesTheNumeratorOfARationalWithoutADenominator) {
    addRationals("Exif.Photo.ExposureTime", {{5, 0}});

    EXPECT_EQ(summary().exposureTime, 5);
}

TEST_F(Exposure, DividesARationalInDoublePrecision) {
    addRationals("Exif.Photo.ExposureTime", {{50331651, 16777217}});

    EXPECT_EQ(summary().exposureTime, 3);
}

TEST_F(Exposure, KeepsABiasOfMinusOne) {
    addRationals("Exif.Photo.ExposureBiasValue", {{-3, 3}});

    EXPECT_EQ(summary().exposureBias, -1);
}

TEST_F(Exposure, ComputesTheFNumberFromTheApertureValueWhenThatIsAllThereIs) {
    addRationals("Exif.Photo.ApertureValue", {{4, 1}});

    EXPECT_FLOAT_EQ(summary().fNumber, 4);
    EXPECT_EQ(log.lines().at(2), traceLine("No Exif data: ", "FNumber"));
}

TEST_F(Exposure, ComputesTheFNumberFromANegativeApertureValueToo) {
    addText("Exif.Photo.ApertureValue", "-2");

    EXPECT_FLOAT_EQ(summary().fNumber, 0.5F);
}

TEST_F(Exposure, ComputesTheFNumberWhenTheFileSaysMinusOne) {
    addText("Exif.Photo.FNumber", "-1");
    addText("Xmp.exif.ApertureValue", "2");

    EXPECT_FLOAT_EQ(summary().fNumber, 2);
}

TEST_F(Exposure, LeavesTheFNumberUnknownForAnApertureValueOf0) {
    addRationals("Exif.Photo.ApertureValue", {{0, 1}});

    EXPECT_EQ(summary().fNumber, -1);
}

TEST_F(Exposure, PrefersTheFNumberToTheApertureValue) {
    addRationals("Exif.Photo.ApertureValue", {{4, 1}});
    addRationals("Xmp.exif.FNumber", {{28, 10}});

    EXPECT_EQ(summary().fNumber, 2.8F);
}

}  // namespace
}  // namespace exiv2_wp::internal
