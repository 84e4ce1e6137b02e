#pragma once

#include <string>
#include <vector>

namespace test_support {

/// Splits a command line as the Windows C runtime does before main, the program's name included:
/// the counterpart of quoting, for every platform.
std::vector<std::wstring> splitCommandLine(const std::wstring& line);

}  // namespace test_support
