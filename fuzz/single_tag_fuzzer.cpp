#include <stdexcept>

#include "exiv2_wrapper/model/hex_dump.h"
#include "exiv2_wrapper/model/single_tag_reader.h"
#include "fuzz/canned_runner.h"
#include "fuzz/checks.h"
#include "text/literal_text.h"

namespace {

constexpr auto kBefore = "as it was";

struct Encoding {
    unsigned length;
    std::uint32_t first;  // the code points from here on
    std::uint32_t end;    // and below this
};

constexpr Encoding kEncodings[] = {{2, 0x80, 0x800}, {3, 0x800, 0x10000}, {4, 0x10000, 0x110000}};

std::string encode(std::uint32_t codePoint, std::size_t length) {
    constexpr unsigned kFirstByte[] = {0, 0x00, 0xC0, 0xE0, 0xF0};
    std::string bytes;
    for (; length > 1; --length) {
        bytes.insert(bytes.begin(), static_cast<char>(0x80U | (codePoint & 0x3FU)));
        codePoint >>= 6U;
        if (length == 2) {
            bytes.insert(bytes.begin(),
                         static_cast<char>(kFirstByte[bytes.size() + 1] | codePoint));
        }
    }
    return bytes;
}

// By trial: a text is well-formed when at every place some code point's own encoding stands.
bool isWellFormed(std::string text) {
    while (!text.empty()) {
        if (static_cast<unsigned char>(text[0]) < 0x80) {
            text.erase(0, 1);
            continue;
        }
        std::size_t taken = 0;
        for (const auto& [length, first, end] : kEncodings) {
            std::uint32_t codePoint = 0;
            for (std::size_t i = 0; i < length && i < text.size(); ++i) {
                const std::uint32_t byte = static_cast<unsigned char>(text[i]);
                codePoint = i == 0 ? byte & (0x7FU >> length) : codePoint << 6U | (byte & 0x3FU);
            }
            const bool isSurrogate = codePoint >= 0xD800 && codePoint < 0xE000;
            if (codePoint >= first && codePoint < end && !isSurrogate &&
                text.substr(0, length) == encode(codePoint, length)) {
                taken = length;
            }
        }
        if (taken == 0) {
            return false;
        }
        text.erase(0, taken);
    }
    return true;
}

struct Reading {
    bool result = false;
    std::string value = kBefore;
    std::vector<std::string> lines;
};

Reading literalRead(const std::string& key, const std::string& output, bool isRunGood) {
    Reading reading;
    if (!isRunGood) {
        reading.lines = {"Exiv2 failed run --key cli command for photo.jpg"};
        return reading;
    }
    const std::string text = test_support::literalTrim(output);
    if (text.empty()) {
        reading.lines = {"Exiv2 empty output."};
        return reading;
    }
    reading.value = text;
    if (!key.empty() && key.size() <= text.size() && text.substr(0, key.size()) == key) {
        reading.value = text.substr(key.size());
    }
    reading.value = test_support::literalTrim(reading.value);
    reading.result = !reading.value.empty();
    return reading;
}

bool literalDecode(const std::string& text, std::vector<std::uint8_t>& bytes) {
    const std::string kDigits = "0123456789abcdef";
    std::string digits;
    for (const char c : test_support::literalLower(text)) {
        if (kDigits.find(c) != std::string::npos) {
            digits += c;
        }
    }
    bytes.clear();
    if (digits.empty() || digits.size() % 2 != 0) {
        return false;
    }
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(digits.substr(i, 2), nullptr, 16)));
    }
    return true;
}

void checkDump(const std::string& text) {
    std::vector<std::uint8_t> fast = {1};
    std::vector<std::uint8_t> literal;
    const bool result = exiv2_wp::internal::decodeHexDump(text, fast);
    fuzz::require(result == literalDecode(text, literal), "both versions decode the same dumps");
    fuzz::require(fast == literal, "both versions decode the same bytes");
}

}  // namespace

// The input: whether the run succeeds, in the first byte; the key to the first line feed; then what
// the tool prints.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string output = fuzz::textOf(data, size);
    const bool isRunGood = output.empty() || output[0] != 'x';
    output.erase(0, 1);
    const std::string key = fuzz::takeLine(output).c_str();  // to the first zero byte
    fuzz::cannedRunner() = {.result = isRunGood, .output = output};
    checkDump(output);

    const fuzz::LogTexts log;
    std::string value = kBefore;
    bool result = false;
    try {
        result =
            exiv2_wp::internal::readCliTagValueByPrintFlags("photo.jpg", key.c_str(), "kh", value);
    } catch (const std::range_error&) {
        fuzz::require(!isWellFormed(key), "only a malformed key raises");
        return 0;
    }
    fuzz::require(isWellFormed(key), "a malformed key raises");
    const Reading literal = literalRead(key, output, isRunGood);
    fuzz::require(result == literal.result && value == literal.value, "both read the same value");
    fuzz::require(log.texts() == literal.lines, "both log the same line");
    return 0;
}
