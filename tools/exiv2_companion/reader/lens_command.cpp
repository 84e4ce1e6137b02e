// SPDX-License-Identifier: GPL-2.0-or-later
#include <algorithm>
#include <array>
#include <exiv2/exiv2.hpp>

#include "reader/commands.h"
#include "reader/output.h"
#include "reader/photo.h"

namespace exiv2_companion {
namespace {

// What libexiv2 prints, in lower case, where the camera or its tables know no lens.
constexpr std::array<std::string_view, 3> kNoLens = {"n/a", "none", "no lens"};
constexpr std::string_view kUnknown = "unknown";

bool isControl(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte < 0x20 || byte == 0x7F;
}

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
    return lens == tags.end() ? std::string() : exiv2_companion::knownLens(lens->print(&tags));
}

}  // namespace

std::string knownLens(std::string_view printed) {
    std::string name(printed);
    std::replace_if(name.begin(), name.end(), isControl, ' ');
    name.erase(0, name.find_first_not_of(' '));
    name.erase(name.find_last_not_of(' ') + 1);

    std::string lower = name;
    std::transform(lower.begin(), lower.end(), lower.begin(), lowerCase);
    const bool isNoLens = lower.starts_with(kUnknown) ||
                          std::find(kNoLens.begin(), kNoLens.end(), lower) != kNoLens.end() ||
                          std::none_of(lower.begin(), lower.end(), isLetter);
    return isNoLens ? std::string() : name;
}

void writeLensLine(const std::filesystem::path& file) {
    const Photo photo = openPhoto(file);
    const Exiv2::ExifData& tags = photo->exifData();
    std::string name = knownLens(tags, Exiv2::lensName(tags));
    if (name.empty()) {
        // libexiv2 takes the first of its tags that is there, whether that tells a lens or not.
        name = knownLens(tags, tags.findKey(Exiv2::ExifKey("Exif.Photo.LensModel")));
    }
    if (!name.empty()) {
        writeOutput("Lens name       : " + name + '\n');
    }
}

}  // namespace exiv2_companion
