#include "photoinfo/show/shown_values.h"

#include <cmath>

#include "photoinfo/show/text.h"

namespace photoinfo {

std::string showExposureTime(double seconds) {
    constexpr double kLongestFraction = 0.25;
    const double reciprocal = 1.0 / seconds;
    if (seconds > 0.0 && seconds <= kLongestFraction && std::isfinite(reciprocal)) {
        return "1/" + decimal(std::round(reciprocal)) + " s";
    }
    return decimal(seconds) + " s";
}

std::string showMillimetres(double length) {
    return decimal(length) + " mm";
}

std::string showMetres(double length) {
    return decimal(length) + " m";
}

std::string showFNumber(double number) {
    return "f/" + decimal(number);
}

std::string showBias(double bias) {
    return (bias > 0.0 ? "+" : "") + decimal(bias) + " EV";
}

std::string showRating(double rating) {
    return rating == -1.0 ? "rejected" : decimal(rating);
}

std::string showWhole(std::int32_t number) {
    return std::to_string(number);
}

}  // namespace photoinfo
