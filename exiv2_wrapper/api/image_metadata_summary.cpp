#include "exiv2_wrapper/api/image_metadata_summary.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "exiv2_wrapper/api/lens_range.h"
#include "exiv2_wrapper/api/tag_values.h"
#include "exiv2_wrapper/log/log.h"
#include "exiv2_wrapper/model/metadata_cache.h"
#include "exiv2_wrapper/text/text.h"

namespace exiv2_wp {

namespace internal {

namespace {

constexpr auto kNoData = "No Exif data: ";
constexpr auto kUnreadableData = "Cannot parse Exif data: ";

constexpr auto kUnknownCameraMaker = "Unknown Camera Maker";
constexpr auto kUnknownCameraModel = "Unknown Camera Model";
constexpr auto kUnknownLensMaker = "Unknown Lens Maker";

// Where an exposure value may stand, the best place first.
constexpr std::array<std::string_view, 4> kExposurePrefixes = {"Exif.Photo.", "Exif.Image.",
                                                               "Xmp.exif.", "Xmp.exifEX."};

constexpr auto kMakeKey = "Exif.Image.Make";
constexpr auto kLensSpecificationKey = "Exif.Photo.LensSpecification";
constexpr auto kXmpLensSpecificationKey = "Xmp.exifEX.LensSpecification";

using Keys = std::initializer_list<const char*>;

const CliExifTag* findFirst(const CliExifMetadata& metadata, Keys keys) {
    for (const char* const key : keys) {
        if (const CliExifTag* const tag = metadata.find(key)) {
            return tag;
        }
    }
    return nullptr;
}

const CliExifTag* findExposureTag(const CliExifMetadata& metadata, std::string_view name) {
    std::string key;
    for (const std::string_view prefix : kExposurePrefixes) {
        key.assign(prefix).append(name);
        if (const CliExifTag* const tag = metadata.find(key)) {
            return tag;
        }
    }
    return nullptr;
}

// The first place that has the value decides: one that is there but unreadable doesn't give way to
// the next.
void readExposureValue(const CliExifMetadata& metadata, const char* name, float& destination) {
    const CliExifTag* const tag = findExposureTag(metadata, name);
    if (tag == nullptr) {
        logTrace(kNoData, name);
        return;
    }
    if (const auto value = readFloat(*tag)) {
        destination = *value;
    } else {
        logTrace(kUnreadableData, name);
    }
}

void readExposure(const CliExifMetadata& metadata, SExivMetadataInfo& info) {
    float apertureValue = 0.0F;
    readExposureValue(metadata, "ISOSpeedRatings", info.iso);
    readExposureValue(metadata, "ExposureTime", info.exposureTime);
    readExposureValue(metadata, "FNumber", info.fNumber);
    readExposureValue(metadata, "FocalLength", info.focalLength);
    readExposureValue(metadata, "ExposureBiasValue", info.exposureBias);
    readExposureValue(metadata, "FocalLengthIn35mmFilm", info.focalLength35mm);
    readExposureValue(metadata, "ApertureValue", apertureValue);

    const bool isUnknown = info.fNumber == -1.0F;
    if (isUnknown && apertureValue != 0.0F) {
        // APEX: the aperture value is twice the binary logarithm of the F-number.
        info.fNumber =
            static_cast<float>(std::pow(std::sqrt(2.0), static_cast<double>(apertureValue)));
    }
}

std::string plainTextOr(const CliExifTag& tag, const char* replacement) {
    return std::string(isPlainAscii(tag.value) ? tag.value : replacement);
}

void readCamera(const CliExifMetadata& metadata, SExivMetadataInfo& info) {
    if (const CliExifTag* const make = metadata.find(kMakeKey)) {
        info.cameraMaker = plainTextOr(*make, kUnknownCameraMaker);
        info.isApple = lowerCased(info.cameraMaker) == "apple";
    } else {
        logTrace(kNoData, kMakeKey);
    }
    // Raw converters write the unique model, which tells regional names of one camera apart.
    if (const CliExifTag* const model =
            findFirst(metadata, {"Exif.Image.UniqueCameraModel", "Exif.Image.Model"})) {
        info.cameraModel = plainTextOr(*model, kUnknownCameraModel);
    }
}

void setLensRange(const CliExifTag& specification, SExivMetadataInfo& info) {
    info.lensFocalMin = toFloat(specification.rationals[0]);
    info.lensFocalMax = toFloat(specification.rationals[1]);
    info.lensApertureAtFocalMin = toFloat(specification.rationals[2]);
    info.lensApertureAtFocalMax = toFloat(specification.rationals[3]);
}

bool isWholeSpecification(const CliExifTag& tag) {
    return tag.rationals.size() >= 4;
}

// Digits to a focal length. No value above the 32-bit range; leading zeros don't count, however
// many there are.
std::optional<float> parseFocalLength(std::string_view digits) {
    constexpr std::int64_t kMax = std::numeric_limits<std::int32_t>::max();
    std::int64_t length = 0;
    for (const char digit : digits) {
        length = length * 10 + (digit - '0');
        if (length > kMax) {
            return std::nullopt;
        }
    }
    return static_cast<float>(length);
}

// The shortest length stays when only the longest can't be converted.
void readRangeOfLensModel(const CliExifMetadata& metadata, SExivMetadataInfo& info) {
    const CliExifTag* const model = metadata.find("Exif.Photo.LensModel");
    const auto range = model == nullptr ? std::nullopt : findLensRange(model->value);
    if (!range) {
        return;
    }
    const auto shortest = parseFocalLength(range->shortest);
    if (!shortest) {
        return;
    }
    info.lensFocalMin = *shortest;
    info.lensFocalMax = parseFocalLength(range->longest).value_or(info.lensFocalMax);
}

// Canon's own tag: the long end, the short end, and the units that both are counted in.
void readCanonLensRange(const CliExifTag& lens, SExivMetadataInfo& info) {
    if (lens.integers.size() < 3 || lens.integers[2] == 0) {
        return;
    }
    const auto unitsPerMm = static_cast<float>(lens.integers[2]);
    info.lensFocalMin = static_cast<float>(lens.integers[1]) / unitsPerMm;
    info.lensFocalMax = static_cast<float>(lens.integers[0]) / unitsPerMm;
}

void readLensRange(const CliExifMetadata& metadata, SExivMetadataInfo& info) {
    const CliExifTag* const specification = metadata.find(kLensSpecificationKey);
    if (specification != nullptr && isWholeSpecification(*specification)) {
        setLensRange(*specification, info);
        return;
    }
    // From here on 0 is what stands for unknown: the host tells a lens without a range by it.
    info.lensFocalMin = 0.0F;
    info.lensFocalMax = 0.0F;
    info.lensApertureAtFocalMin = 0.0F;
    info.lensApertureAtFocalMax = 0.0F;
    if (specification != nullptr) {
        readRangeOfLensModel(metadata, info);
        return;
    }
    logTrace(kNoData, kLensSpecificationKey);

    // Canon's tag, usable or not, keeps the XMP copy from being asked.
    if (const CliExifTag* const canonLens = metadata.find("Exif.CanonCs.Lens")) {
        readCanonLensRange(*canonLens, info);
        return;
    }
    const CliExifTag* const xmpSpecification = metadata.find(kXmpLensSpecificationKey);
    if (xmpSpecification == nullptr) {
        logTrace(kNoData, kXmpLensSpecificationKey);
    } else if (isWholeSpecification(*xmpSpecification)) {
        setLensRange(*xmpSpecification, info);
    }
}

void readLensNames(const CliExifMetadata& metadata, SExivMetadataInfo& info) {
    if (const CliExifTag* const maker =
            findFirst(metadata, {"Exif.Photo.LensMake", "Xmp.exifEX.LensMake"})) {
        info.lensMaker = plainTextOr(*maker, kUnknownLensMaker);
    }
    // No replacement text here: the host looks a lens profile up by this name, and an empty one
    // finds none.
    if (const CliExifTag* const model = findFirst(
            metadata, {"Exif.Photo.LensModel", "Exif.Canon.LensModel", "Xmp.exifEX.LensModel"})) {
        info.lensModel = plainTextOr(*model, "");
    }
}

// The first readable one counts.
void readCode(const CliExifMetadata& metadata, Keys keys, std::int32_t& code) {
    for (const char* const key : keys) {
        const CliExifTag* const tag = metadata.find(key);
        if (const auto value = tag == nullptr ? std::nullopt : readInt(*tag)) {
            code = *value;
            return;
        }
    }
}

void readCodes(const CliExifMetadata& metadata, SExivMetadataInfo& info) {
    readCode(metadata, {"Exif.Image.BitsPerSample"}, info.bitsPerSample);
    readCode(metadata, {"Exif.Image.Orientation"}, info.orientation);
    readCode(metadata, {"Exif.Image.MeteringMode", "Exif.Photo.MeteringMode"}, info.meteringMode);
    readCode(metadata, {"Exif.Image.LightSource", "Exif.Photo.LightSource"}, info.lightSource);
    readCode(metadata, {"Exif.Photo.WhiteBalance"}, info.whiteBalance);
}

std::string_view firstNonBlankText(const CliExifMetadata& metadata, Keys keys) {
    for (const char* const key : keys) {
        const CliExifTag* const tag = metadata.find(key);
        const std::string_view text = tag == nullptr ? std::string_view() : trimmed(tag->value);
        if (!text.empty()) {
            return text;
        }
    }
    return {};
}

bool areDigits(std::string_view text, std::initializer_list<std::size_t> positions) {
    for (const std::size_t position : positions) {
        if (!isDigit(text[position])) {
            return false;
        }
    }
    return true;
}

bool isZoneOffset(std::string_view text) {
    return text.size() >= 6 && (text[0] == '+' || text[0] == '-') && text[3] == ':' &&
           areDigits(text, {1, 2, 4, 5});
}

// "2021:07:04 18:30:05" and "+02:00" to ISO 8601. Only digits are checked, not what parts them:
// cameras write blanks, colons and hyphens there. What follows the seconds is kept.
std::string makeIsoDate(std::string_view dateTime, std::string_view zoneOffset) {
    constexpr std::size_t kLength = 19;
    if (dateTime.size() < kLength ||
        !areDigits(dateTime, {0, 1, 2, 3, 5, 6, 8, 9, 11, 12, 14, 15, 17, 18})) {
        return {};
    }
    std::string iso(dateTime);
    iso[4] = '-';
    iso[7] = '-';
    iso[10] = 'T';
    if (isZoneOffset(zoneOffset)) {
        iso += zoneOffset;
    }
    return iso;
}

void readDate(const CliExifMetadata& metadata, SExivMetadataInfo& info) {
    info.dateTimeOriginal =
        firstNonBlankText(metadata, {"Exif.Photo.DateTimeOriginal", "Exif.Image.DateTimeOriginal",
                                     "Exif.Image.DateTime", "Exif.Photo.DateTimeDigitized"});
    // The plain offset goes before that of the capture, on purpose.
    const std::string_view zoneOffset = firstNonBlankText(
        metadata, {"Exif.Photo.OffsetTime", "Exif.Photo.OffsetTimeOriginal",
                   "Exif.Photo.OffsetTimeDigitized", "Exif.Image.TimeZoneOffset"});
    info.dateTimeIso = makeIsoDate(info.dateTimeOriginal, zoneOffset);
}

// The text alone counts here, and an XMP rating that is unreadable hides the Exif one.
void readRating(const CliExifMetadata& metadata, SExivMetadataInfo& info) {
    const CliExifTag* const tag = findFirst(metadata, {"Xmp.xmp.Rating", "Exif.Image.Rating"});
    if (const auto rating = tag == nullptr ? std::nullopt : parseFloat(tag->value)) {
        info.rating = *rating;
    }
}

}  // namespace

SExivMetadataInfo summarize(const CliExifMetadata& metadata) {
    SExivMetadataInfo info;
    readExposure(metadata, info);
    readCamera(metadata, info);
    readLensRange(metadata, info);
    readLensNames(metadata, info);
    readCodes(metadata, info);
    readDate(metadata, info);
    readRating(metadata, info);
    return info;
}

}  // namespace internal

void createImageMetadata(const std::filesystem::path& file,
                         const std::function<void(const SExivMetadataInfo&)>& callback) {
    const auto metadata = internal::readExifMetadataFromCliCached(file);
    if (metadata != nullptr) {
        callback(internal::summarize(*metadata));
    }
}

}  // namespace exiv2_wp
