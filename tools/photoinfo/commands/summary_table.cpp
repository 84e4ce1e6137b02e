#include <string>

#include "photoinfo/commands/summary.h"
#include "photoinfo/show/exif_codes.h"
#include "photoinfo/show/known_values.h"
#include "photoinfo/show/shown_values.h"
#include "photoinfo/show/text.h"

namespace photoinfo {

namespace {

using exiv2_wp::SExivMetadataInfo;

// "24-105", or "50" when both ends are the same; empty when neither is known.
std::string showRange(std::optional<float> least, std::optional<float> most) {
    if (!least && !most) {
        return {};
    }
    const std::string first = least ? decimal(*least) : "?";
    const std::string second = most ? decimal(*most) : "?";
    return first == second ? first : first + "-" + second;
}

void addCamera(Table& table, const SExivMetadataInfo& info) {
    table.row("Camera maker", info.cameraMaker);
    table.row("Camera model", info.cameraModel);
    table.row("Lens maker", info.lensMaker);
    table.row("Lens model", info.lensModel);
    const std::string lengths =
        showRange(knownLensValue(info.lensFocalMin), knownLensValue(info.lensFocalMax));
    table.row("Lens focal length", lengths.empty() ? lengths : lengths + " mm");
    const std::string apertures = showRange(knownLensValue(info.lensApertureAtFocalMin),
                                            knownLensValue(info.lensApertureAtFocalMax));
    table.row("Lens aperture", apertures.empty() ? apertures : "f/" + apertures);
}

void addExposure(Table& table, const SExivMetadataInfo& info) {
    table.row("Exposure time", knownExposure(info.exposureTime), showExposureTime);
    table.row("F-number", knownExposure(info.fNumber), showFNumber);
    table.row("ISO", knownExposure(info.iso), decimal);
    table.row("Exposure bias", knownBias(info.exposureBias), showBias);
    table.row("Focal length", knownExposure(info.focalLength), showMillimetres);
    table.row("35 mm equivalent", knownExposure(info.focalLength35mm), showMillimetres);
    table.row("Metering", knownCode(info.meteringMode), meteringModeName);
    table.row("Light source", knownCode(info.lightSource), lightSourceName);
    table.row("White balance", knownCode(info.whiteBalance), whiteBalanceName);
}

void addPicture(Table& table, const SExivMetadataInfo& info) {
    table.row("Taken", info.dateTimeOriginal);
    table.row("Taken (ISO 8601)", info.dateTimeIso);
    table.row("Orientation", knownNumber(info.orientation), orientationName);
    table.row("Bits per sample", knownNumber(info.bitsPerSample), showWhole);
    const auto rating = knownRating(info.rating);
    table.row("Rating", rating ? showRating(*rating) : "none");
}

}  // namespace

Table summaryTable(const SExivMetadataInfo& info) {
    Table table;
    addCamera(table, info);
    addExposure(table, info);
    addPicture(table, info);
    return table;
}

}  // namespace photoinfo
