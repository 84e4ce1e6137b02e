// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/payload.h"

#include <string>
#include <vector>

#include "exiv2/jpeg_frame.h"
#include "exiv2/libexiv2.h"

namespace exiv2_tool {
namespace {

using Bytes = std::span<const std::uint8_t>;

// Values of the TIFF tags Compression and PhotometricInterpretation.
constexpr std::uint64_t kUncompressed = 1;
constexpr std::uint64_t kOldJpeg = 6;
constexpr std::uint64_t kJpeg = 7;
constexpr std::uint64_t kYCbCr = 6;

/// The tag's values; none when it is missing.
std::vector<std::uint64_t> tagValues(const Exiv2::ExifData& tags, const char* name) {
    const auto tag = tags.findKey(Exiv2::ExifKey(std::string("Exif.Image.") + name));
    if (tag == tags.end()) {
        return {};
    }
    std::vector<std::uint64_t> values;
    values.reserve(static_cast<std::size_t>(tag->count()));
    for (decltype(tag->count()) i = 0; i < tag->count(); ++i) {
        values.push_back(static_cast<std::uint64_t>(numberAt(*tag, i)));
    }
    return values;
}

std::uint64_t tagValue(const Exiv2::ExifData& tags, const char* name, std::uint64_t otherwise) {
    const std::vector<std::uint64_t> values = tagValues(tags, name);
    return values.empty() ? otherwise : values.front();
}

/// The strips or tiles of a TIFF image; none when one of them doesn't lie within the file.
std::vector<Bytes> pixelParts(Bytes file, const Exiv2::ExifData& tags) {
    std::vector<std::uint64_t> offsets = tagValues(tags, "StripOffsets");
    std::vector<std::uint64_t> counts = tagValues(tags, "StripByteCounts");
    if (offsets.empty()) {
        offsets = tagValues(tags, "TileOffsets");
        counts = tagValues(tags, "TileByteCounts");
    }
    if (offsets.size() != counts.size()) {
        return {};
    }
    std::vector<Bytes> parts;
    for (std::size_t i = 0; i < offsets.size(); ++i) {
        if (offsets[i] > file.size() || counts[i] > file.size() - offsets[i]) {
            return {};
        }
        parts.push_back(file.subspan(offsets[i], counts[i]));
    }
    return parts;
}

/// Whether an uncompressed image may have so few bytes. Colour differences may be stored for fewer
/// pixels than brightness, so only brightness counts where they are used.
bool areAllRows(std::uint64_t bytes, PixelSize size, const Exiv2::ExifData& tags) {
    const bool isYCbCr = tagValue(tags, "PhotometricInterpretation", 0) == kYCbCr;
    const std::uint64_t samples = isYCbCr ? 1 : tagValue(tags, "SamplesPerPixel", 1);
    const std::uint64_t bits = tagValue(tags, "BitsPerSample", 1);
    if (samples > 0xFFFF || bits > 64) {
        return false;  // no such image
    }
    // A row has less than 2^54 bits: 32 bits of width, 16 of samples, 6 of bits.
    const std::uint64_t row = (size.width * samples * bits + 7) / 8;
    return row > 0 && bytes / row >= size.height;
}

bool holdsTiffPixels(Bytes file, PixelSize size) {
    const ImagePointer image = openImage(file);
    image->readMetadata();
    const Exiv2::ExifData& tags = image->exifData();
    const std::vector<Bytes> parts = pixelParts(file, tags);
    if (parts.empty()) {
        return false;
    }
    const std::uint64_t compression = tagValue(tags, "Compression", kUncompressed);
    if (compression == kOldJpeg || compression == kJpeg) {
        return jpegFrameSize(parts.front()).has_value();
    }
    std::uint64_t total = 0;
    for (const Bytes part : parts) {
        total += part.size();
    }
    return compression == kUncompressed ? areAllRows(total, size, tags) : total > 0;
}

}  // namespace

std::optional<PixelSize> payloadSize(Bytes bytes, std::string_view mimeType, PixelSize announced) {
    if (mimeType == "image/jpeg") {
        return jpegFrameSize(bytes);
    }
    if (bytes.empty() || announced.width == 0 || announced.height == 0 ||
        (mimeType == "image/tiff" && !holdsTiffPixels(bytes, announced))) {
        return std::nullopt;
    }
    return announced;
}

}  // namespace exiv2_tool
