#pragma once

#include <string>

#include "exiv2_wrapper/exiv2_wrapper.h"

namespace test_support {

/// A summary as text, in the order of its fields (fields.h).
std::string toText(const exiv2_wp::SExivMetadataInfo& info);

}  // namespace test_support
