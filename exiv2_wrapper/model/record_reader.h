#pragma once

#include <filesystem>
#include <string>

#include "exiv2_wrapper/model/record_table.h"
#include "exiv2_wrapper/runner/read_call.h"

namespace exiv2_wp::internal {

/// The record of `file`, by two tool runs one after the other; the second isn't made for a file
/// that the first shows to have no usable metadata. Null for such a file, which is logged then.
/// `key` is the file's cache key, which the record carries.
/// Raises std::out_of_range for a summary with a line that ends in its colon.
[[nodiscard]] Record readRecord(const std::filesystem::path& file, const std::string& key);

/// The same of what a tool has printed about the file already.
[[nodiscard]] Record makeRecord(const std::filesystem::path& file, const std::string& key,
                                const FilePart& part);

}  // namespace exiv2_wp::internal
