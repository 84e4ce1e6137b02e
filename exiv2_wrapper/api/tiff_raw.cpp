#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/log/log.h"
#include "exiv2_wrapper/model/metadata_cache.h"
#include "exiv2_wrapper/text/text.h"

namespace exiv2_wp {

namespace {

// Whole names: the EOS-1D's successors write a raw format that can't be mistaken.
constexpr std::array<std::string_view, 3> kModels = {"canon eos-1d", "canon eos-1ds", "eos d2000c"};

// This camera puts other words around its name.
constexpr std::string_view kModelPart = "eosdcs1b";

// Not begun by the logger itself, like the line of the start-up: the host's own logger has presets
// of its own for these two.
void logModel(const std::string& lowerCasedModel) {
    vesk::logstream line;
    internal::beginLine(line, internal::LogType::trace);
    line << lowerCasedModel;
    vesk::LOG(line);
}

}  // namespace

bool isTiffRaw(const std::filesystem::path& file) {
    const auto metadata = internal::readExifMetadataFromCliCached(file);
    const auto* const tag = metadata == nullptr ? nullptr : metadata->find("Exif.Image.Model");
    if (tag == nullptr) {
        return false;
    }
    const std::string model = internal::lowerCased(tag->value);
    logModel(model);
    return std::find(kModels.begin(), kModels.end(), model) != kModels.end() ||
           model.find(kModelPart) != std::string::npos;
}

}  // namespace exiv2_wp
