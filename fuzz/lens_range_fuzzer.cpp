#include "exiv2_wrapper/api/lens_range.h"

#include "api/literal_patterns.h"
#include "fuzz/checks.h"

// The input is a lens model.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string model = fuzz::textOf(data, size);
    const auto literal = test_support::literalLensRange(model);
    const auto range = exiv2_wp::internal::findLensRange(model);
    fuzz::require(range.has_value() == literal.has_value(),
                  "the pattern matches where a range is found");
    if (range) {
        fuzz::require(literal->first == range->shortest, "the first group is the short end");
        fuzz::require(literal->second == range->longest, "the second group is the long end");
    }
    return 0;
}
