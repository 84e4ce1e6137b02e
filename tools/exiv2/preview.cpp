// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/preview.h"

#include <optional>
#include <stdexcept>
#include <vector>

#include "exiv2/payload.h"

namespace exiv2_tool {
namespace {

PixelSize sizeOf(const Exiv2::PreviewProperties& preview) {
    return {static_cast<std::uint32_t>(preview.width_),
            static_cast<std::uint32_t>(preview.height_)};
}

/// The size of the image in `preview`; none when it can't be read or holds none.
std::optional<PixelSize> soundSize(const Exiv2::PreviewImage& preview,
                                   const Exiv2::PreviewProperties& properties) {
    try {
        return payloadSize({preview.pData(), preview.size()}, preview.mimeType(),
                           sizeOf(properties));
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

void append(std::string& output, const Exiv2::PreviewImage& preview, PixelSize size) {
    output += std::to_string(size.width) + ' ' + std::to_string(size.height) + " 0 0 0 0\n";
    const void* const bytes = preview.pData();
    output.append(static_cast<const char*>(bytes), preview.size());
}

}  // namespace

void printPreview(std::string& output, const Exiv2::Image& image, std::uint32_t wanted) {
    const Exiv2::PreviewManager manager(image);
    const Exiv2::PreviewPropertiesList previews = manager.getPreviewProperties();
    std::vector<PixelSize> sizes;
    for (const Exiv2::PreviewProperties& preview : previews) {
        sizes.push_back(sizeOf(preview));
    }
    for (const std::size_t index : previewOrder(sizes, wanted)) {
        const Exiv2::PreviewImage preview = manager.getPreviewImage(previews[index]);
        if (const std::optional<PixelSize> size = soundSize(preview, previews[index])) {
            append(output, preview, *size);
            return;
        }
    }
    throw std::runtime_error(previews.empty() ? "no preview" : "no preview that holds an image");
}

}  // namespace exiv2_tool
