#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "model/lens_id_keys.h"
#include "photos/print_out.h"
#include "photos/real_exiv2.h"
#include "support/exported_text.h"
#include "support/fields.h"
#include "support/photo_list.h"
#include "support/skip_or_fail.h"
#include "text/literal_text.h"

// The small readers on real photos, against what the tool prints.

namespace exiv2_wp {
namespace {

namespace fs = std::filesystem;
using test_support::Fields;
using test_support::literalDouble;
using test_support::literalFloat;
using test_support::printedByExiv2;
using test_support::PrintedEntries;
using test_support::PrintedEntry;
using test_support::summaryValue;
using test_support::toText;

class PhotoReaders : public ::testing::TestWithParam<fs::path> {
protected:
    void SetUp() override {
        if (GetParam().empty()) {
            SKIP_OR_FAIL("no photos in " PHOTOS);
        }
        ASSERT_TRUE(initialize(tool_.folder().path()));
        for (const auto& [key, entry] :
             test_support::readPrintOut(printedByExiv2("-PXEkycv -q", GetParam()))) {
            if (!test_support::isMakerNoteBlob(key, entry)) {
                entries.emplace(key, entry);
            }
        }
        ASSERT_FALSE(entries.empty());
    }

    [[nodiscard]] const PrintedEntry* find(const std::string& key) const {
        const auto entry = entries.find(key);
        return entry == entries.end() ? nullptr : &entry->second;
    }

    PrintedEntries entries;

private:
    test_support::RealExiv2 tool_;
};

std::optional<double> realOf(const PrintedEntry* entry) {
    if (entry == nullptr) {
        return std::nullopt;
    }
    if (!entry->rationals.empty()) {
        const auto [numerator, denominator] = entry->rationals.front();
        return static_cast<double>(numerator) /
               (denominator == 0 ? 1 : static_cast<double>(denominator));
    }
    if (!entry->integers.empty()) {
        return static_cast<double>(entry->integers.front());
    }
    return literalDouble(entry->value);
}

std::optional<std::int64_t> integerOf(const PrintedEntry* entry) {
    return entry == nullptr || entry->integers.empty() ? std::nullopt
                                                       : std::optional(entry->integers.front());
}

std::optional<std::string> textOf(const PrintedEntry* entry) {
    return entry == nullptr ? std::nullopt : std::optional(entry->value);
}

// ---- orientation and kind

TEST_P(PhotoReaders, TellTheOrientationThatIsPrinted) {
    std::vector<std::int64_t> told;
    readExiv2Orientation(GetParam(), [&](int orientation) { told.push_back(orientation); });

    std::vector<std::int64_t> printed;
    if (const auto orientation = integerOf(find("Exif.Image.Orientation"))) {
        printed.push_back(*orientation);
    }
    EXPECT_EQ(told, printed);
}

TEST_P(PhotoReaders, KnowAnEarlyRawByThePrintedModel) {
    std::string model = textOf(find("Exif.Image.Model")).value_or("");
    std::transform(model.begin(), model.end(), model.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });

    EXPECT_EQ(isTiffRaw(GetParam()), model == "canon eos-1d" || model == "canon eos-1ds" ||
                                         model == "eos d2000c" ||
                                         model.find("eosdcs1b") != std::string::npos);
}

// ---- lens and focus

float subjectDistance(const std::string& summary) {
    const auto step = literalFloat(summaryValue(summary, "Subject distance"));
    return step ? static_cast<float>(
                      std::min(std::pow(10.0, static_cast<double>(*step) / 0.4) * 0.01, 10000.0))
                : -1.0F;
}

float fNumber(const PrintedEntries& entries) {
    for (const char* const key : {"Exif.Photo.FNumber", "Exif.Image.FNumber", "Exif.Pentax.FNumber",
                                  "Exif.PentaxDng.FNumber", "Exif.Samsung2.FNumber"}) {
        const auto entry = entries.find(key);
        if (entry != entries.end() && !entry->second.rationals.empty()) {
            const auto [numerator, denominator] = entry->second.rationals.front();
            return static_cast<float>(numerator) / static_cast<float>(denominator);
        }
    }
    return -1.0F;
}

std::int64_t lensId(const PrintedEntries& entries) {
    for (const std::string key : test_support::kLensIdKeys) {
        const auto entry = entries.find(key);
        if (entry != entries.end() && !entry->second.integers.empty() &&
            (entry->second.integers.front() > 0 || key.starts_with("Exif.NikonLd4"))) {
            return entry->second.integers.front();
        }
    }
    return -1;
}

TEST_P(PhotoReaders, TellTheLensThatIsPrinted) {
    std::vector<std::string> told;
    readExiv2Info(
        GetParam(), "Canon", "EOS 40D",
        [&](const SLensInfo& lens) { told.push_back(toText(lens)); }, [](const auto&) {}, [] {});

    const std::string summary = printedByExiv2("pr", GetParam());
    SLensInfo lens;
    lens.lensName = summaryValue(summary, "Lens name");
    lens.focalLength = literalFloat(summaryValue(summary, "Focal length")).value_or(-1.0F);
    lens.focalLength35mm = 1.61F * lens.focalLength;
    lens.subjectDistance = subjectDistance(summary);
    lens.fNumber = fNumber(entries);
    lens.lensId = static_cast<std::int32_t>(lensId(entries));
    EXPECT_EQ(told, std::vector<std::string>{toText(lens)});
}

TEST_P(PhotoReaders, CallBackOnceForEachPrintedKey) {
    std::size_t calls = 0;
    readExiv2Info(
        GetParam(), "", "", [](const auto&) {}, [](const auto&) {}, [&] { ++calls; });
    EXPECT_EQ(calls, entries.size());
}

// What one of several keys may have given, in metres or millimetres; the library visits them in no
// particular order.
std::vector<float> candidates(const PrintedEntries& entries, const std::string& part,
                              double divisor) {
    std::vector<float> values;
    for (const auto& [key, entry] : entries) {
        const auto value = realOf(&entry);
        if (!key.starts_with("Xmp.") && key.find(part) != key.npos && value &&
            (divisor == 1 || *value > 0)) {
            values.push_back(static_cast<float>(*value / divisor));
        }
    }
    return values.empty() ? std::vector<float>{-1.0F} : values;
}

TEST_P(PhotoReaders, TellFocusAndSensorAsPrinted) {
    SMetadataExiv told;
    readExiv2Info(
        GetParam(), "", "", [](const auto&) {}, [&](const SMetadataExiv& info) { told = info; },
        [] {});

    const bool hasLowerBound = candidates(entries, "FocusDistanceLower", 100)[0] > 0;
    EXPECT_THAT(candidates(entries, hasLowerBound ? "FocusDistanceLower" : "FocusDistance", 100),
                ::testing::Contains(told.focusDistance));
    EXPECT_THAT(candidates(entries, "35mm", 1), ::testing::Contains(told.focalLength35mm));
    const auto real = [&](const char* key, double fallback) {
        return static_cast<float>(realOf(find(key)).value_or(fallback));
    };
    EXPECT_EQ(told.focalPlaneXResolution, real("Exif.Photo.FocalPlaneXResolution", -1));
    EXPECT_EQ(told.focalPlaneYResolution, real("Exif.Photo.FocalPlaneYResolution", -1));
    EXPECT_EQ(told.exposureBias, real("Exif.Photo.ExposureBiasValue", -999));
    EXPECT_EQ(told.bitsPerSample, integerOf(find("Exif.Image.BitsPerSample")).value_or(-1));
}

// ---- the batch

TEST_P(PhotoReaders, GiveTheBatchThatIsPrinted) {
    EXPECT_EQ(toText(readExiv2Win(GetParam())),
              Fields()
                  .add("apertureValue", realOf(find("Exif.Photo.ApertureValue")))
                  .add("fNumber", realOf(find("Exif.Photo.FNumber")))
                  .add("exposureProgram", integerOf(find("Exif.Photo.ExposureProgram")))
                  .add("focalLength", realOf(find("Exif.Photo.FocalLength")))
                  .add("shutterSpeedValue", realOf(find("Exif.Photo.ShutterSpeedValue")))
                  .add("exposureBiasValue", realOf(find("Exif.Photo.ExposureBiasValue")))
                  .add("isoSpeedRatings", integerOf(find("Exif.Photo.ISOSpeedRatings")))
                  .add("exposureTime", realOf(find("Exif.Photo.ExposureTime")))
                  .add("orientation", integerOf(find("Exif.Image.Orientation")))
                  .add("dateTimeOriginal", textOf(find("Exif.Photo.DateTimeOriginal")))
                  .add("dateTime", textOf(find("Exif.Image.DateTime")))
                  .text());
}

INSTANTIATE_TEST_SUITE_P(Photos, PhotoReaders, ::testing::ValuesIn(test_support::listFiles(PHOTOS)),
                         test_support::photoName);
INSTANTIATE_TEST_SUITE_P(Sample, PhotoReaders, ::testing::Values(SAMPLE_PHOTO),
                         test_support::photoName);

}  // namespace
}  // namespace exiv2_wp
