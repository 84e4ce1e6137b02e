#include <cmath>

#include "exiv2_wrapper/text/text.h"
#include "fuzz/checks.h"
#include "text/literal_text.h"

namespace {

// The signs of 0 and of what is no number count too.
template <typename Real>
bool isSame(std::optional<Real> a, std::optional<Real> b) {
    return a.has_value() == b.has_value() &&
           (!a || (std::signbit(*a) == std::signbit(*b) &&
                   (*a == *b || (std::isnan(*a) && std::isnan(*b)))));
}

}  // namespace

// The input is a value's text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace exiv2_wp::internal;
    const std::string text = fuzz::textOf(data, size);
    fuzz::require(parseInteger(text) == test_support::literalInteger(text),
                  "both read the same integer");
    fuzz::require(isSame(parseDouble(text), test_support::literalDouble(text)),
                  "and the same double");
    fuzz::require(isSame(parseFloat(text), test_support::literalFloat(text)), "and the same float");
    fuzz::require(trimmed(text) == test_support::literalTrim(text), "both trim alike");
    fuzz::require(lowerCased(text) == test_support::literalLower(text), "both lower-case alike");
    return 0;
}
