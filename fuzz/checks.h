#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/model/cli_exif_metadata.h"

/// What the fuzzers have in common. Each holds the library to a rule: that it gives what a slow,
/// literal second version gives, or that what it made can be taken apart again.
namespace fuzz {

/// Ends the program, and so makes the fuzzer keep its input, when a rule doesn't hold.
void require(bool holds, const char* rule);

/// Equal, or both no number.
[[nodiscard]] bool isSame(float a, float b);
[[nodiscard]] bool isSame(const exiv2_wp::internal::CliExifMetadata& a,
                          const exiv2_wp::internal::CliExifMetadata& b);
[[nodiscard]] bool isSame(const exiv2_wp::SExivMetadataInfo& a,
                          const exiv2_wp::SExivMetadataInfo& b);

/// Bytes as a text.
[[nodiscard]] std::string textOf(const unsigned char* bytes, std::size_t count);

/// Takes the first line, without its line feed, off the front of `text`.
[[nodiscard]] std::string takeLine(std::string& text);

/// Takes four bytes off the front of `text` as a number, the low byte first; missing ones are 0.
[[nodiscard]] int takeNumber(std::string& text);

/// Receives the texts of the lines that are logged during its life, without signatures and types.
class LogTexts {
public:
    LogTexts();
    LogTexts(const LogTexts&) = delete;
    LogTexts& operator=(const LogTexts&) = delete;
    ~LogTexts();

    [[nodiscard]] const std::vector<std::string>& texts() const { return texts_; }

private:
    std::vector<std::string> texts_;
};

}  // namespace fuzz
