// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>

#include "exiv2/libexiv2.h"

namespace exiv2_tool {

/// Appends a line for each of these that is known, laid out as the stock tool's summary: lens name,
/// focal length, and subject distance as a step (distance_step.h).
void printSummary(std::string& output, const Exiv2::Image& image);

}  // namespace exiv2_tool
