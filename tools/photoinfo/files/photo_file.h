#pragma once

#include <filesystem>
#include <string>

namespace photoinfo {

/// The path of the file that an argument (platform.h) names, in a form that no tool takes for
/// anything but a file: "./-v.jpg" for "-v.jpg".
[[nodiscard]] std::filesystem::path filePathOf(const std::string& argument);

/// Why the file can't be read, for the user; empty when it can. The library doesn't tell such a
/// file from one without metadata.
[[nodiscard]] std::string readingError(const std::filesystem::path& file);

/// Raises a `Failure` with that reason.
void requireReadable(const std::string& argument);

/// A message about a file as it stands behind the program's name: "file: message".
[[nodiscard]] std::string aboutFile(const std::string& argument, const std::string& message);

}  // namespace photoinfo
