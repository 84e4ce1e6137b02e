// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace exiv2_tool {

/// The step of the logarithmic scale in which the summary's reader takes a distance,
/// 0.01 m * 10^(step / 0.4), for a distance as libexiv2 prints it ("2.55 m", "Infinity"). The
/// digits are all that a float holds, which is what the reader makes of them: the metres come out
/// to six significant digits. Empty for a text that is no distance, and for 0, which means unknown.
[[nodiscard]] std::string distanceStep(std::string_view printed);

}  // namespace exiv2_tool
