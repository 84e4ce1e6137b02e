#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <span>
#include <string_view>

/// The call by which one run of the tool answers for many files: exiv2.exe --read FILE...
///
/// For each file in order the tool prints a line of five decimal numbers, parted by one blank each:
/// the file's position, counted from 0; the exit code and the size of what a run with -PXEkycv -q
/// would print; the exit code and the size of what a run with pr would print. Both outputs follow,
/// byte for byte. A file's part is written out before the next file is opened. Not every tool knows
/// the call; one that doesn't is found out by its first run and not asked again.
namespace exiv2_wp::internal {

/// What a tool run printed, and whether it ended with exit code 0.
struct RunAnswer {
    bool isSuccess = false;
    std::string_view text = {};
};

/// What the call prints about one file.
struct FilePart {
    RunAnswer printAll;
    RunAnswer summary;
};

enum class PartState { whole, unfinished, malformed };

/// Takes the part of the file at `position` off the front of `output`; the texts point into it.
/// `output` stays as it is where the part isn't whole: unfinished is what more bytes can complete.
[[nodiscard]] PartState takePart(std::string_view& output, std::uint64_t position, FilePart& part);

struct ReadCallResult {
    std::size_t asked = 0;     ///< files that the tool was called with
    std::size_t answered = 0;  ///< those of them whose parts came
};

/// Calls the tool with the first of `files`, as many as a command line has room for, and hands out
/// each part as soon as it is there. The texts live only during that call. The tool may stop early,
/// at a photo that brings it down. `asked` is 0 when the first file has to be read by runs of its
/// own: the tool doesn't know the call, another thread is just finding that out, or the file's name
/// can't be in the call. There are files, and a tool is known. Raises what `onPart` raises.
[[nodiscard]] ReadCallResult runReadCall(std::span<const std::filesystem::path* const> files,
                                         const std::function<void(const FilePart&)>& onPart);

/// True once the tool has been found not to know the call.
[[nodiscard]] bool isReadCallRefused();

/// Another tool is in use from now on.
void forgetReadCall();

}  // namespace exiv2_wp::internal
