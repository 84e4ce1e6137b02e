#pragma once

#include <string_view>

namespace exiv2_wp::internal {

/// The namespace URI of an XMP prefix as exiv2 prints it, letter case included; empty for a prefix
/// that isn't known.
[[nodiscard]] std::string_view xmpNamespaceOf(std::string_view prefix);

}  // namespace exiv2_wp::internal
