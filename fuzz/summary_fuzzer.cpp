#include <stdexcept>

#include "exiv2_wrapper/model/summary_parser.h"
#include "fuzz/checks.h"
#include "model/literal_parsers.h"

namespace {

template <typename Parser>
bool raises(const Parser& parse, const std::string& output,
            exiv2_wp::internal::CliExifMetadata& record) {
    try {
        fuzz::require(parse(output, record), "the summary parser never fails");
        return false;
    } catch (const std::out_of_range&) {
        return true;
    }
}

}  // namespace

// The input is the tool's summary.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string output = fuzz::textOf(data, size);
    exiv2_wp::internal::CliExifMetadata fast;
    exiv2_wp::internal::CliExifMetadata literal;
    const bool raised = raises(exiv2_wp::internal::parseSummaryOutput, output, fast);
    fuzz::require(raised == raises(test_support::literalParseSummaryOutput, output, literal),
                  "both versions raise for the same outputs");
    fuzz::require(fuzz::isSame(fast, literal), "both versions read the same record");
    return 0;
}
