#pragma once

#include <string_view>

#include "exiv2_wrapper/text/path_text.h"

namespace exiv2_wp::internal {

/// UTF-8 text as a tool argument: UTF-16 on Windows, the bytes themselves elsewhere. Unlike
/// `toWide`, it replaces nothing: raises std::range_error for text that isn't well-formed.
[[nodiscard]] NativeString nativeText(std::string_view utf8);

}  // namespace exiv2_wp::internal
