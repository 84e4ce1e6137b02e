#pragma once

#include <map>
#include <string_view>

namespace exiv2_wp::internal {

/// The listed models in the byte-wise order of their names, each with the factor of its first row.
/// Built anew by each call.
[[nodiscard]] std::map<std::string_view, float> cropFactorsByModel();

}  // namespace exiv2_wp::internal
