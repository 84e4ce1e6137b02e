#pragma once

#include <string>

#if defined(_WIN32)
#if defined(VESK_COMMON_BUILDING)
#define VESK_COMMON_API __declspec(dllexport)
#else
#define VESK_COMMON_API __declspec(dllimport)
#endif
#else
#define VESK_COMMON_API __attribute__((visibility("default")))
#endif

/// Stand-in for the host application's utility library: the part of it that exiv2_wrapper uses.
namespace vesk {

/// UTF-8 to wide text (UTF-16 on Windows, UTF-32 elsewhere). Malformed bytes become U+FFFD.
VESK_COMMON_API std::wstring s2ws(const std::string& utf8);

/// Wide text to UTF-8. Lone surrogates become U+FFFD.
VESK_COMMON_API std::string ws2s(const std::wstring& wide);

}  // namespace vesk
