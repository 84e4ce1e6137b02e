#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "photoinfo/folder/scanned_photo.h"
#include "photoinfo/show/json.h"

namespace photoinfo {

/// A preview as an address that a page can show, or empty where a browser wouldn't show the bytes
/// (it shows JPEG and PNG) or there are too many of them for a page of many photos.
[[nodiscard]] std::string previewAddress(std::span<const unsigned char> bytes);

/// What the page says of a photo. `preview` is an address, or empty.
[[nodiscard]] Json reportEntry(const ScannedPhoto& photo, const std::string& preview);

/// The page: its own text, style and program, and in it the folder's name and the photos as data.
/// Nothing in the data can end the data or become a part of the page.
[[nodiscard]] std::string reportPage(const std::string& folder, const Json& photos);

/// The page before the data are put in, as report/page/ has it. Made by the build.
[[nodiscard]] std::string_view reportTemplate();

}  // namespace photoinfo
