// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>

#include "exiv2/libexiv2.h"

namespace exiv2_tool {

/// Appends the value as libexiv2 writes it to a stream. The usual kinds are written without one.
void appendValue(std::string& text, const Exiv2::Value& value);

/// Appends a whole number.
void appendNumber(std::string& text, std::int64_t number);

}  // namespace exiv2_tool
