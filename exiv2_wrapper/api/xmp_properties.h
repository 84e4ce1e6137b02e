#pragma once

#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/model/cli_exif_metadata.h"

namespace exiv2_wp::internal {

/// The XMP properties of a record, in the byte-wise order of their keys. A key without prefix or
/// name is left out; one with an unknown prefix is kept, with an empty namespace.
[[nodiscard]] std::vector<ExivReader::XMPData> xmpPropertiesOf(const CliExifMetadata& metadata);

}  // namespace exiv2_wp::internal
