// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/summary.h"

#include <string_view>

#include "exiv2/distance_step.h"
#include "exiv2/lens_name.h"
#include "exiv2/plain_line.h"

namespace exiv2_tool {
namespace {

using FindTag = Exiv2::ExifData::const_iterator (*)(const Exiv2::ExifData&);

std::string interpreted(const Exiv2::ExifData& tags, FindTag findTag) {
    const auto tag = findTag(tags);
    return tag == tags.end() ? std::string() : plainLine(tag->print(&tags));
}

// "(0/0)" and the like tell no length.
std::string focalLengthText(const Exiv2::ExifData& tags) {
    std::string text = interpreted(tags, Exiv2::focalLength);
    const bool isNumber = !text.empty() && text.front() >= '0' && text.front() <= '9';
    return isNumber ? text : std::string();
}

void appendLine(std::string& output, std::string_view label, const std::string& value) {
    if (!value.empty()) {
        output += label;
        output += value;
        output += '\n';
    }
}

}  // namespace

void printSummary(std::string& output, const Exiv2::Image& image) {
    const Exiv2::ExifData& tags = image.exifData();
    appendLine(output, "Lens name       : ", lensText(tags));
    appendLine(output, "Focal length    : ", focalLengthText(tags));
    appendLine(output,
               "Subject distance: ", distanceStep(interpreted(tags, Exiv2::subjectDistance)));
}

}  // namespace exiv2_tool
