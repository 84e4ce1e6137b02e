#pragma once

#include <cstdint>
#include <string>

/// Known values as photographers write them.
namespace photoinfo {

/// "1/250 s", from a quarter of a second down; "1.5 s".
[[nodiscard]] std::string showExposureTime(double seconds);
[[nodiscard]] std::string showMillimetres(double length);  ///< "35 mm"
[[nodiscard]] std::string showMetres(double length);       ///< "1.2 m"
[[nodiscard]] std::string showFNumber(double number);      ///< "f/2.8"
[[nodiscard]] std::string showBias(double bias);           ///< "+0.33 EV"
[[nodiscard]] std::string showRating(double rating);       ///< "3", "rejected"
[[nodiscard]] std::string showWhole(std::int32_t number);

}  // namespace photoinfo
