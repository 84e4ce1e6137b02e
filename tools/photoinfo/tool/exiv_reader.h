#pragma once

#include <filesystem>
#include <memory>

#include "exiv2_wrapper/exiv2_wrapper.h"

namespace photoinfo {

/// A reader of the file's tags. Raises a `Failure` about the file when its name can't be told to
/// the library, whose readers take narrow paths; the message doesn't name it.
[[nodiscard]] std::unique_ptr<exiv2_wp::ExivReader> makeExivReader(
    const std::filesystem::path& file);

}  // namespace photoinfo
