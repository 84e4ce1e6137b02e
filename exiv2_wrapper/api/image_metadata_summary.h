#pragma once

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/model/cli_exif_metadata.h"

namespace exiv2_wp::internal {

/// Distils the exported summary from a record's tags, rating included. Logs a trace line for each
/// exposure value, maker or lens specification that is missing or unreadable.
[[nodiscard]] SExivMetadataInfo summarize(const CliExifMetadata& metadata);

}  // namespace exiv2_wp::internal
