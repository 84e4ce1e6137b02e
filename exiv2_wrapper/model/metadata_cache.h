#pragma once

#include <filesystem>
#include <memory>

#include "exiv2_wrapper/model/cli_exif_metadata.h"

namespace exiv2_wp::internal {

/// The record of `file`, shared and read-only; null when it has no usable metadata, which is
/// remembered too. Any thread may call. Blocks for two tool runs, its own or those of another
/// caller of the same file, whose result it then shares; there is no time limit.
/// What was read once is not read again while it is kept, even if the file changes: at most 200
/// files are kept, and the 40 oldest go when the next comes.
/// An exception (std::bad_alloc, or std::out_of_range from a summary line that ends in its colon)
/// reaches only the caller that ran the tool; others that waited for it get null, and nothing is
/// remembered.
[[nodiscard]] std::shared_ptr<const CliExifMetadata> readExifMetadataFromCliCached(
    const std::filesystem::path& file);

}  // namespace exiv2_wp::internal
