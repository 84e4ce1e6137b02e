#pragma once

#include <string>

#include "exiv2_wrapper/model/cli_exif_metadata.h"

namespace test_support {

/// A tag or record as text, one field or entry a line, entries sorted: equal exactly for equal
/// ones. Floats are shown in full, so that -0 and values that are no number compare as well.
std::string toText(const exiv2_wp::internal::CliExifTag& tag);
std::string toText(const exiv2_wp::internal::CliExifMetadata& record);

}  // namespace test_support
