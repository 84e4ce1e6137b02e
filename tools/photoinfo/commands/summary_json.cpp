#include "photoinfo/commands/summary.h"
#include "photoinfo/show/known_values.h"

namespace photoinfo {

// Every field of the record in its order, save the reserved one, which is never filled.
Json summaryJson(const exiv2_wp::SExivMetadataInfo& info) {
    return {
        {"iso", toJson(knownExposure(info.iso))},
        {"exposureTime", toJson(knownExposure(info.exposureTime))},
        {"focalLength", toJson(knownExposure(info.focalLength))},
        {"fNumber", toJson(knownExposure(info.fNumber))},
        {"focalLength35mm", toJson(knownExposure(info.focalLength35mm))},
        {"exposureBias", toJson(knownBias(info.exposureBias))},
        {"isApple", info.isApple},
        {"lensFocalMin", toJson(knownLensValue(info.lensFocalMin))},
        {"lensFocalMax", toJson(knownLensValue(info.lensFocalMax))},
        {"lensApertureAtFocalMin", toJson(knownLensValue(info.lensApertureAtFocalMin))},
        {"lensApertureAtFocalMax", toJson(knownLensValue(info.lensApertureAtFocalMax))},
        {"bitsPerSample", toJson(knownNumber(info.bitsPerSample))},
        {"orientation", toJson(knownNumber(info.orientation))},
        {"meteringMode", toJson(knownCode(info.meteringMode))},
        {"lightSource", toJson(knownCode(info.lightSource))},
        {"whiteBalance", toJson(knownCode(info.whiteBalance))},
        {"cameraMaker", toJson(info.cameraMaker)},
        {"cameraModel", toJson(info.cameraModel)},
        {"lensMaker", toJson(info.lensMaker)},
        {"lensModel", toJson(info.lensModel)},
        {"dateTimeOriginal", toJson(info.dateTimeOriginal)},
        {"dateTimeIso", toJson(info.dateTimeIso)},
        {"rating", toJson(knownRating(info.rating))},
    };
}

}  // namespace photoinfo
