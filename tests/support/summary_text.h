#pragma once

#include <string>

#include "exiv2_wrapper/exiv2_wrapper.h"

namespace test_support {

/// A summary as text, "name: value" a line in the order of its fields: equal exactly for equal
/// ones. Floats have nine digits, texts are quoted, with escapes for bytes that don't print.
std::string toText(const exiv2_wp::SExivMetadataInfo& info);

}  // namespace test_support
