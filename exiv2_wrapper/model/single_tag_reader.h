#pragma once

#include <filesystem>
#include <string>

namespace exiv2_wp::internal {

/// Runs the tool for one tag and takes the value out of what it prints: the output without `key` in
/// front of it, where it begins with that, and without white space at both ends. Any flags that
/// begin with "k" print the key; with others the whole output is the value.
/// `key` is a full key (UTF-8, zero-terminated, never null), `printFlags` the letters behind
/// --Print. True when `value` holds text. A failed or an empty run is logged and leaves `value` as
/// it was; an output of nothing but the key gives false with an empty `value`, unlogged.
/// Nothing is cached. Any thread may call, any number at once. Raises std::range_error for a key or
/// flags that are no valid UTF-8.
[[nodiscard]] bool readCliTagValueByPrintFlags(const std::filesystem::path& file, const char* key,
                                               const std::string& printFlags, std::string& value);

}  // namespace exiv2_wp::internal
