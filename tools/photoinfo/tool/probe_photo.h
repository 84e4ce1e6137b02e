#pragma once

#include <filesystem>

namespace photoinfo {

/// What the photo says about itself.
constexpr auto kProbeModel = "probe";
constexpr auto kProbeLens = "A probe lens";
constexpr auto kProbeSubjectDistance = 2.5F;  // metres

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
    /// The same photo under a name that fits no code page but UTF-8's.
    [[nodiscard]] std::filesystem::path anyName() const {
        return folder_ / u8"\u0444\u043e\u0442\u043e \u5199\u771f \u00e9.jpg";
    }
    /// An image without metadata.
    [[nodiscard]] std::filesystem::path freshImage() const { return folder_ / "fresh.jpg"; }

private:
    std::filesystem::path folder_;
};

}  // namespace photoinfo
