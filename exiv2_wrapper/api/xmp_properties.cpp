#include "exiv2_wrapper/api/xmp_properties.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "exiv2_wrapper/api/xmp_namespaces.h"

namespace exiv2_wp::internal {

namespace {

constexpr std::string_view kXmp = "Xmp.";

using Entry = TagTable::value_type;

std::vector<const Entry*> sortedXmpEntries(const TagTable& tags) {
    std::vector<const Entry*> entries;
    for (const Entry& entry : tags) {
        if (entry.first.starts_with(kXmp)) {
            entries.push_back(&entry);
        }
    }
    std::ranges::sort(entries, {}, [](const Entry* entry) { return entry->first; });
    return entries;
}

}  // namespace

std::vector<ExivReader::XMPData> xmpPropertiesOf(const CliExifMetadata& metadata) {
    std::vector<ExivReader::XMPData> properties;
    for (const Entry* const entry : sortedXmpEntries(metadata.tags)) {
        const std::string_view path = entry->first.substr(kXmp.size());
        const std::size_t dot = path.find('.');
        if (dot == std::string_view::npos || dot == 0 || dot + 1 == path.size()) {
            continue;
        }
        properties.push_back({std::string(xmpNamespaceOf(path.substr(0, dot))),
                              std::string(path.substr(dot + 1)), std::string(entry->second.value)});
    }
    return properties;
}

}  // namespace exiv2_wp::internal
