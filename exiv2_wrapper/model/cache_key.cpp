#include "exiv2_wrapper/model/cache_key.h"

#include <optional>
#include <utility>

#include "exiv2_wrapper/platform/platform.h"
#include "exiv2_wrapper/text/path_text.h"
#include "exiv2_wrapper/text/text.h"

namespace exiv2_wp::internal {

namespace {

// The key of a full path that is ASCII and normal as it stands, as most are; no value for any
// other. Every question asks for a key, and taking a path to pieces costs more than the rest of an
// answer. Where it isn't sure, as of names that begin with a dot, it leaves the path alone.
std::optional<std::string> keyOfPlainPath(const NativeString& path) {
    std::string key;
    key.reserve(path.size());
    bool isAtName = true;
    for (const NativeString::value_type c : path) {
        const bool isSeparator = c == std::filesystem::path::preferred_separator;
        const bool isPlain = static_cast<char32_t>(c) < 0x80 && (isSeparator || c != '/') &&
                             (!isAtName || (c != '.' && (!isSeparator || key.empty())));
        if (!isPlain) {
            return std::nullopt;
        }
        key += toLower(static_cast<char>(c));
        isAtName = isSeparator;
    }
    return key;
}

}  // namespace

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
