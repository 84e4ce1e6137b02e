#pragma once

#include <optional>
#include <string>

#include "exiv2_wrapper/exiv2_wrapper.h"

namespace photoinfo {

/// What became of one photo of a folder.
struct ScannedPhoto {
    std::string file;   ///< its name, as FoundFile has it
    std::string error;  ///< why it couldn't be asked about; empty: it was
    std::optional<exiv2_wp::SExivMetadataInfo> summary = {};  ///< none: no metadata
    std::string lensName = {};  ///< as exiv2.exe names the lens; empty: unknown
};

}  // namespace photoinfo
