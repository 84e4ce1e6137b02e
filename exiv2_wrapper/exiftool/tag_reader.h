#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>

namespace exiftool::internal {

/// The tags in what the tool prints with -s2: a line a tag, name, colon, value. A later line with
/// the same name wins. A line without a colon, such as the one with the tool's "{ready}", is logged
/// and skipped.
[[nodiscard]] std::unordered_map<std::string, std::string> parseTagLines(std::string_view answer);

/// The number of bytes of the file's maker notes; 0 when it has none, or the tool doesn't run; -1
/// when the tool warns of the file or the answer can't be used, which is logged. Raises nothing.
[[nodiscard]] int getMakernotesSize(const std::filesystem::path& file);

}  // namespace exiftool::internal
