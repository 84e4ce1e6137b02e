#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "exiv2_wrapper/api/tag_values.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/model/metadata_cache.h"

namespace exiv2_wp {

namespace {

using internal::CliExifMetadata;
using internal::CliExifTag;

std::optional<std::string> readText(const CliExifTag& tag) {
    return std::string(tag.value);
}

class BatchReader {
public:
    explicit BatchReader(const CliExifMetadata& metadata) : metadata_(metadata) {}

    void read(const char* key, std::unique_ptr<double>& field) const {
        readBy(&internal::readDouble, key, field);
    }
    void read(const char* key, std::unique_ptr<std::int32_t>& field) const {
        readBy(&internal::readInt, key, field);
    }
    void read(const char* key, std::unique_ptr<std::string>& field) const {
        readBy(&readText, key, field);
    }

private:
    template <typename Value>
    void readBy(std::optional<Value> (*rule)(const CliExifTag&), const char* key,
                std::unique_ptr<Value>& field) const {
        const CliExifTag* const tag = metadata_.find(key);
        if (auto value = tag == nullptr ? std::nullopt : rule(*tag)) {
            field = std::make_unique<Value>(*std::move(value));
        }
    }

    const CliExifMetadata& metadata_;
};

}  // namespace

exivBatchValue readExiv2Win(const std::filesystem::path& file) {
    exivBatchValue batch;
    const auto metadata = internal::readExifMetadataFromCliCached(file);
    if (metadata == nullptr) {
        return batch;
    }
    const BatchReader reader(*metadata);
    reader.read("Exif.Photo.ApertureValue", batch.apertureValue);
    reader.read("Exif.Photo.FNumber", batch.fNumber);
    reader.read("Exif.Photo.ExposureProgram", batch.exposureProgram);
    reader.read("Exif.Photo.FocalLength", batch.focalLength);
    reader.read("Exif.Photo.ShutterSpeedValue", batch.shutterSpeedValue);
    reader.read("Exif.Photo.ExposureBiasValue", batch.exposureBiasValue);
    reader.read("Exif.Photo.ISOSpeedRatings", batch.isoSpeedRatings);
    reader.read("Exif.Photo.ExposureTime", batch.exposureTime);
    reader.read("Exif.Image.Orientation", batch.orientation);
    reader.read("Exif.Photo.DateTimeOriginal", batch.dateTimeOriginal);
    reader.read("Exif.Image.DateTime", batch.dateTime);
    return batch;
}

}  // namespace exiv2_wp
