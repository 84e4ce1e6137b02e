#include "exiv2_wrapper/model/cache_key.h"

#include <utility>

#include "exiv2_wrapper/platform/platform.h"
#include "exiv2_wrapper/text/text.h"

namespace exiv2_wp::internal {

std::optional<std::string> keyOfPlainPath(const NativeString& path) {
    std::string key;
    key.reserve(path.size());
    bool isAtName = true;
    for (const NativeString::value_type c : path) {
        const bool isSeparator = c == std::filesystem::path::preferred_separator;
        const bool isPlain = isAscii(c) && (isSeparator || c != '/') &&
                             (!isAtName || (c != '.' && (!isSeparator || key.empty())));
        if (!isPlain) {
            return std::nullopt;
        }
        key += toLower(static_cast<char>(c));
        isAtName = isSeparator;
    }
    return key;
}

std::string makeCacheKey(const std::filesystem::path& file) {
    NativeString full = fullPath(file);
    if (std::optional<std::string> key = keyOfPlainPath(full)) {
        return *std::move(key);
    }
    const std::filesystem::path path = std::move(full);
    std::string key = utf8Path(path.lexically_normal().make_preferred());
    lowerCase(key);
    return key;
}

}  // namespace exiv2_wp::internal
