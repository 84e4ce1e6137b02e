#include <algorithm>
#include <string>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "photoinfo/commands/files_command.h"
#include "photoinfo/show/known_values.h"
#include "photoinfo/show/shown_values.h"
#include "photoinfo/show/text.h"

namespace photoinfo {

namespace {

using exiv2_wp::SLensInfo;
using exiv2_wp::SMetadataExiv;

struct Info {
    SLensInfo lens;
    SMetadataExiv focus;
    std::int32_t tagCount = 0;
    bool isTiffRaw = false;
};

Table tableOf(const Info& info) {
    Table table;
    const SLensInfo& lens = info.lens;
    table.row("Lens", lens.lensName);
    table.row("Lens identifier", knownCode(lens.lensId), showWhole);
    table.row("Focal length", knownExposure(lens.focalLength), showMillimetres);
    table.row("35 mm equivalent", knownLength(lens.focalLength35mm), showMillimetres);
    table.row("F-number", knownExposure(lens.fNumber), showFNumber);
    table.row("Subject distance", knownExposure(lens.subjectDistance), showMetres);
    const SMetadataExiv& focus = info.focus;
    table.row("Focus distance", knownExposure(focus.focusDistance), showMetres);
    table.row("35 mm, as written", knownExposure(focus.focalLength35mm), showMillimetres);
    table.row("Focal plane across", knownExposure(focus.focalPlaneXResolution), decimal);
    table.row("Focal plane down", knownExposure(focus.focalPlaneYResolution), decimal);
    table.row("Exposure bias", knownBias(focus.exposureBias), showBias);
    table.row("Bits per sample", knownCode(focus.bitsPerSample), showWhole);
    table.row("Raw in TIFF's form", info.isTiffRaw ? "yes" : "no");
    table.row("Tags", showWhole(info.tagCount));
    return table;
}

Json jsonOf(const Info& info) {
    const SLensInfo& lens = info.lens;
    const SMetadataExiv& focus = info.focus;
    return {
        {"lens",
         {{"lensName", toJson(lens.lensName)},
          {"focalLength", toJson(knownExposure(lens.focalLength))},
          {"focalLength35mm", toJson(knownLength(lens.focalLength35mm))},
          {"subjectDistance", toJson(knownExposure(lens.subjectDistance))},
          {"fNumber", toJson(knownExposure(lens.fNumber))},
          {"lensId", toJson(knownCode(lens.lensId))}}},
        {"metadata",
         {{"focusDistance", toJson(knownExposure(focus.focusDistance))},
          {"focalLength35mm", toJson(knownExposure(focus.focalLength35mm))},
          {"focalPlaneXResolution", toJson(knownExposure(focus.focalPlaneXResolution))},
          {"focalPlaneYResolution", toJson(knownExposure(focus.focalPlaneYResolution))},
          {"exposureBias", toJson(knownBias(focus.exposureBias))},
          {"bitsPerSample", toJson(knownCode(focus.bitsPerSample))}}},
        {"isTiffRaw", info.isTiffRaw},
        {"tagCount", info.tagCount},
    };
}

// Most models begin with their maker's name, and the crop factors know each camera by one name.
std::string makeBeside(const std::string& model, const std::string& make) {
    const auto isSameLetter = [](char a, char b) {
        constexpr unsigned kLetterCase = 0x20;
        return (static_cast<unsigned char>(a) | kLetterCase) ==
               (static_cast<unsigned char>(b) | kLetterCase);
    };
    const std::string firstWord = make.substr(0, make.find(' '));
    const bool isInModel =
        firstWord.size() <= model.size() &&
        std::equal(firstWord.begin(), firstWord.end(), model.begin(), isSameLetter);
    return isInModel ? std::string() : make;
}

class InfoCommand : public FilesCommand {
public:
    InfoCommand()
        : FilesCommand(
              {.name = "info",
               .description = "The lens of photos, how it was set, and the sensor's values",
               .jsonName = "info",
               .nothing = "no metadata"},
              Tool::exiv2, Count::many) {}

protected:
    // The camera decides the crop factor, from which a 35 mm equivalent can be had.
    std::optional<Finding> ask(const std::filesystem::path& file) override {
        std::string make;
        std::string model;
        exiv2_wp::createImageMetadata(file, [&](const exiv2_wp::SExivMetadataInfo& summary) {
            make = makeBeside(summary.cameraModel, summary.cameraMaker);
            model = summary.cameraModel;
        });
        Info info;
        std::optional<Finding> finding;
        exiv2_wp::readExiv2Info(
            file, make, model, [&info](const SLensInfo& lens) { info.lens = lens; },
            [&](const SMetadataExiv& focus) {
                info.focus = focus;
                info.isTiffRaw = exiv2_wp::isTiffRaw(file);
                finding = {tableOf(info), jsonOf(info)};
            },
            [&info] { ++info.tagCount; });
        return finding;
    }
};

}  // namespace

std::unique_ptr<Command> makeInfoCommand() {
    return std::make_unique<InfoCommand>();
}

}  // namespace photoinfo
