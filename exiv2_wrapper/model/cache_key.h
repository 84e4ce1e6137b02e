#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "exiv2_wrapper/text/path_text.h"

namespace exiv2_wp::internal {

/// The key of a full path that is ASCII and normal as it stands, as most are; no value for any
/// other. Every question asks for a key, and taking a path to pieces costs more than the rest of an
/// answer. Where it isn't sure, as of names that begin with a dot, it leaves the path alone.
[[nodiscard]] std::optional<std::string> keyOfPlainPath(const NativeString& path);

/// The cache's key for a file: its absolute, lexically normal path as UTF-8, with A to Z in lower
/// case. Two spellings of one path share a key, and so do two files whose names differ only in
/// ASCII letter case, on every platform. A path that can't be made absolute is taken as it is.
[[nodiscard]] std::string makeCacheKey(const std::filesystem::path& file);

}  // namespace exiv2_wp::internal
