#include <string>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "photoinfo/commands/files_command.h"
#include "photoinfo/show/exif_codes.h"
#include "photoinfo/show/shown_values.h"
#include "photoinfo/show/text.h"

namespace photoinfo {

namespace {

using exiv2_wp::exivBatchValue;

template <typename Value, typename Show>
void add(Table& table, const char* label, const std::unique_ptr<Value>& value, Show show) {
    table.row(label, value ? std::optional(*value) : std::nullopt, show);
}

void add(Table& table, const char* label, const std::unique_ptr<std::string>& text) {
    table.row(label, text ? *text : std::string());
}

Table tableOf(const exivBatchValue& value) {
    Table table;
    add(table, "Exposure time", value.exposureTime, showExposureTime);
    add(table, "F-number", value.fNumber, showFNumber);
    add(table, "ISO", value.isoSpeedRatings, showWhole);
    add(table, "Exposure bias", value.exposureBiasValue, showBias);
    add(table, "Exposure program", value.exposureProgram, exposureProgramName);
    add(table, "Focal length", value.focalLength, showMillimetres);
    add(table, "Shutter (APEX)", value.shutterSpeedValue, decimal);
    add(table, "Aperture (APEX)", value.apertureValue, decimal);
    add(table, "Orientation", value.orientation, orientationName);
    add(table, "Taken", value.dateTimeOriginal);
    add(table, "Changed", value.dateTime);
    return table;
}

Json jsonOf(const exivBatchValue& value) {
    return {
        {"apertureValue", toJson(value.apertureValue)},
        {"fNumber", toJson(value.fNumber)},
        {"exposureProgram", toJson(value.exposureProgram)},
        {"focalLength", toJson(value.focalLength)},
        {"shutterSpeedValue", toJson(value.shutterSpeedValue)},
        {"exposureBiasValue", toJson(value.exposureBiasValue)},
        {"isoSpeedRatings", toJson(value.isoSpeedRatings)},
        {"exposureTime", toJson(value.exposureTime)},
        {"orientation", toJson(value.orientation)},
        {"dateTimeOriginal", toJson(value.dateTimeOriginal)},
        {"dateTime", toJson(value.dateTime)},
    };
}

bool hasAny(const exivBatchValue& value) {
    return value.apertureValue || value.fNumber || value.exposureProgram || value.focalLength ||
           value.shutterSpeedValue || value.exposureBiasValue || value.isoSpeedRatings ||
           value.exposureTime || value.orientation || value.dateTimeOriginal || value.dateTime;
}

class BatchCommand : public FilesCommand {
public:
    BatchCommand()
        : FilesCommand({.name = "batch",
                        .description = "Exposure values of many photos, as for long lists",
                        .jsonName = "values",
                        .nothing = "no exposure values"},
                       Tool::exiv2, Count::many) {}

protected:
    std::optional<Finding> ask(const std::filesystem::path& file) override {
        const exivBatchValue value = exiv2_wp::readExiv2Win(file);
        return hasAny(value) ? std::optional<Finding>({tableOf(value), jsonOf(value)})
                             : std::nullopt;
    }
};

}  // namespace

std::unique_ptr<Command> makeBatchCommand() {
    return std::make_unique<BatchCommand>();
}

}  // namespace photoinfo
