#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "exiv2_wrapper/model/number_list.h"

namespace exiv2_wp::internal {

/// One printed entry of a file's metadata. Its texts are the record's. Holds rationals or integers,
/// never both; either may be empty.
struct CliExifTag {
    std::string_view key;    ///< as printed, for example Exif.Photo.FNumber
    std::string_view type;   ///< the Exif type's name in lower case, for example rational
    std::string_view value;  ///< the printed value without white space at its ends; UTF-8 bytes
    RationalList rationals;  ///< of types (s)rational only
    IntegerList integers;    ///< of every other type
    std::int32_t count = 0;  ///< the number of values as printed; 0 when that is no whole number
                             ///< from 1 to 2147483647
};

using TagTable = std::unordered_map<std::string_view, CliExifTag>;

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
    std::vector<std::shared_ptr<const std::string>> texts;  ///< what the tags' texts are parts of;
                                                            ///< copies of the record share them

    /// The tag of a key, or null.
    [[nodiscard]] const CliExifTag* find(std::string_view key) const {
        const auto found = tags.find(key);
        return found == tags.end() ? nullptr : &found->second;
    }
};

}  // namespace exiv2_wp::internal
