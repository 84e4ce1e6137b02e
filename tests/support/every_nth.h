#pragma once

#include "support/sanitized.h"

/// Of cases that differ in nothing but their data, a test takes every n-th where each takes long.
/// The native tests take all.
namespace test_support {

/// For what computes: slow under a sanitizer, where the fuzzers make such inputs by the million.
#ifdef EXIV2_WRAPPER_SANITIZED
inline constexpr int kEveryNthInput = 3;
#else
inline constexpr int kEveryNthInput = 1;
#endif

/// For what runs programs: slow on Windows, too.
#ifdef _WIN32
inline constexpr int kEveryNthRun = 3;
#else
inline constexpr int kEveryNthRun = kEveryNthInput;
#endif

}  // namespace test_support
