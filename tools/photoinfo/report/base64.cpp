#include "photoinfo/report/base64.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace photoinfo {

namespace {

constexpr std::string_view kBase64Digits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

}  // namespace

// Three bytes make four digits of six bits; an incomplete group is filled up by "=".
std::string toBase64(std::span<const unsigned char> bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (; !bytes.empty(); bytes = bytes.subspan(bytes.size() < 3 ? bytes.size() : 3)) {
        std::uint32_t group = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            group = (group << 8U) | (i < bytes.size() ? bytes[i] : 0U);
        }
        for (std::size_t i = 0; i < 4; ++i) {
            text += i <= bytes.size() ? kBase64Digits[(group >> (18 - 6 * i)) & 0x3FU] : '=';
        }
    }
    return text;
}

}  // namespace photoinfo
