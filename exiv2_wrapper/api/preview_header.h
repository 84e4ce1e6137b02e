#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace exiv2_wp::internal {

/// The numbers that the tool prints before a preview's bytes, in their order.
struct PreviewHeader {
    std::int32_t previewWidth = 0;   ///< pixels
    std::int32_t previewHeight = 0;  ///< pixels
    std::int32_t notifyValue = 0;    ///< passed to the host when above 0
    std::int32_t payloadMode = 0;    ///< 0 or 1: which callback gets the bytes
    std::int32_t top = 0;            ///< rows above the picture
    std::int32_t bottom = 0;         ///< rows below the picture
};

struct PreviewOutput {
    PreviewHeader header;
    /// The bytes behind the header and all white space that follows it, so bytes that look like
    /// white space at the payload's beginning are lost; a view into the output. No value when the
    /// output ends with the header's last digit.
    std::optional<std::string_view> payload;
};

/// Splits the tool's output. The six numbers are read as a stream reads them in the classic locale:
/// white space before each is skipped, a sign may stand in front, and a number ends where its
/// digits do. No value when one is missing or needs more than 32 bits. Looks at no more than the
/// header and the white space around its numbers, and copies nothing.
[[nodiscard]] std::optional<PreviewOutput> splitPreviewOutput(std::string_view output);

}  // namespace exiv2_wp::internal
