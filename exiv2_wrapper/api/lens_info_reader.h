#pragma once

#include <functional>
#include <string>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/model/cli_exif_metadata.h"

namespace exiv2_wp::internal {

/// The 35 mm equivalent of a focal length. A negative crop factor means that the camera isn't known
/// and counts as 1; a focal length that is unknown, and so negative, is multiplied all the same.
[[nodiscard]] float equivalentFocalLength(float focalLength, float cropFactor);

/// The lens values of a record. A negative 35 mm focal length is replaced by the equivalent of the
/// focal length with the crop factor of `make` and `model`.
[[nodiscard]] SLensInfo lensInfoOf(const CliExifMetadata& metadata, const std::string& make,
                                   const std::string& model);

/// The focus and sensor values of a record. Calls `onTag` for each tag, before looking at it.
[[nodiscard]] SMetadataExiv focusInfoOf(const CliExifMetadata& metadata,
                                        const std::function<void()>& onTag);

}  // namespace exiv2_wp::internal
