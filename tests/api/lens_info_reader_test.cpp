#include "exiv2_wrapper/api/lens_info_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "api/photo_with_tool.h"
#include "exiv2_wrapper/model/print_all_parser.h"

namespace exiv2_wp {

bool operator==(const SLensInfo& a, const SLensInfo& b) {
    const auto& [name, focal, focal35mm, distance, fNumber, id] = a;
    return name == b.lensName && focal == b.focalLength && focal35mm == b.focalLength35mm &&
           distance == b.subjectDistance && fNumber == b.fNumber && id == b.lensId;
}

bool operator==(const SMetadataExiv& a, const SMetadataExiv& b) {
    const auto& [distance, focal35mm, x, y, bias, bits] = a;
    return distance == b.focusDistance && focal35mm == b.focalLength35mm &&
           x == b.focalPlaneXResolution && y == b.focalPlaneYResolution && bias == b.exposureBias &&
           bits == b.bitsPerSample;
}

void PrintTo(const SLensInfo& info, std::ostream* stream) {
    *stream << info.lensName << ", " << info.focalLength << ", " << info.focalLength35mm << ", "
            << info.subjectDistance << ", " << info.fNumber << ", " << info.lensId;
}

void PrintTo(const SMetadataExiv& info, std::ostream* stream) {
    *stream << info.focusDistance << ", " << info.focalLength35mm << ", "
            << info.focalPlaneXResolution << ", " << info.focalPlaneYResolution << ", "
            << info.exposureBias << ", " << info.bitsPerSample;
}

namespace {

using internal::CliExifMetadata;
using internal::focusInfoOf;
using internal::lensInfoOf;

CliExifMetadata recordOf(const std::string& printAll) {
    CliExifMetadata record;
    EXPECT_TRUE(internal::parsePrintAllOutput(printAll, record));
    return record;
}

SMetadataExiv focusInfoIn(const std::string& printAll) {
    return focusInfoOf(recordOf(printAll), [] {});
}

// ---- the lens

TEST(LensInfo, TakesTheRecordsValues) {
    CliExifMetadata record;
    record.lensName = "EF50mm";
    record.focalLength = 50.0F;
    record.focalLength35mm = 80.0F;
    record.subjectDistance = 1.5F;
    record.fNumber = 1.8F;
    record.lensId = 7;
    EXPECT_EQ(lensInfoOf(record, "Canon", "EOS 20D"),
              (SLensInfo{"EF50mm", 50.0F, 80.0F, 1.5F, 1.8F, 7}));
}

TEST(LensInfo, OfAnEmptyRecordIsUnknown) {
    EXPECT_EQ(lensInfoOf({}, "", ""), (SLensInfo{"", -1.0F, -1.0F, -1.0F, -1.0F, -1}));
}

TEST(LensInfo, ComputesAMissing35mmFocalLength) {
    CliExifMetadata record;
    record.focalLength = 50.0F;
    EXPECT_EQ(lensInfoOf(record, "Canon", "EOS 20D").focalLength35mm, 1.61F * 50.0F);
}

TEST(LensInfo, OfAnUnknownCameraCountsAsFullFrame) {
    CliExifMetadata record;
    record.focalLength = 50.0F;
    EXPECT_EQ(lensInfoOf(record, "Nikon", "D70").focalLength35mm, 50.0F);
}

TEST(LensInfo, ANegativeCropFactorCountsAsFullFrame) {
    EXPECT_EQ(internal::equivalentFocalLength(50.0F, -1.0F), 50.0F);
}

// Formats larger than 35 mm film have less than 1.
TEST(LensInfo, ACropFactorFromZeroOnCountsAsItIs) {
    EXPECT_EQ(internal::equivalentFocalLength(50.0F, 0.79F), 0.79F * 50.0F);
    EXPECT_EQ(internal::equivalentFocalLength(50.0F, 0.0F), 0.0F);
}

TEST(LensInfo, KeepsA35mmFocalLengthOfZero) {
    CliExifMetadata record;
    record.focalLength = 50.0F;
    record.focalLength35mm = 0.0F;
    EXPECT_EQ(lensInfoOf(record, "Canon", "EOS 20D").focalLength35mm, 0.0F);
}

TEST(LensInfo, AnUnknownFocalLengthIsMultipliedToo) {
    EXPECT_EQ(lensInfoOf({}, "Canon", "EOS 20D").focalLength35mm, -1.61F);
}

// ---- focus and sensor

TEST(FocusInfo, OfAnEmptyRecordIsUnknown) {
    EXPECT_EQ(focusInfoOf({}, nullptr), (SMetadataExiv{-1.0F, -1.0F, -1.0F, -1.0F, -999.0F, -1}));
}

TEST(FocusInfo, TakesAllSixValues) {
    EXPECT_EQ(focusInfoIn("Exif.NikonLd3.FocusDistance Byte 1 300\n"
                          "Exif.Photo.FocalLengthIn35mmFilm Short 1 75\n"
                          "Exif.Photo.FocalPlaneXResolution Rational 1 7300/2\n"
                          "Exif.Photo.FocalPlaneYResolution Rational 1 7200/2\n"
                          "Exif.Photo.ExposureBiasValue SRational 1 -2/4\n"
                          "Exif.Image.BitsPerSample Short 3 8 8 8\n"),
              (SMetadataExiv{3.0F, 75.0F, 3650.0F, 3600.0F, -0.5F, 8}));
}

TEST(FocusInfo, ExposureBiasWithoutATagStaysAtItsMarker) {
    EXPECT_EQ(focusInfoIn("Exif.Image.BitsPerSample Short 1 8\n").exposureBias, -999.0F);
}

TEST(FocusInfo, SkipsKeysThatHoldXmpAnywhere) {
    EXPECT_EQ(focusInfoIn("Xmp.aux.FocusDistance Ascii 3 300\n"
                          "Exif.Xmp.35mm Short 1 75\n"),
              SMetadataExiv());
}

TEST(FocusInfo, ADistanceOfZeroOrLessDoesNotCount) {
    EXPECT_EQ(focusInfoIn("Exif.A.FocusDistance Short 1 0\n").focusDistance, -1.0F);
    EXPECT_EQ(focusInfoIn("Exif.A.FocusDistanceLower SShort 1 -5\n").focusDistance, -1.0F);
}

TEST(FocusInfo, ADistanceThatCannotBeReadDoesNotCount) {
    EXPECT_EQ(focusInfoIn("Exif.A.FocusDistance Ascii 4 near\n").focusDistance, -1.0F);
}

TEST(FocusInfo, ADistanceMayBeARational) {
    EXPECT_EQ(focusInfoIn("Exif.A.FocusDistance Rational 1 125/2\n").focusDistance, 0.625F);
}

TEST(FocusInfo, ADistanceBelowACentimetreCounts) {
    EXPECT_EQ(focusInfoIn("Exif.A.FocusDistance Rational 1 1/20\n").focusDistance, 0.0005F);
}

TEST(FocusInfo, A35mmValueIsTakenWhateverItsSign) {
    EXPECT_EQ(focusInfoIn("Exif.A.35mmLength SShort 1 -75\n").focalLength35mm, -75.0F);
}

TEST(FocusInfo, AFocusDistanceKeyWith35mmInItCountsForBoth) {
    EXPECT_EQ(focusInfoIn("Exif.A.FocusDistance35mm Short 1 50\n"),
              (SMetadataExiv{0.5F, 50.0F, -1.0F, -1.0F, -999.0F, -1}));
}

TEST(FocusInfo, OtherKeysAreComparedWhole) {
    EXPECT_EQ(focusInfoIn("Exif.Image2.BitsPerSample Short 1 8\n"
                          "Exif.Image.BitsPerSampleX Short 1 8\n"
                          "Exif.Image.FocalPlaneXResolution Rational 1 7300/2\n"
                          "Exif.Image.ExposureBiasValue SRational 1 -2/4\n"),
              SMetadataExiv());
}

TEST(FocusInfo, BitsPerSampleBeyondThirtyTwoBitsStayUnknown) {
    EXPECT_EQ(focusInfoIn("Exif.Image.BitsPerSample Short 1 2147483648\n").bitsPerSample, -1);
}

// An integer goes through double precision here: 2^53 + 2^29 + 1 loses its last bit on the way and
// is then half-way between two floats. In one step it would become the upper one.
TEST(FocusInfo, AnIntegerIsRoundedTwice) {
    EXPECT_EQ(focusInfoIn("Exif.Photo.ExposureBiasValue SLong 1 9007199791611905\n").exposureBias,
              9007199254740992.0F);
}

// The distances that came out, by the key that was visited first.
using Visits = std::map<std::string, std::set<float>>;

// Inserts two tags in both orders into tables of many sizes, so that both are visited first now and
// then.
Visits visitInManyOrders(const std::string& one, const std::string& other) {
    Visits visits;
    for (std::size_t buckets = 1; buckets < 40; ++buckets) {
        for (const std::string& printAll : {one + other, other + one}) {
            CliExifMetadata record;
            record.tags.rehash(buckets);
            EXPECT_TRUE(internal::parsePrintAllOutput(printAll, record));
            visits[std::string(record.tags.begin()->first)].insert(
                focusInfoOf(record, [] {}).focusDistance);
        }
    }
    return visits;
}

TEST(FocusInfo, TheLowerDistanceWinsWhateverTheOrder) {
    const Visits visits = visitInManyOrders("Exif.A.FocusDistance Short 1 300\n",
                                            "Exif.A.FocusDistanceLower Short 1 250\n");
    EXPECT_EQ(visits,
              (Visits{{"Exif.A.FocusDistance", {2.5F}}, {"Exif.A.FocusDistanceLower", {2.5F}}}));
}

TEST(FocusInfo, OfTwoOtherDistancesTheFirstVisitedCounts) {
    const Visits visits = visitInManyOrders("Exif.A.FocusDistance Short 1 300\n",
                                            "Exif.B.FocusDistance Short 1 50\n");
    EXPECT_EQ(visits, (Visits{{"Exif.A.FocusDistance", {3.0F}}, {"Exif.B.FocusDistance", {0.5F}}}));
}

TEST(FocusInfo, ADistanceTooSmallForAFloatIsNoUnknownOne) {
    const Visits visits = visitInManyOrders("Exif.A.FocusDistance Ascii 5 1e-60\n",
                                            "Exif.B.FocusDistance Short 1 50\n");
    EXPECT_EQ(visits, (Visits{{"Exif.A.FocusDistance", {0.0F}}, {"Exif.B.FocusDistance", {0.5F}}}));
}

TEST(FocusInfo, OfTwo35mmValuesTheLastVisitedCounts) {
    const std::string one = "Exif.A.Length35mm Short 1 35\n";
    const std::string other = "Exif.B.Length35mm Short 1 75\n";
    std::set<float> values;
    for (const std::string& printAll : {one + other, other + one}) {
        const CliExifMetadata record = recordOf(printAll);
        float last = 0;
        for (const auto& [key, tag] : record.tags) {
            last = static_cast<float>(tag.integers.front());
        }
        EXPECT_EQ(focusInfoOf(record, [] {}).focalLength35mm, last);
        values.insert(last);
    }
    EXPECT_EQ(values, (std::set{35.0F, 75.0F}));
}

TEST(FocusInfo, A35mmValueThatCannotBeReadDoesNotCount) {
    EXPECT_EQ(focusInfoIn("Exif.A.35mmLength Ascii 4 long\n").focalLength35mm, -1.0F);
}

// ---- the exported function

class LensInfoReader : public PhotoWithTool {
protected:
    void read() {
        readExiv2Info(
            file, "Canon", "EOS 20D",
            [this](const SLensInfo& info) {
                calls.emplace_back("lens");
                lens = info;
            },
            [this](const SMetadataExiv& info) {
                calls.emplace_back("metadata");
                focus = info;
            },
            [this] { calls.emplace_back("tag"); });
    }

    std::vector<std::string> calls;
    SLensInfo lens;
    SMetadataExiv focus;
};

TEST_F(LensInfoReader, CallsNothingForAFileWithoutMetadata) {
    read();
    EXPECT_TRUE(calls.empty());
}

TEST_F(LensInfoReader, CallsForTheLensThenEachTagThenTheMetadata) {
    photoHas(
        "Exif.Image.Make Ascii 6 Canon\n"
        "Xmp.xmp.Rating Ascii 1 3\n"
        "Exif.Photo.FNumber Rational 1 28/10\n");
    read();
    EXPECT_EQ(calls, (std::vector<std::string>{"lens", "tag", "tag", "tag", "metadata"}));
}

TEST_F(LensInfoReader, TellsBothRecords) {
    photoHas(
        "Exif.Photo.FNumber Rational 1 28/10\n"
        "Exif.CanonCs.LensType Short 1 26\n"
        "Exif.Photo.ExposureBiasValue SRational 1 1/2\n",
        "Lens name       : EF50mm f/1.8\nFocal length    : 50.0 mm\n");
    read();
    EXPECT_EQ(lens, (SLensInfo{"EF50mm f/1.8", 50.0F, 1.61F * 50.0F, -1.0F, 2.8F, 26}));
    EXPECT_EQ(focus, (SMetadataExiv{-1.0F, -1.0F, -1.0F, -1.0F, 0.5F, -1}));
}

TEST_F(LensInfoReader, OfAPhotoWithoutTagsNeedsNoTagCallback) {
    photoHas("");
    EXPECT_NO_THROW(readExiv2Info(
        file, "", "", [](const auto&) {}, [](const auto&) {}, nullptr));
}

TEST_F(LensInfoReader, NeedsTheCallbacksThatItCalls) {
    photoHas("Exif.Image.Make Ascii 6 Canon\n");
    const auto ignoreLens = [](const SLensInfo&) {};
    const auto ignoreFocus = [](const SMetadataExiv&) {};
    EXPECT_THROW(readExiv2Info(file, "", "", nullptr, ignoreFocus, [] {}), std::bad_function_call);
    EXPECT_THROW(readExiv2Info(file, "", "", ignoreLens, nullptr, [] {}), std::bad_function_call);
    EXPECT_THROW(readExiv2Info(file, "", "", ignoreLens, ignoreFocus, nullptr),
                 std::bad_function_call);
}

}  // namespace
}  // namespace exiv2_wp
