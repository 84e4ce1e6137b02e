// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/lens_name.h"

#include <algorithm>
#include <array>

#include "exiv2/plain_line.h"

namespace exiv2_tool {
namespace {

// What libexiv2 prints, in lower case, where the camera or its tables know no lens.
constexpr std::array<std::string_view, 3> kNoLens = {"n/a", "none", "no lens"};
constexpr std::string_view kUnknown = "unknown";

char lowerCase(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

/// Letters of other alphabets are bytes from 0x80 on.
bool isLetter(char character) {
    const char lower = lowerCase(character);
    return (lower >= 'a' && lower <= 'z') || static_cast<unsigned char>(character) >= 0x80;
}

std::string knownLens(const Exiv2::ExifData& tags, Exiv2::ExifData::const_iterator lens) {
    return lens == tags.end() ? std::string() : exiv2_tool::knownLens(lens->print(&tags));
}

}  // namespace

std::string lensText(const Exiv2::ExifData& tags) {
    const std::string name = knownLens(tags, Exiv2::lensName(tags));
    // libexiv2 takes the first of its tags that is there, whether that tells a lens or not.
    return name.empty() ? knownLens(tags, tags.findKey(Exiv2::ExifKey("Exif.Photo.LensModel")))
                        : name;
}

std::string knownLens(std::string_view printed) {
    const std::string name = plainLine(printed);
    std::string lower = name;
    std::transform(lower.begin(), lower.end(), lower.begin(), lowerCase);
    const bool isNoLens = lower.starts_with(kUnknown) ||
                          std::find(kNoLens.begin(), kNoLens.end(), lower) != kNoLens.end() ||
                          std::none_of(lower.begin(), lower.end(), isLetter);
    return isNoLens ? std::string() : name;
}

}  // namespace exiv2_tool
