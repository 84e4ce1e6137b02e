#pragma once

/// EXIV2_WRAPPER_SANITIZED is defined where a sanitizer's runtime makes allocations and system
/// calls of its own. GCC and Clang say so in ways of their own.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define EXIV2_WRAPPER_SANITIZED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define EXIV2_WRAPPER_SANITIZED
#endif
#endif
