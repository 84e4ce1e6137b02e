#include "photoinfo/tool/probe_photo.h"

#include <random>
#include <span>
#include <string>
#include <system_error>

#include "photoinfo/exit_code.h"
#include "photoinfo/files/output_file.h"
#include "photoinfo/tool/probe_photo_bytes.h"

namespace photoinfo {

namespace {

namespace fs = std::filesystem;

// A name that nobody else has: an existing folder isn't taken.
fs::path makeFolder() {
    constexpr int kAttempts = 100;
    std::random_device random;
    std::error_code error;
    const fs::path parent = fs::temp_directory_path(error);
    for (int i = 0; i < kAttempts && !error; ++i) {
        fs::path folder = parent / ("photoinfo-" + std::to_string(random()));
        if (fs::create_directory(folder, error)) {
            return folder;
        }
    }
    throw Failure(ExitCode::failure, "no folder can be made for temporary files");
}

}  // namespace

ProbePhoto::ProbePhoto() : folder_(makeFolder()) {
    constexpr std::span<const unsigned char> kPhoto(kProbePhoto);
    if (!writeWhole(file(), kPhoto) || !writeWhole(anyName(), kPhoto) ||
        !writeWhole(freshImage(), kPhoto.subspan(kProbeThumbnailOffset, kProbeThumbnailSize))) {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
        throw Failure(ExitCode::failure, "temporary files cannot be written");
    }
}

ProbePhoto::~ProbePhoto() {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

}  // namespace photoinfo
