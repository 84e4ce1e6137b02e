#include "exiv2_wrapper/api/image_metadata_summary.h"
#include "exiv2_wrapper/model/print_all_parser.h"
#include "fuzz/checks.h"
#include "fuzz/literal_summary.h"

// The input is what the tool prints for all tags; the exported summary is made of it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    exiv2_wp::internal::CliExifMetadata metadata;
    (void)exiv2_wp::internal::parsePrintAllOutput(fuzz::textOf(data, size), metadata);

    const fuzz::LogTexts log;
    const exiv2_wp::SExivMetadataInfo info = exiv2_wp::internal::summarize(metadata);
    const fuzz::LiteralSummary literal = fuzz::literalSummarize(metadata);
    fuzz::require(fuzz::isSame(info, literal.info), "both versions make the same summary");
    fuzz::require(log.texts() == literal.lines, "both versions log the same lines");
    return 0;
}
