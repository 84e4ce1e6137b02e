#pragma once

#include <string>

/// The editor's utilities, as far as exiv2_wrapper uses them.
namespace vesk {

/// UTF-8 to wide text and back.
std::wstring s2ws(const std::string& utf8);
std::string ws2s(const std::wstring& wide);

}  // namespace vesk
