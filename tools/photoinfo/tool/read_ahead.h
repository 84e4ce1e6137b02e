#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

namespace photoinfo {

/// How many photos are read ahead at a time: enough for the start of a tool to weigh little, and so
/// few that nobody waits for the first answer, even by a tool that reads them one by one.
inline constexpr std::size_t kReadAheadPortion = 20;

/// Lets the library read those of the files ahead that can be read at all.
void readAhead(const std::vector<std::filesystem::path>& files);

/// Whether the exiv2.exe at this path knows the call by which one run answers for many files, tried
/// on a photo that it can read.
[[nodiscard]] bool knowsReadCall(const std::filesystem::path& exiv2,
                                 const std::filesystem::path& photo);

}  // namespace photoinfo
