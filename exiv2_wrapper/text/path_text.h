#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

/// Paths as text, and text as the platform takes it. path_text_win32.cpp and path_text_posix.cpp
/// fulfil it, function by function in this order. Any thread may call.
namespace exiv2_wp::internal {

/// Text as the platform's own path type holds it: UTF-16 on Windows, bytes elsewhere. Tool
/// arguments travel in this form, so that any file name reaches the tool as the file system has it.
using NativeString = std::filesystem::path::string_type;

/// UTF-8 to wide text. Returns the number of wide characters that the text has, written to `wide`
/// when that is not empty (it must then be large enough); 0 or less when the platform refuses.
/// Malformed bytes become U+FFFD.
[[nodiscard]] int widenUtf8(std::string_view utf8, std::span<wchar_t> wide);

/// The path in narrow form, as log lines show it. On Windows UTF-8 when the C locale's code page
/// is UTF-8, otherwise the code page of the file functions (ANSI or OEM), with a substitute for
/// what that page lacks, never a look-alike; the standard library's own conversion differs between
/// compilers and may throw. On POSIX the path's bytes.
[[nodiscard]] std::string narrowPath(const std::filesystem::path& path);

/// The path that a narrow text stands for, read as narrowPath writes it. Raises std::system_error
/// for text that isn't valid in that code page. On POSIX the bytes, whatever they are.
[[nodiscard]] std::filesystem::path pathFromNarrow(std::string_view narrow);

/// The path in wide form. On POSIX malformed bytes become U+FFFD.
[[nodiscard]] std::wstring widePath(const std::filesystem::path& path);

/// The path as UTF-8, different for different paths. On Windows a lone surrogate becomes the three
/// bytes that it would have as a code point. On POSIX the path's bytes.
[[nodiscard]] std::string utf8Path(const std::filesystem::path& path);

/// The path as UTF-8 by the host's own conversion, for ExifTool. On POSIX the path's bytes.
[[nodiscard]] std::string hostUtf8Path(const std::filesystem::path& path);

}  // namespace exiv2_wp::internal
