#pragma once

#include <span>
#include <string>

namespace exiv2_wp::internal {

/// Quotes one argument so that the Windows C runtime splits it off a command line as it was: text
/// without blank, TAB, LF, VT and double quote stays as it is, an empty argument becomes "".
[[nodiscard]] std::wstring quoteArgument(const std::wstring& arg);

/// The command line of `tool` with `arguments`, each quoted, one blank between them.
[[nodiscard]] std::wstring buildCommandLine(const std::wstring& tool,
                                            std::span<const std::wstring> arguments);

}  // namespace exiv2_wp::internal
