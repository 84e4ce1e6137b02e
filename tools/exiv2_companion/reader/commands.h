// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace exiv2_companion {

/// Writes the preview that suits `wanted` best (preview_choice.h; pixels on the longer side) to
/// standard output: "width height 0 0 0 0", a line feed, the preview's bytes. A preview that holds
/// no image is passed over. Throws a std::exception, before anything is written, when there is no
/// preview or the file can't be read.
void writePreview(const std::filesystem::path& file, std::uint32_t wanted);

/// Writes the line "Lens name       : TEXT", aligned as the lines of "exiv2 pr" are, when libexiv2
/// knows the lens. Throws a std::exception when the file can't be read.
void writeLensLine(const std::filesystem::path& file);

/// The name of a lens from what libexiv2 prints for it: without control characters and outer
/// blanks; empty when it tells no lens, such as "n/a", "Unknown Lens (255)" or "(183)".
[[nodiscard]] std::string knownLens(std::string_view printed);

}  // namespace exiv2_companion
