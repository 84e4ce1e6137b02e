#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace test_support {

struct ImageSize {
    int width = 0;   ///< pixels
    int height = 0;  ///< pixels
    bool operator==(const ImageSize&) const = default;
};

/// The size of an image file, found by decoding it: a JPEG by the installed djpeg, whose warnings
/// count as failures; an uncompressed TIFF here, all its pixels being there. None for what can't be
/// decoded.
std::optional<ImageSize> decodedSize(const std::filesystem::path& image);

}  // namespace test_support
