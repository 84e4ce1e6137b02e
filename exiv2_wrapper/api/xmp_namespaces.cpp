#include "exiv2_wrapper/api/xmp_namespaces.h"

#include <algorithm>
#include <array>
#include <span>

namespace exiv2_wp::internal {

namespace {

struct XmpNamespace {
    std::string_view prefix;
    std::string_view uri;
};

// clang-format off
// { prefix, URI }, sorted by prefix. The two IPTC schemas have two prefixes each.
constexpr std::array<XmpNamespace, 21> kNamespaces = {{
    {"Iptc4xmpCore", "http://iptc.org/std/Iptc4xmpCore/1.0/xmlns/"},
    {"Iptc4xmpExt", "http://iptc.org/std/Iptc4xmpExt/2008-02-29/"},
    {"aux", "http://ns.adobe.com/exif/1.0/aux/"},
    {"cc", "http://creativecommons.org/ns#"},
    {"crs", "http://ns.adobe.com/camera-raw-settings/1.0/"},
    {"dc", "http://purl.org/dc/elements/1.1/"},
    {"exif", "http://ns.adobe.com/exif/1.0/"},
    {"exifEX", "http://cipa.jp/exif/1.0/"},
    {"iptcCore", "http://iptc.org/std/Iptc4xmpCore/1.0/xmlns/"},
    {"iptcExt", "http://iptc.org/std/Iptc4xmpExt/2008-02-29/"},
    {"lr", "http://ns.adobe.com/lightroom/1.0/"},
    {"pdf", "http://ns.adobe.com/pdf/1.3/"},
    {"photoshop", "http://ns.adobe.com/photoshop/1.0/"},
    {"plus", "http://ns.useplus.org/ldf/xmp/1.0/"},
    {"rdf", "http://www.w3.org/1999/02/22-rdf-syntax-ns#"},
    {"tiff", "http://ns.adobe.com/tiff/1.0/"},
    {"x", "adobe:ns:meta/"},
    {"xmp", "http://ns.adobe.com/xap/1.0/"},
    {"xmpBJ", "http://ns.adobe.com/xap/1.0/bj/"},
    {"xmpMM", "http://ns.adobe.com/xap/1.0/mm/"},
    {"xmpRights", "http://ns.adobe.com/xap/1.0/rights/"},
}};
// clang-format on

static_assert(std::ranges::is_sorted(kNamespaces, {}, &XmpNamespace::prefix));

}  // namespace

std::string_view xmpNamespaceOf(std::string_view prefix) {
    const std::span<const XmpNamespace> namespaces = kNamespaces;
    const auto found = std::ranges::lower_bound(namespaces, prefix, {}, &XmpNamespace::prefix);
    return found != namespaces.end() && found->prefix == prefix ? found->uri : std::string_view();
}

}  // namespace exiv2_wp::internal
