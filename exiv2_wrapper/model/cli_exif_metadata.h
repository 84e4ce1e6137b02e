#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace exiv2_wp::internal {

/// One printed entry of a file's metadata. Holds rationals or integers, never both; either may be
/// empty.
struct CliExifTag {
    std::string key;    ///< as printed, for example Exif.Photo.FNumber
    std::string type;   ///< the Exif type's name in lower case, for example rational
    std::string value;  ///< the printed value without white space at its ends; UTF-8 bytes
    std::vector<std::pair<std::int64_t, std::int64_t>> rationals;  ///< of types (s)rational only
    std::vector<std::int64_t> integers;                            ///< of every other type
    std::int32_t count = 0;  ///< the number of values as printed; 0 when that is no whole number
                             ///< from 1 to 2147483647
};

/// Lets a table be asked with a text that is no std::string, without making one. It isn't noexcept,
/// on purpose: libstdc++ then keeps each entry's hash beside the entry, where it would otherwise
/// compute it anew for every neighbour that a search passes and for all when the table grows.
struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
        return std::hash<std::string_view>()(text);
    }
};

using TagTable = std::unordered_map<std::string, CliExifTag, TextHash, std::equal_to<>>;

/// The parsed metadata of one file. Built by the cache, read-only once published.
struct CliExifMetadata {
    std::string fileKey;            ///< the file's cache key
    TagTable tags;                  ///< by key, exact and case-sensitive
    std::string lensName;           ///< empty: unknown
    float focalLength = -1.0F;      ///< mm; -1: unknown
    float focalLength35mm = -1.0F;  ///< mm; -1: unknown, as always so far: no parser fills it
    float subjectDistance = -1.0F;  ///< -1: unknown
    float fNumber = -1.0F;          ///< -1: unknown
    std::int32_t lensId = -1;       ///< the maker's number for the lens; -1: unknown

    /// The tag of a key, or null.
    [[nodiscard]] const CliExifTag* find(std::string_view key) const {
        const auto found = tags.find(key);
        return found == tags.end() ? nullptr : &found->second;
    }
};

}  // namespace exiv2_wp::internal
