#pragma once

#include <filesystem>

namespace photoinfo {

/// What the photo says about itself.
constexpr auto kProbeModel = "probe";

/// A photo of the program's own in a temporary folder of its own, for trying tools out: whatever a
/// tool writes beside it is gone with this object.
class ProbePhoto {
public:
    /// Raises a `Failure` when it can't be written.
    ProbePhoto();
    ProbePhoto(const ProbePhoto&) = delete;
    ProbePhoto& operator=(const ProbePhoto&) = delete;
    ~ProbePhoto();

    /// The photo: Exif tags and a thumbnail.
    [[nodiscard]] std::filesystem::path file() const { return folder_ / "probe.jpg"; }
    /// An image without metadata.
    [[nodiscard]] std::filesystem::path freshImage() const { return folder_ / "fresh.jpg"; }

private:
    std::filesystem::path folder_;
};

}  // namespace photoinfo
