#pragma once

#include <string_view>

#include "exiv2_wrapper/model/cli_exif_metadata.h"

namespace exiv2_wp::internal {

/// Reads what `exiv2 -PXEkycv` prints (one entry a line: key, type, count, value) into `record`,
/// adding to `tags` and setting `fNumber` and `lensId` where the entries tell them; it touches no
/// other field. Of several lines with one key the first counts; maker-note blobs are left out.
/// False only for an output that isn't empty and holds no entry: an empty print-out is a file
/// without metadata and no failure.
/// Raises nothing but std::bad_alloc.
[[nodiscard]] bool parsePrintAllOutput(std::string_view output, CliExifMetadata& record);

}  // namespace exiv2_wp::internal
