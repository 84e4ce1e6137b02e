#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// The stand-in for exiv2.exe and exiftool.exe: it plays the scenario that lies beside it and
/// records how it was called. tool_directory.h is how tests set it up.
namespace stand_in {

using NativeString = std::filesystem::path::string_type;

/// Plays one call and returns the exit code. `program` is the full path of this program, `name` the
/// one by which its caller named it.
int play(const std::filesystem::path& program, const NativeString& name,
         const std::vector<NativeString>& arguments);

/// What each platform does in its own way (stand_in_tool_posix.cpp, stand_in_tool_win32.cpp).
namespace platform {

/// Writes to standard output (1) or standard error (2); false when nobody reads any more.
bool write(int descriptor, std::string_view bytes);
/// Reads from standard input; 0 at its end.
std::size_t read(char* buffer, std::size_t size);
void closeOutput();
unsigned long processId();
[[noreturn]] void dieBySignal(int signal);

}  // namespace platform

}  // namespace stand_in
