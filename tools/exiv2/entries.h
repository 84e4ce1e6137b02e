// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>
#include <string_view>

#include "exiv2/libexiv2.h"

/// What the stock exiv2 prints about a photo's entries, byte for byte, save what is said here.
namespace exiv2_tool {

/// Appends all Exif and XMP entries, a line each: key, type, number of elements, value. Maker-note
/// blobs (Exif.Photo.MakerNote, Exif.Image.MakerNote), up to megabytes as text, are left out.
void printAll(std::string& output, const Exiv2::Image& image);

/// Appends the key and the interpreted value of each entry with this key, a line each. Throws a
/// std::exception when there is none.
void printInterpreted(std::string& output, const Exiv2::Image& image, std::string_view key);

/// Appends the key, a blank and the bytes of the value as hexadecimal numbers, parted by blanks, on
/// one line, in the byte order of the file; of several entries with this key the first. The stock
/// tool prints offsets and text beside them. Throws a std::exception when there is none.
void printBytes(std::string& output, const Exiv2::Image& image, std::string_view key);

}  // namespace exiv2_tool
