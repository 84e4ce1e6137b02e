#pragma once

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "photoinfo/show/json.h"
#include "photoinfo/show/table.h"

namespace photoinfo {

/// The summary for people. Unknown values are called so.
[[nodiscard]] Table summaryTable(const exiv2_wp::SExivMetadataInfo& info);

/// Every field of the record under its name, save the reserved one; null when it is unknown.
[[nodiscard]] Json summaryJson(const exiv2_wp::SExivMetadataInfo& info);

}  // namespace photoinfo
