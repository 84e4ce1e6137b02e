#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "photoinfo/tool/probe_photo.h"

namespace photoinfo {

/// A preview as the tool announced it.
struct Preview {
    int width = 0;   ///< pixels
    int height = 0;  ///< pixels
    exiv2_wp::TopBottomOffset offset;
};

/// Has the tool extract the preview and hands it to `take` with its bytes, which live only during
/// the call. False when there is no preview, or `take` said false. The library's exiv2.exe is
/// started, and speaks the preview call.
bool extractPreview(
    const std::filesystem::path& file, int size,
    const std::function<bool(const Preview&, std::span<const unsigned char>)>& take);

/// Whether exiv2.exe speaks the preview call, tried on the probe. The stock tool doesn't: it takes
/// the call for one of its own, writes a file beside the photo and fails. So this comes first, and
/// no user's photo is asked about otherwise.
[[nodiscard]] bool speaksPreviewCall(const ProbePhoto& probe);

}  // namespace photoinfo
