#pragma once

#include <filesystem>
#include <string>

#include "exiv2_wrapper/exiv2_wrapper.h"

namespace exiftool::internal {

/// The request that copies the metadata of `source` into `destination` and sets the values of the
/// export. Asks the tool for the size of the maker notes first when the destination is a JPEG.
[[nodiscard]] std::string makeCopyRequest(const std::filesystem::path& source,
                                          const std::filesystem::path& destination,
                                          const ExportMetadataParameters& parameters);

}  // namespace exiftool::internal
