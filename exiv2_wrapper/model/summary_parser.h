#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "exiv2_wrapper/model/cli_exif_metadata.h"

namespace exiv2_wp::internal {

/// Reads three items of what `exiv2 pr` prints (one item a line: label, colon, blank, value) into
/// `record`: `lensName`, `focalLength`, `subjectDistance`. An item that is missing or unreadable
/// leaves its field alone. Always true.
/// Raises std::out_of_range for a line of one of the three labels that ends in its colon, and
/// std::bad_alloc; `record` may then hold some of the items.
[[nodiscard]] bool parseSummaryOutput(std::string_view output, CliExifMetadata& record);

/// The value behind the first of `lines` that begins with `label`: what follows two bytes after
/// that line's first colon. Empty when there is no such line or no colon in it. Only the beginning
/// is compared, so "Focal length 35mm: " answers for "Focal length" too.
/// Raises std::out_of_range when the colon is the line's last byte.
[[nodiscard]] std::string findSummaryValue(const std::vector<std::string_view>& lines,
                                           std::string_view label);

}  // namespace exiv2_wp::internal
