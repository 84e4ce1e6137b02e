#pragma once

#include <string>

#include "exiv2_wrapper/exiv2_wrapper.h"

namespace test_support {

/// The library's records as text, in the order of their fields (fields.h).
std::string toText(const exiv2_wp::SExivMetadataInfo& info);
std::string toText(const exiv2_wp::SLensInfo& lens);
std::string toText(const exiv2_wp::exivBatchValue& values);

}  // namespace test_support
