#include "exiv2_wrapper/api/lens_info_reader.h"

#include <optional>
#include <string_view>

#include "exiv2_wrapper/api/tag_values.h"
#include "exiv2_wrapper/model/metadata_cache.h"

namespace exiv2_wp {

namespace internal {

namespace {

// Makers give focus distances in centimetres.
constexpr double kUnitsPerMetre = 100.0;

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

// XMP properties don't count. Asked last, since few keys come so far.
bool isXmp(std::string_view key) {
    return contains(key, "Xmp.");
}

// Every value here is read in double precision and then rounded. An integer is thus rounded twice,
// unlike in the summary (`readFloat`), and may differ from it in the last bit above 2^53.
std::optional<float> readRounded(const CliExifTag& tag) {
    const std::optional<double> value = readDouble(tag);
    return value ? std::optional(static_cast<float>(*value)) : std::nullopt;
}

void readInto(const CliExifTag& tag, float& destination) {
    destination = readRounded(tag).value_or(destination);
}

// A lower bound counts more than any other focus distance, whichever comes first; of the others the
// first that is above 0 counts.
void readFocusDistance(std::string_view key, const CliExifTag& tag, SMetadataExiv& info) {
    const bool counts = contains(key, "FocusDistance") &&
                        (info.focusDistance < 0.0F || contains(key, "FocusDistanceLower")) &&
                        !isXmp(key);
    const auto distance = counts ? readDouble(tag) : std::nullopt;
    if (distance && *distance > 0.0) {
        info.focusDistance = static_cast<float>(*distance / kUnitsPerMetre);
    }
}

void readFocusTag(std::string_view key, const CliExifTag& tag, SMetadataExiv& info) {
    readFocusDistance(key, tag, info);
    if (contains(key, "35mm") && !isXmp(key)) {  // of several the last counts, whatever its sign
        readInto(tag, info.focalLength35mm);
    }
    if (key == "Exif.Image.BitsPerSample") {
        info.bitsPerSample = readInt(tag).value_or(info.bitsPerSample);
    } else if (key == "Exif.Photo.FocalPlaneXResolution") {
        readInto(tag, info.focalPlaneXResolution);
    } else if (key == "Exif.Photo.FocalPlaneYResolution") {
        readInto(tag, info.focalPlaneYResolution);
    } else if (key == "Exif.Photo.ExposureBiasValue") {
        readInto(tag, info.exposureBias);
    }
}

}  // namespace

float equivalentFocalLength(float focalLength, float cropFactor) {
    return (cropFactor < 0.0F ? 1.0F : cropFactor) * focalLength;
}

SLensInfo lensInfoOf(const CliExifMetadata& metadata, const std::string& make,
                     const std::string& model) {
    SLensInfo info{metadata.lensName,        metadata.focalLength, metadata.focalLength35mm,
                   metadata.subjectDistance, metadata.fNumber,     metadata.lensId};
    if (info.focalLength35mm < 0.0F) {
        info.focalLength35mm = equivalentFocalLength(info.focalLength, getCropFactor(make, model));
    }
    return info;
}

// In the table's own order, which no two runs promise to share.
SMetadataExiv focusInfoOf(const CliExifMetadata& metadata, const std::function<void()>& onTag) {
    SMetadataExiv info;
    for (const auto& [key, tag] : metadata.tags) {
        onTag();
        readFocusTag(key, tag, info);
    }
    return info;
}

}  // namespace internal

void readExiv2Info(const std::filesystem::path& file, const std::string& make,
                   const std::string& model, const std::function<void(const SLensInfo&)>& onLens,
                   const std::function<void(const SMetadataExiv&)>& onMetadata,
                   const std::function<void()>& onTag) {
    const auto metadata = internal::readExifMetadataFromCliCached(file);
    if (metadata != nullptr) {
        onLens(internal::lensInfoOf(*metadata, make, model));
        onMetadata(internal::focusInfoOf(*metadata, onTag));
    }
}

}  // namespace exiv2_wp
