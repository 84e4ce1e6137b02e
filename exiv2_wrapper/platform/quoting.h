#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace exiv2_wp::internal {

/// Quotes one argument so that the Windows C runtime splits it off a command line as it was: text
/// without blank, TAB, LF, VT and double quote stays as it is, an empty argument becomes "".
[[nodiscard]] std::wstring quoteArgument(const std::wstring& arg);

/// The command line of `tool` with `arguments`, each quoted, one blank between them.
[[nodiscard]] std::wstring buildCommandLine(const std::wstring& tool,
                                            std::span<const std::wstring> arguments);

/// How long a command line gets at most, with room to spare: in UTF-16 units where Windows allows
/// 32,767, in bytes elsewhere.
template <typename Character>
inline constexpr std::size_t kLongestCommandLine = sizeof(Character) == 1 ? 100'000 : 30'000;

/// What an argument takes of it: quoted, with the blank before it.
[[nodiscard]] std::size_t commandLineRoom(const std::wstring& argument);
/// As it is, with the zero behind it.
[[nodiscard]] std::size_t commandLineRoom(const std::string& argument);

}  // namespace exiv2_wp::internal
