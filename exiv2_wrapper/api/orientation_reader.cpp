#include <functional>
#include <optional>

#include "exiv2_wrapper/api/tag_values.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/model/metadata_cache.h"

namespace exiv2_wp {

void readExiv2Orientation(const std::filesystem::path& file,
                          const std::function<void(int)>& onOrientation) {
    const auto metadata = internal::readExifMetadataFromCliCached(file);
    const auto* const tag =
        metadata == nullptr ? nullptr : metadata->find("Exif.Image.Orientation");
    if (const auto orientation = tag == nullptr ? std::nullopt : internal::readInt(*tag)) {
        onOrientation(*orientation);
    }
}

}  // namespace exiv2_wp
