#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

/// What differs between platforms; main_posix.cpp and main_win32.cpp fulfil it and hold the entry
/// point, which hands the command line over in one form. An argument is UTF-8 on Windows, and on
/// POSIX the bytes that the user gave, so that any file name gets through.
namespace photoinfo::platform {

/// The path that an argument names.
[[nodiscard]] std::filesystem::path pathOf(const std::string& argument);

/// The argument that names the path, as users are shown it.
[[nodiscard]] std::string argumentOf(const std::filesystem::path& path);

/// The path in the narrow form that the library's readers of single tags take; none when there is
/// no such form. On POSIX its bytes.
[[nodiscard]] std::optional<std::string> narrowPathOf(const std::filesystem::path& path);

/// The folder that holds this program; empty when the system doesn't say.
[[nodiscard]] std::filesystem::path programFolder();

/// Sets an environment variable of this process, unless the user has set it.
void setEnvironmentDefault(const char* name, const char* value);

/// Drops what tools that are started from now on write to standard error; they inherit it, and
/// their words about a photo are neither ours nor safe to show. `writeError` isn't affected.
void silenceTools();

/// Writes bytes to standard error as it was when the program started.
void writeError(std::string_view text);

/// How many columns the terminal has that `writeError` writes to; 0 when it is none.
[[nodiscard]] std::size_t errorTerminalColumns();

/// Whether the path is a link, or what serves as one on the platform, whatever it leads to.
[[nodiscard]] bool isLink(const std::filesystem::path& path);

}  // namespace photoinfo::platform
