#include "exiv2_wrapper/text/path_text.h"

#include "exiv2_wrapper/text/utf8.h"

namespace exiv2_wp::internal {

int widenUtf8(std::string_view utf8, std::span<wchar_t> wide) {
    std::size_t count = 0;
    while (!utf8.empty()) {
        const DecodedCharacter character = decodeUtf8(utf8);
        utf8.remove_prefix(character.length);
        if (count < wide.size()) {
            wide[count] = static_cast<wchar_t>(character.codePoint);
        }
        ++count;
    }
    return static_cast<int>(count);
}

std::string narrowPath(const std::filesystem::path& path) {
    return path.native();
}

std::filesystem::path pathFromNarrow(std::string_view narrow) {
    return std::string(narrow);
}

std::wstring widePath(const std::filesystem::path& path) {
    std::wstring wide;
    for (std::string_view rest = path.native(); !rest.empty();) {
        const DecodedCharacter character = decodeUtf8(rest);
        rest.remove_prefix(character.length);
        wide += static_cast<wchar_t>(character.codePoint);
    }
    return wide;
}

std::string utf8Path(const std::filesystem::path& path) {
    return path.native();
}

std::string hostUtf8Path(const std::filesystem::path& path) {
    return path.native();
}

}  // namespace exiv2_wp::internal
