#include "photoinfo/tool/tag_names.h"

#include <algorithm>

namespace photoinfo {

namespace {

constexpr std::string_view kNameCharacters =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-:*?";

char lowerCased(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string_view withoutNumberSign(std::string_view name) {
    if (name.ends_with('#')) {
        name.remove_suffix(1);
    }
    return name;
}

}  // namespace

bool isTagName(std::string_view name) {
    const std::string_view bare = withoutNumberSign(name);
    return !bareTagName(name).empty() && !bare.starts_with('-') &&
           bare.find_first_not_of(kNameCharacters) == std::string_view::npos;
}

bool standsForSeveralTags(std::string_view name) {
    const std::string_view bare = bareTagName(name);
    return bare.find_first_of("*?") != std::string_view::npos || isSameTag(bare, "all");
}

std::string_view bareTagName(std::string_view name) {
    name = withoutNumberSign(name);
    return name.substr(name.rfind(':') + 1);  // npos + 1 is the beginning
}

bool isSameTag(std::string_view first, std::string_view second) {
    return std::equal(first.begin(), first.end(), second.begin(), second.end(),
                      [](char a, char b) { return lowerCased(a) == lowerCased(b); });
}

}  // namespace photoinfo
