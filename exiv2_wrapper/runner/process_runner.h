#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "exiv2_wrapper/runner/tool_output.h"
#include "exiv2_wrapper/text/path_text.h"

namespace exiv2_wp::internal {

/// A plain ASCII text, such as an option, as a tool argument.
[[nodiscard]] inline NativeString asciiArgument(std::string_view text) {
    return {text.begin(), text.end()};
}

/// Runs exiv2.exe once with `args` (the program's name not among them) and waits for its end,
/// without a time limit. `output` receives the raw bytes of its standard output, also when the
/// result is false; it stays untouched only when no tool is known, which is also the one failure
/// that is logged. True only for a tool that was started and ended with exit code 0. The tool's
/// standard error is the host's own and isn't captured.
/// Any thread may call, any number at once. Exhausted memory raises std::bad_alloc; the tool is
/// then ended and reaped first.
[[nodiscard]] bool runExiv2Cli(const std::vector<NativeString>& args, ToolOutput& output);

/// True when a tool is known. Otherwise that is logged.
[[nodiscard]] bool isExiv2Known();

/// The same run for one who reads along: `onOutput` is called whenever some of the output has
/// arrived, and may take bytes off its front. When it returns false nothing more is read; a tool
/// that goes on writing then fails. What it raises reaches the caller as exhausted memory does.
/// Returns the exit code; no value when no tool was started.
[[nodiscard]] std::optional<std::uint32_t> followExiv2Cli(const std::vector<NativeString>& args,
                                                          ToolOutput& output,
                                                          const std::function<bool()>& onOutput);

/// The same for a short output that the caller keeps as a text.
[[nodiscard]] bool runExiv2Cli(const std::vector<NativeString>& args, std::string& output);

}  // namespace exiv2_wp::internal
