#pragma once

#include <string>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/model/cli_exif_metadata.h"

namespace fuzz {

struct LiteralSummary {
    exiv2_wp::SExivMetadataInfo info;
    std::vector<std::string> lines;  ///< what is logged, in order
};

/// A slow second version of the metadata summary, step by step.
[[nodiscard]] LiteralSummary literalSummarize(const exiv2_wp::internal::CliExifMetadata& metadata);

}  // namespace fuzz
