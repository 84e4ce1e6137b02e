#pragma once

#include <string>
#include <vector>

namespace benchmarks {

/// A print-out of `exiv2 -PXEkycv` like a camera's, with so many entries.
std::string makePrintOut(int tags);

/// The recorded print-outs of real photos: the files ending in `suffix` in the folder that the
/// environment variable EXIV2_WRAPPER_PRINTOUTS names (scripts/record_printouts.sh makes them).
/// Without it, `fallback` alone.
std::vector<std::string> recordedPrintOuts(const std::string& suffix, const std::string& fallback);

}  // namespace benchmarks
