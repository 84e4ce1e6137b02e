#include "exiv2_wrapper/model/print_all_parser.h"
#include "fuzz/checks.h"
#include "model/literal_parsers.h"

// The input is what the tool prints for all tags.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string output = fuzz::textOf(data, size);
    exiv2_wp::internal::CliExifMetadata fast;
    exiv2_wp::internal::CliExifMetadata literal;
    const bool result = exiv2_wp::internal::parsePrintAllOutput(output, fast);
    fuzz::require(result == test_support::literalParsePrintAllOutput(output, literal),
                  "both versions say alike whether there are entries");
    fuzz::require(fuzz::isSame(fast, literal), "both versions read the same record");
    return 0;
}
