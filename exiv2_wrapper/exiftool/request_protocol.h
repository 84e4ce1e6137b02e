#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "exiv2_wrapper/exiftool/tool_channel.h"

/// How requests and answers look on the way to and from the tool. UTF-8 throughout.
namespace exiftool::internal {

/// Ends the tool when it reads it.
inline constexpr std::string_view kQuitRequest = "-stay_open\nfalse\n";

/// One request as the tool reads it: file names are declared to be UTF-8, then each line with a
/// line feed behind it (a line may hold line feeds of its own), then the word that executes it.
[[nodiscard]] std::string frameRequest(const std::vector<std::string>& lines);

/// Reads one answer: up to the end of the chunk in which "{ready}" is complete for the first time,
/// or to the end of the channel. A chunk is at most 511 bytes and is cut off at a zero byte in it.
/// What the tool writes behind that chunk stays in the channel, for the next answer: a tool that
/// prints the marker inside a value ends the read early.
/// Exhausted memory raises std::bad_alloc; the answer has been read to its end then.
[[nodiscard]] std::string readAnswer(ToolChannel& channel);

/// Takes every carriage return out, and a final " {ready}" with its blank. A marker that stands on
/// a line of its own, as the tool prints it, stays; the readers skip that line.
void trimAnswer(std::string& answer);

}  // namespace exiftool::internal
