#pragma once

#include <string>

#include "exiv2_wrapper/exiv2_wrapper.h"

namespace test_support {

/// The summary that a print-out of `exiv2 -PXEkycv` should lead to, read here in the plainest way
/// and with nothing of the library.
exiv2_wp::SExivMetadataInfo readIndependently(const std::string& printAll);

}  // namespace test_support
