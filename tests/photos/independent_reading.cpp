#include "photos/independent_reading.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <regex>
#include <utility>
#include <vector>

#include "photos/print_out.h"
#include "text/literal_text.h"

namespace test_support {

namespace {

using Keys = std::vector<std::string>;
using Rational = std::pair<std::int64_t, std::int64_t>;

const PrintedEntry* findFirst(const PrintedEntries& entries, const Keys& keys) {
    for (const std::string& key : keys) {
        if (const auto entry = entries.find(key); entry != entries.end()) {
            return &entry->second;
        }
    }
    return nullptr;
}

template <typename Real>
Real quotient(const Rational& rational) {
    const auto numerator = static_cast<Real>(rational.first);
    const auto denominator = static_cast<Real>(rational.second);
    return denominator == 0 ? numerator : numerator / denominator;
}

std::vector<Rational> rationalsOf(const PrintedEntry* entry) {
    return entry == nullptr ? std::vector<Rational>() : entry->rationals;
}

std::vector<std::int64_t> integersOf(const PrintedEntry* entry) {
    return entry == nullptr ? std::vector<std::int64_t>() : entry->integers;
}

void readReal(const PrintedEntry* entry, float& field) {
    if (const auto rationals = rationalsOf(entry); !rationals.empty()) {
        field = static_cast<float>(quotient<double>(rationals.front()));
    } else if (const auto integers = integersOf(entry); !integers.empty()) {
        field = static_cast<float>(integers.front());
    } else if (const auto value = literalDouble(entry == nullptr ? "" : entry->value)) {
        field = static_cast<float>(*value);
    }
}

void readExposure(const PrintedEntries& entries, const std::string& name, float& field) {
    readReal(findFirst(entries, {"Exif.Photo." + name, "Exif.Image." + name, "Xmp.exif." + name,
                                 "Xmp.exifEX." + name}),
             field);
}

std::string plainText(const PrintedEntry* entry, const char* replacement) {
    if (entry == nullptr) {
        return {};
    }
    for (const char c : entry->value) {
        if ((static_cast<unsigned char>(c) & 0x80U) != 0) {
            return replacement;
        }
    }
    return entry->value;
}

void readCode(const PrintedEntries& entries, const Keys& keys, std::int32_t& field) {
    for (const std::string& key : keys) {
        if (const auto integers = integersOf(findFirst(entries, {key})); !integers.empty()) {
            field = static_cast<std::int32_t>(integers.front());
            return;
        }
    }
}

std::string firstText(const PrintedEntries& entries, const Keys& keys) {
    for (const std::string& key : keys) {
        const PrintedEntry* const entry = findFirst(entries, {key});
        if (entry != nullptr && !entry->value.empty()) {
            return entry->value;
        }
    }
    return {};
}

void readLensRange(const PrintedEntries& entries, exiv2_wp::SExivMetadataInfo& info) {
    std::vector<float> range = {0, 0, 0, 0};
    const PrintedEntry* const exif = findFirst(entries, {"Exif.Photo.LensSpecification"});
    const PrintedEntry* const canon = findFirst(entries, {"Exif.CanonCs.Lens"});
    const PrintedEntry* const xmp = findFirst(entries, {"Xmp.exifEX.LensSpecification"});
    const PrintedEntry* const model = findFirst(entries, {"Exif.Photo.LensModel"});
    std::vector<Rational> rationals = rationalsOf(exif);
    if (exif == nullptr && canon == nullptr) {
        rationals = rationalsOf(xmp);
    }
    const auto integers = integersOf(canon);
    std::smatch match;
    if (rationals.size() >= 4) {
        for (std::size_t i = 0; i < range.size(); ++i) {
            range[i] = quotient<float>(rationals[i]);
        }
    } else if (exif != nullptr && model != nullptr) {
        if (std::regex_search(model->value, match, std::regex("(\\d+)-(\\d+)\\s*[mM][mM]"))) {
            range = {std::stof(match[1]), std::stof(match[2]), 0, 0};
        }
    } else if (exif == nullptr && integers.size() >= 3 && integers[2] != 0) {
        const auto units = static_cast<float>(integers[2]);
        range = {static_cast<float>(integers[1]) / units, static_cast<float>(integers[0]) / units,
                 0, 0};
    }
    info.lensFocalMin = range[0];
    info.lensFocalMax = range[1];
    info.lensApertureAtFocalMin = range[2];
    info.lensApertureAtFocalMax = range[3];
}

std::string isoDate(const std::string& date, const std::string& offset) {
    static const std::regex kDate(R"((\d{4}).(\d\d).(\d\d).(\d\d.\d\d.\d\d)(.*))");
    static const std::regex kOffset(R"([+-]\d\d:\d\d.*)");
    if (!std::regex_match(date, kDate)) {
        return {};
    }
    return std::regex_replace(date, kDate, "$1-$2-$3T$4$5") +
           (std::regex_match(offset, kOffset) ? offset : "");
}

}  // namespace

exiv2_wp::SExivMetadataInfo readIndependently(const std::string& printAll) {
    const PrintedEntries entries = readPrintOut(printAll);
    exiv2_wp::SExivMetadataInfo info;
    float aperture = 0;
    readExposure(entries, "ISOSpeedRatings", info.iso);
    readExposure(entries, "ExposureTime", info.exposureTime);
    readExposure(entries, "FNumber", info.fNumber);
    readExposure(entries, "FocalLength", info.focalLength);
    readExposure(entries, "ExposureBiasValue", info.exposureBias);
    readExposure(entries, "FocalLengthIn35mmFilm", info.focalLength35mm);
    readExposure(entries, "ApertureValue", aperture);
    if (info.fNumber == -1 && aperture != 0) {
        info.fNumber = static_cast<float>(std::pow(2.0, static_cast<double>(aperture) / 2));
    }
    info.cameraMaker = plainText(findFirst(entries, {"Exif.Image.Make"}), "Unknown Camera Maker");
    info.isApple = std::regex_match(info.cameraMaker, std::regex("apple", std::regex::icase));
    info.cameraModel =
        plainText(findFirst(entries, {"Exif.Image.UniqueCameraModel", "Exif.Image.Model"}),
                  "Unknown Camera Model");
    readLensRange(entries, info);
    info.lensMaker = plainText(findFirst(entries, {"Exif.Photo.LensMake", "Xmp.exifEX.LensMake"}),
                               "Unknown Lens Maker");
    info.lensModel = plainText(findFirst(entries, {"Exif.Photo.LensModel", "Exif.Canon.LensModel",
                                                   "Xmp.exifEX.LensModel"}),
                               "");
    readCode(entries, {"Exif.Image.BitsPerSample"}, info.bitsPerSample);
    readCode(entries, {"Exif.Image.Orientation"}, info.orientation);
    readCode(entries, {"Exif.Image.MeteringMode", "Exif.Photo.MeteringMode"}, info.meteringMode);
    readCode(entries, {"Exif.Image.LightSource", "Exif.Photo.LightSource"}, info.lightSource);
    readCode(entries, {"Exif.Photo.WhiteBalance"}, info.whiteBalance);
    info.dateTimeOriginal =
        firstText(entries, {"Exif.Photo.DateTimeOriginal", "Exif.Image.DateTimeOriginal",
                            "Exif.Image.DateTime", "Exif.Photo.DateTimeDigitized"});
    info.dateTimeIso = isoDate(
        info.dateTimeOriginal,
        firstText(entries, {"Exif.Photo.OffsetTime", "Exif.Photo.OffsetTimeOriginal",
                            "Exif.Photo.OffsetTimeDigitized", "Exif.Image.TimeZoneOffset"}));
    if (const PrintedEntry* const rating =
            findFirst(entries, {"Xmp.xmp.Rating", "Exif.Image.Rating"})) {
        info.rating = literalFloat(rating->value).value_or(0.0F);
    }
    return info;
}

}  // namespace test_support
