// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

/// All that the tool asks of the operating system.
namespace exiv2_tool {

/// What file names are made of: any bytes, or UTF-16 on Windows.
using NativeChar = std::filesystem::path::value_type;

/// An argument of the command line.
struct Argument {
    const NativeChar* native = nullptr;  ///< as it was given; ends in 0
    std::string text;                    ///< the same bytes, or UTF-8 on Windows
};

/// A file's bytes, seen in the file itself. Others may meanwhile read, write, rename and delete it;
/// should somebody make it shorter, reading behind its new end kills the process.
class FileView {
public:
    /// Throws a std::runtime_error when `name` isn't that of a regular file with at least a byte,
    /// or the file can't be read. Never waits for the other end of a pipe, and leaves the time of
    /// the last reading as it was where the system allows that.
    explicit FileView(const NativeChar* name);
    FileView(const FileView&) = delete;
    FileView& operator=(const FileView&) = delete;
    ~FileView();

    [[nodiscard]] std::span<const std::uint8_t> bytes() const { return bytes_; }

private:
    std::span<const std::uint8_t> bytes_;
};

/// How writing to standard output went.
enum class Written {
    whole,
    unwanted,  ///< its reader went away
    failed,
};

/// Writes all the bytes to standard output, as they are, past every buffer.
[[nodiscard]] Written writeOutput(std::string_view bytes);

/// Writes to standard error. Nobody can be told when that fails.
void writeError(std::string_view text);

}  // namespace exiv2_tool
