#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>

#include "api/photo_with_tool.h"

namespace exiv2_wp {
namespace {

// A batch with its values instead of its pointers, so that two can be compared.
struct Batch {
    std::optional<double> apertureValue;
    std::optional<double> fNumber;
    std::optional<std::int32_t> exposureProgram;
    std::optional<double> focalLength;
    std::optional<double> shutterSpeedValue;
    std::optional<double> exposureBiasValue;
    std::optional<std::int32_t> isoSpeedRatings;
    std::optional<double> exposureTime;
    std::optional<std::int32_t> orientation;
    std::optional<std::string> dateTimeOriginal;
    std::optional<std::string> dateTime;

    bool operator==(const Batch&) const = default;
};

template <typename Value>
std::optional<Value> valueOf(const std::unique_ptr<Value>& owned) {
    return owned == nullptr ? std::nullopt : std::optional<Value>(*owned);
}

// In the order of the record's fields, which is part of the interface.
Batch valuesOf(const exivBatchValue& batch) {
    const auto& [aperture, fNumber, program, focal, shutter, bias, iso, time, orientation, original,
                 date] = batch;
    return {valueOf(aperture),    valueOf(fNumber),  valueOf(program), valueOf(focal),
            valueOf(shutter),     valueOf(bias),     valueOf(iso),     valueOf(time),
            valueOf(orientation), valueOf(original), valueOf(date)};
}

static_assert(!std::is_copy_constructible_v<exivBatchValue>);
static_assert(std::is_nothrow_move_constructible_v<exivBatchValue>);

class BatchReader : public PhotoWithTool {
protected:
    Batch read() { return valuesOf(readExiv2Win(file)); }
};

TEST_F(BatchReader, OfAFileWithoutMetadataGivesElevenNulls) {
    EXPECT_TRUE(read() == Batch());
}

TEST_F(BatchReader, ReadsAllEleven) {
    photoHas(
        "Exif.Photo.ApertureValue Rational 1 4/1\n"
        "Exif.Photo.FNumber Rational 1 28/10\n"
        "Exif.Photo.ExposureProgram Short 1 2\n"
        "Exif.Photo.FocalLength Rational 1 50/1\n"
        "Exif.Photo.ShutterSpeedValue SRational 1 -7/2\n"
        "Exif.Photo.ExposureBiasValue SRational 1 -1/3\n"
        "Exif.Photo.ISOSpeedRatings Short 1 400\n"
        "Exif.Photo.ExposureTime Rational 1 1/250\n"
        "Exif.Image.Orientation Short 1 6\n"
        "Exif.Photo.DateTimeOriginal Ascii 20 2021:07:04 18:30:05\n"
        "Exif.Image.DateTime Ascii 20 2022:01:01 00:00:00\n");
    const Batch expected = {4.0,
                            2.8,
                            2,
                            50.0,
                            -3.5,
                            -1.0 / 3.0,
                            400,
                            1.0 / 250,
                            6,
                            "2021:07:04 18:30:05",
                            "2022:01:01 00:00:00"};
    EXPECT_TRUE(read() == expected);
}

TEST_F(BatchReader, TakesOnlyTheExactKeys) {
    photoHas(
        "Exif.Image.FNumber Rational 1 28/10\n"
        "Xmp.exif.FocalLength Ascii 4 50/1\n"
        "Exif.Photo.DateTime Ascii 1 x\n");
    EXPECT_TRUE(read() == Batch());
}

TEST_F(BatchReader, LeavesWhatItCannotReadNull) {
    photoHas(
        "Exif.Photo.FNumber Ascii 5 f/2.8\n"
        "Exif.Photo.ISOSpeedRatings Short 1 4294967296\n"
        "Exif.Image.Orientation Ascii 2 6a\n");
    EXPECT_TRUE(read() == Batch());
}

TEST_F(BatchReader, ADenominatorOfZeroGivesTheNumerator) {
    photoHas("Exif.Photo.ExposureTime Rational 1 5/0\n");
    Batch expected;
    expected.exposureTime = 5.0;
    EXPECT_TRUE(read() == expected);
}

TEST_F(BatchReader, ARealMayStandInTheText) {
    photoHas("Exif.Photo.FocalLength Ascii 7 24.5mm\n");
    Batch expected;
    expected.focalLength = 24.5;
    EXPECT_TRUE(read() == expected);
}

TEST_F(BatchReader, ADateMayBeEmptyOrNoDate) {
    photoHas(
        "Exif.Photo.DateTimeOriginal Ascii 0\n"
        "Exif.Image.DateTime Ascii 9 yesterday\n");
    Batch expected;
    expected.dateTimeOriginal = "";
    expected.dateTime = "yesterday";
    EXPECT_TRUE(read() == expected);
}

}  // namespace
}  // namespace exiv2_wp
