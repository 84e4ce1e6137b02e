#pragma once

#include <filesystem>

namespace product {

/// The code page that narrow paths are in: the system's ANSI code page on Windows, UTF-8's
/// elsewhere.
unsigned narrowCodePage();

constexpr unsigned kUtf8CodePage = 65001;

/// An absolute path in the form that Windows takes literally and at any length (\\?\C:\...); the
/// path itself elsewhere.
std::filesystem::path literalPath(const std::filesystem::path& path);

}  // namespace product
