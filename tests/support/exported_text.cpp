#include "support/exported_text.h"

#include "support/fields.h"

namespace test_support {

std::string toText(const exiv2_wp::SExivMetadataInfo& info) {
    return Fields()
        .add("iso", info.iso)
        .add("exposureTime", info.exposureTime)
        .add("focalLength", info.focalLength)
        .add("fNumber", info.fNumber)
        .add("focalLength35mm", info.focalLength35mm)
        .add("exposureBias", info.exposureBias)
        .add("isApple", info.isApple)
        .add("lensFocalMin", info.lensFocalMin)
        .add("lensFocalMax", info.lensFocalMax)
        .add("lensApertureAtFocalMin", info.lensApertureAtFocalMin)
        .add("lensApertureAtFocalMax", info.lensApertureAtFocalMax)
        .add("bitsPerSample", info.bitsPerSample)
        .add("orientation", info.orientation)
        .add("meteringMode", info.meteringMode)
        .add("lightSource", info.lightSource)
        .add("whiteBalance", info.whiteBalance)
        .add("cameraMaker", info.cameraMaker)
        .add("cameraModel", info.cameraModel)
        .add("lensMaker", info.lensMaker)
        .add("reservedText", info.reservedText)
        .add("lensModel", info.lensModel)
        .add("dateTimeOriginal", info.dateTimeOriginal)
        .add("dateTimeIso", info.dateTimeIso)
        .add("rating", info.rating)
        .text();
}

std::string toText(const exiv2_wp::SLensInfo& lens) {
    return Fields()
        .add("lensName", lens.lensName)
        .add("focalLength", lens.focalLength)
        .add("focalLength35mm", lens.focalLength35mm)
        .add("subjectDistance", lens.subjectDistance)
        .add("fNumber", lens.fNumber)
        .add("lensId", lens.lensId)
        .text();
}

std::string toText(const exiv2_wp::exivBatchValue& values) {
    return Fields()
        .add("apertureValue", values.apertureValue)
        .add("fNumber", values.fNumber)
        .add("exposureProgram", values.exposureProgram)
        .add("focalLength", values.focalLength)
        .add("shutterSpeedValue", values.shutterSpeedValue)
        .add("exposureBiasValue", values.exposureBiasValue)
        .add("isoSpeedRatings", values.isoSpeedRatings)
        .add("exposureTime", values.exposureTime)
        .add("orientation", values.orientation)
        .add("dateTimeOriginal", values.dateTimeOriginal)
        .add("dateTime", values.dateTime)
        .text();
}

}  // namespace test_support
