#include "photoinfo/tool/preview_call.h"

#include <cstddef>
#include <limits>

namespace photoinfo {

using exiv2_wp::TopBottomOffset;

bool extractPreview(
    const std::filesystem::path& file, int size,
    const std::function<bool(const Preview&, std::span<const unsigned char>)>& take) {
    Preview preview;
    const auto hand = [&](const unsigned char* bytes, std::uint64_t count,
                          const TopBottomOffset& offset) {
        preview.offset = offset;
        return take(preview, {bytes, static_cast<std::size_t>(count)});
    };
    TopBottomOffset unused;
    return exiv2_wp::readExiv2Thumbnail(
        file, "", size, size, unused,
        [&preview](int width, int height, int /*asked*/) {
            preview.width = width;
            preview.height = height;
        },
        [](int /*value*/) {}, hand,
        [&hand](const unsigned char* bytes, std::uint64_t count, int /*width*/, int /*rows*/,
                const TopBottomOffset& offset,
                int /*asked*/) { return hand(bytes, count, offset); });
}

bool speaksPreviewCall(const ProbePhoto& probe) {
    // The stock tool would take the size for the name of a photo, too: let there be none.
    constexpr int kNoFileName = std::numeric_limits<int>::max();
    return extractPreview(probe.file(), kNoFileName,
                          [](const Preview& preview, std::span<const unsigned char> bytes) {
                              return preview.width > 0 && preview.height > 0 && !bytes.empty();
                          });
}

}  // namespace photoinfo
