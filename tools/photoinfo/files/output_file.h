#pragma once

#include <filesystem>
#include <span>

namespace photoinfo {

/// Writes a file with these bytes, in place of one that exists: whole, or not at all. False when
/// that isn't possible; a file that existed is then as it was.
[[nodiscard]] bool writeWhole(const std::filesystem::path& file,
                              std::span<const unsigned char> bytes);

}  // namespace photoinfo
