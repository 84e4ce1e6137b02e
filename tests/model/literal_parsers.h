#pragma once

#include <string>

#include "exiv2_wrapper/model/cli_exif_metadata.h"

/// Slow twins of the library's parsers: step by step, with a stream a line, and nothing shared with
/// them but the record. The fast ones have to give the same.
namespace test_support {

bool literalParsePrintAllOutput(const std::string& output,
                                exiv2_wp::internal::CliExifMetadata& record);

/// Raises std::out_of_range where the library does.
bool literalParseSummaryOutput(const std::string& output,
                               exiv2_wp::internal::CliExifMetadata& record);

}  // namespace test_support
