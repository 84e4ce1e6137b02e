#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// What the real tool prints about a photo, read here in the plainest way and with nothing of the
/// library.
namespace test_support {

struct PrintedEntry {
    std::string type;   ///< as printed
    std::string value;  ///< without white space at its ends
    std::vector<std::pair<std::int64_t, std::int64_t>> rationals = {};  ///< of (S)Rational only
    std::vector<std::int64_t> integers = {};                            ///< of every other type
};

/// By key; of two lines with one key the first.
using PrintedEntries = std::map<std::string, PrintedEntry>;

/// The entries in a print-out of `exiv2 -PXEkycv`, all of them.
PrintedEntries readPrintOut(const std::string& printAll);

/// Whether an entry is a maker note as a block of bytes, which the library leaves out.
bool isMakerNoteBlob(const std::string& key, const PrintedEntry& entry);

/// What follows the first colon and the blank behind it in the first line of `exiv2 pr` that begins
/// with `label`; empty without one.
std::string summaryValue(const std::string& summary, const std::string& label);

}  // namespace test_support
