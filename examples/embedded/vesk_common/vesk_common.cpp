#include "vesk_common/vesk_common.h"

#include <filesystem>

namespace vesk {

std::wstring s2ws(const std::string& utf8) {
    return std::filesystem::u8path(utf8).wstring();
}

std::string ws2s(const std::wstring& wide) {
    return std::filesystem::path(wide).u8string();
}

}  // namespace vesk
