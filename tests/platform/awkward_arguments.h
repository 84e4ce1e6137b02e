#pragma once

#include <string>
#include <vector>

namespace test_support {

/// Arguments of every kind that quoting has to do with.
std::vector<std::wstring> awkwardArguments();

/// Up to eight random arguments made of what quoting has to do with; the same for the same seed.
std::vector<std::wstring> randomArguments(unsigned seed);

}  // namespace test_support
