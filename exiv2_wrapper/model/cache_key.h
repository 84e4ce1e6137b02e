#pragma once

#include <filesystem>
#include <string>

namespace exiv2_wp::internal {

/// The cache's key for a file: its absolute, lexically normal path as UTF-8, with A to Z in lower
/// case. Two spellings of one path share a key, and so do two files whose names differ only in
/// ASCII letter case, on every platform. A path that can't be made absolute is taken as it is.
[[nodiscard]] std::string makeCacheKey(const std::filesystem::path& file);

}  // namespace exiv2_wp::internal
