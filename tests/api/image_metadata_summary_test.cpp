#include "exiv2_wrapper/api/image_metadata_summary.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>

#include "api/summary_fixture.h"
#include "support/comma_locale.h"
#include "support/exported_text.h"

namespace exiv2_wp::internal {
namespace {

using test_support::LogLine;
using test_support::toText;
using test_support::traceLine;

TEST(SExivMetadataInfo, HasItsFieldsInTheHostsOrder) {
    using Info = SExivMetadataInfo;
    static_assert(std::is_standard_layout_v<Info>);
    const std::vector<std::size_t> numbers = {
        offsetof(Info, iso),
        offsetof(Info, exposureTime),
        offsetof(Info, focalLength),
        offsetof(Info, fNumber),
        offsetof(Info, focalLength35mm),
        offsetof(Info, exposureBias),
        offsetof(Info, isApple),
        offsetof(Info, lensFocalMin),
        offsetof(Info, lensFocalMax),
        offsetof(Info, lensApertureAtFocalMin),
        offsetof(Info, lensApertureAtFocalMax),
        offsetof(Info, bitsPerSample),
        offsetof(Info, orientation),
        offsetof(Info, meteringMode),
        offsetof(Info, lightSource),
        offsetof(Info, whiteBalance),
    };
    EXPECT_EQ(numbers, (std::vector<std::size_t>{0, 4, 8, 12, 16, 20, 24, 28, 32, 36, 40, 44, 48,
                                                 52, 56, 60}));
    constexpr std::size_t kText = sizeof(std::string);
    const std::vector<std::size_t> texts = {
        offsetof(Info, cameraMaker),  offsetof(Info, cameraModel), offsetof(Info, lensMaker),
        offsetof(Info, reservedText), offsetof(Info, lensModel),   offsetof(Info, dateTimeOriginal),
        offsetof(Info, dateTimeIso),  offsetof(Info, rating),
    };
    std::vector<std::size_t> expected;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        expected.push_back(64 + i * kText);
    }
    EXPECT_EQ(texts, expected);
}

constexpr auto kDefaults =
    "iso: -1\nexposureTime: -1\nfocalLength: -1\nfNumber: -1\nfocalLength35mm: -1\n"
    "exposureBias: -999\nisApple: false\nlensFocalMin: -1\nlensFocalMax: -1\n"
    "lensApertureAtFocalMin: -1\nlensApertureAtFocalMax: -1\nbitsPerSample: 0\norientation: 0\n"
    "meteringMode: -1\nlightSource: -1\nwhiteBalance: -1\ncameraMaker: \"\"\ncameraModel: \"\"\n"
    "lensMaker: \"\"\nreservedText: \"\"\nlensModel: \"\"\ndateTimeOriginal: \"\"\n"
    "dateTimeIso: \"\"\nrating: 0\n";

TEST(SExivMetadataInfo, StartsWithItsSentinels) {
    EXPECT_EQ(toText(SExivMetadataInfo()), kDefaults);
}

class Summary : public test_support::SummaryFixture {};

TEST_F(Summary, OfAnEmptyRecordHasTheDefaultsAndNoLensRange) {
    SExivMetadataInfo expected;
    expected.lensFocalMin = 0;
    expected.lensFocalMax = 0;
    expected.lensApertureAtFocalMin = 0;
    expected.lensApertureAtFocalMax = 0;

    EXPECT_EQ(toText(summary()), toText(expected));
}

TEST_F(Summary, OfAnEmptyRecordLogsWhatIsMissingInOrder) {
    (void)summary();

    EXPECT_EQ(log.lines(), (std::vector<LogLine>{
                               traceLine("No Exif data: ", "ISOSpeedRatings"),
                               traceLine("No Exif data: ", "ExposureTime"),
                               traceLine("No Exif data: ", "FNumber"),
                               traceLine("No Exif data: ", "FocalLength"),
                               traceLine("No Exif data: ", "ExposureBiasValue"),
                               traceLine("No Exif data: ", "FocalLengthIn35mmFilm"),
                               traceLine("No Exif data: ", "ApertureValue"),
                               traceLine("No Exif data: ", "Exif.Image.Make"),
                               traceLine("No Exif data: ", "Exif.Photo.LensSpecification"),
                               traceLine("No Exif data: ", "Xmp.exifEX.LensSpecification"),
                           }));
}

TEST_F(Summary, OfAPartialRecordLogsOnlyWhatIsMissingOrUnreadable) {
    addIntegers("Exif.Photo.ISOSpeedRatings", {100});
    addText("Exif.Photo.ExposureTime", "long");
    addRationals("Exif.Image.FNumber", {{4, 1}});
    addText("Xmp.exif.FocalLength", "");
    addRationals("Xmp.exifEX.ExposureBiasValue", {{-1, 3}});
    addText("Exif.Image.Make", "Canon");
    addIntegers("Exif.CanonCs.Lens", {});

    (void)summary();

    EXPECT_EQ(log.lines(), (std::vector<LogLine>{
                               traceLine("Cannot parse Exif data: ", "ExposureTime"),
                               traceLine("Cannot parse Exif data: ", "FocalLength"),
                               traceLine("No Exif data: ", "FocalLengthIn35mmFilm"),
                               traceLine("No Exif data: ", "ApertureValue"),
                               traceLine("No Exif data: ", "Exif.Photo.LensSpecification"),
                           }));
}

TEST_F(Summary, OfAFullRecordLogsNothing) {
    for (const char* const name : {"ISOSpeedRatings", "ExposureTime", "FNumber", "FocalLength",
                                   "ExposureBiasValue", "FocalLengthIn35mmFilm", "ApertureValue"}) {
        addRationals("Exif.Photo." + std::string(name), {{1, 1}});
    }
    addText("Exif.Image.Make", "Canon");
    addRationals("Exif.Photo.LensSpecification", {{24, 1}, {70, 1}, {28, 10}, {28, 10}});

    (void)summary();

    EXPECT_EQ(log.lines(), std::vector<LogLine>());
}

TEST_F(Summary, LeavesTheReservedTextEmpty) {
    addText("reservedText", "x");
    addText("Exif.Photo.LensSerialNumber", "x");
    addText("Exif.Image.Make", "x");

    EXPECT_EQ(summary().reservedText, "");
}

TEST_F(Summary, CallsAMakerAppleOnlyWhenThatIsAllOfIt) {
    const auto isApple = [this](const std::string& make) {
        addText("Exif.Image.Make", make);
        EXPECT_EQ(summary().cameraMaker, make);
        return summary().isApple;
    };
    EXPECT_TRUE(isApple("Apple"));
    EXPECT_TRUE(isApple("APPLE"));
    EXPECT_FALSE(isApple("Apple Inc."));
    EXPECT_FALSE(isApple("Appl"));
    EXPECT_FALSE(isApple(""));
}

TEST_F(Summary, ReadsTheSameInALocaleWithADecimalComma) {
    addText("Exif.Image.Make", "APPLE");
    addText("Exif.Photo.FNumber", "2.8");
    addText("Xmp.xmp.Rating", "1.5");
    const std::string expected = toText(summary());

    const test_support::CommaLocale locale;

    EXPECT_TRUE(summary().isApple);
    EXPECT_EQ(toText(summary()), expected);
}

TEST_F(Summary, ReplacesCameraNamesThatAreNotPlain) {
    addText("Exif.Image.Make", "Apple\x80");
    addText("Exif.Image.Model", "\xC3\x84");

    EXPECT_EQ(summary().cameraMaker, "Unknown Camera Maker");
    EXPECT_FALSE(summary().isApple);
    EXPECT_EQ(summary().cameraModel, "Unknown Camera Model");
}

TEST_F(Summary, PrefersTheUniqueCameraModelEvenWhenItIsNotPlainOrEmpty) {
    addText("Exif.Image.Model", "Canon EOS 400D DIGITAL");
    EXPECT_EQ(summary().cameraModel, "Canon EOS 400D DIGITAL");

    for (const auto& [unique, expected] :
         {std::pair("EOS Kiss Digital X", "EOS Kiss Digital X"),
          std::pair("\xFF", "Unknown Camera Model"), std::pair("", "")}) {
        addText("Exif.Image.UniqueCameraModel", unique);
        EXPECT_EQ(summary().cameraModel, expected);
    }
}

TEST_F(Summary, KeepsANulByteOfAText) {
    const std::string make("Can\0on", 6);
    addText("Exif.Image.Make", make);

    EXPECT_EQ(summary().cameraMaker, make);
}

TEST_F(Summary, ReadsTheRatingFromItsTextAlone) {
    addText("Exif.Image.Rating", "4");
    EXPECT_EQ(summary().rating, 4);

    addText("Xmp.xmp.Rating", "3");
    EXPECT_EQ(summary().rating, 3);

    record.tags["Xmp.xmp.Rating"] = {"Xmp.xmp.Rating", "xmptext", " -1.5 stars", {{9, 1}}, {8}, 1};
    EXPECT_EQ(summary().rating, -1.5F);
}

TEST_F(Summary, DoesNotFallBackFromAnUnreadableXmpRating) {
    addText("Exif.Image.Rating", "4");
    for (const char* const unreadable : {"x", "", "1e99", "1e-99"}) {
        addText("Xmp.xmp.Rating", unreadable);
        EXPECT_EQ(summary().rating, 0) << unreadable;
    }
}

}  // namespace
}  // namespace exiv2_wp::internal
