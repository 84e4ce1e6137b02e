// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <exiv2/exiv2.hpp>
#include <filesystem>

namespace exiv2_companion {

/// What libexiv2 holds an open image by: its type differs between libexiv2's versions.
using Photo = decltype(Exiv2::ImageFactory::open(std::string()));

/// Opens a regular file and reads its metadata. The file is opened for reading only, and its name
/// is never taken for a URL or standard input. Throws a std::exception when that fails.
[[nodiscard]] Photo openPhoto(const std::filesystem::path& file);

}  // namespace exiv2_companion
