#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "exiv2_wrapper/exiv2_wrapper.h"

/// The layout of the exported records. Hosts are built apart from the library and reach into the
/// records by these offsets, so a record that changes here needs every host to be built anew. The
/// standard library's types count with the size that they have in this build: host and library
/// share one standard library in one setting.
namespace exiv2_wp {

namespace {

static_assert(sizeof(void*) == 8 && sizeof(bool) == 1 && sizeof(float) == 4 && sizeof(double) == 8);
static_assert(sizeof(std::unique_ptr<double>) == sizeof(void*));
static_assert(sizeof(std::unique_ptr<std::string>) == sizeof(void*));

/// Where fields of these types begin, each at the first multiple of its alignment behind the field
/// before it; and behind those the size of a record of them.
template <typename... Fields>
constexpr auto layoutOf() {
    constexpr std::size_t kSizes[] = {sizeof(Fields)...};
    constexpr std::size_t kAlignments[] = {alignof(Fields)...};
    constexpr std::size_t kRecordAlignment = std::max({alignof(Fields)...});
    const auto roundUp = [](std::size_t offset, std::size_t alignment) {
        return (offset + alignment - 1) / alignment * alignment;
    };
    std::array<std::size_t, sizeof...(Fields) + 1> layout{};
    std::size_t end = 0;
    for (std::size_t i = 0; i < sizeof...(Fields); ++i) {
        layout[i] = roundUp(end, kAlignments[i]);
        end = layout[i] + kSizes[i];
    }
    layout.back() = roundUp(end, kRecordAlignment);
    return layout;
}

using Text = std::string;
using OwnedDouble = std::unique_ptr<double>;
using OwnedInt = std::unique_ptr<std::int32_t>;
using OwnedText = std::unique_ptr<std::string>;

constexpr auto summaryLayout() {
    using R = SExivMetadataInfo;
    return std::array{
        offsetof(R, iso),
        offsetof(R, exposureTime),
        offsetof(R, focalLength),
        offsetof(R, fNumber),
        offsetof(R, focalLength35mm),
        offsetof(R, exposureBias),
        offsetof(R, isApple),
        offsetof(R, lensFocalMin),
        offsetof(R, lensFocalMax),
        offsetof(R, lensApertureAtFocalMin),
        offsetof(R, lensApertureAtFocalMax),
        offsetof(R, bitsPerSample),
        offsetof(R, orientation),
        offsetof(R, meteringMode),
        offsetof(R, lightSource),
        offsetof(R, whiteBalance),
        offsetof(R, cameraMaker),
        offsetof(R, cameraModel),
        offsetof(R, lensMaker),
        offsetof(R, reservedText),
        offsetof(R, lensModel),
        offsetof(R, dateTimeOriginal),
        offsetof(R, dateTimeIso),
        offsetof(R, rating),
        sizeof(R),
    };
}
static_assert(summaryLayout() ==
              layoutOf<float, float, float, float, float, float, bool, float, float, float, float,
                       std::int32_t, std::int32_t, std::int32_t, std::int32_t, std::int32_t, Text,
                       Text, Text, Text, Text, Text, Text, float>());
static_assert(offsetof(SExivMetadataInfo, lensFocalMin) == 28);
static_assert(offsetof(SExivMetadataInfo, bitsPerSample) == 44);
static_assert(offsetof(SExivMetadataInfo, cameraMaker) == 64);

constexpr auto lensInfoLayout() {
    using R = SLensInfo;
    return std::array{
        offsetof(R, lensName),
        offsetof(R, focalLength),
        offsetof(R, focalLength35mm),
        offsetof(R, subjectDistance),
        offsetof(R, fNumber),
        offsetof(R, lensId),
        sizeof(R),
    };
}
static_assert(lensInfoLayout() == layoutOf<Text, float, float, float, float, std::int32_t>());

constexpr auto focusInfoLayout() {
    using R = SMetadataExiv;
    return std::array{
        offsetof(R, focusDistance),
        offsetof(R, focalLength35mm),
        offsetof(R, focalPlaneXResolution),
        offsetof(R, focalPlaneYResolution),
        offsetof(R, exposureBias),
        offsetof(R, bitsPerSample),
        sizeof(R),
    };
}
static_assert(focusInfoLayout() == layoutOf<float, float, float, float, float, std::int32_t>());
static_assert(sizeof(SMetadataExiv) == 24);

// Owning pointers need not have a standard layout, so there are no offsets to ask for. Designators
// compile in the fields' own order only, and eleven of eight bytes each leave no gap.
using Batch = decltype(exivBatchValue{
    .apertureValue = OwnedDouble(),
    .fNumber = OwnedDouble(),
    .exposureProgram = OwnedInt(),
    .focalLength = OwnedDouble(),
    .shutterSpeedValue = OwnedDouble(),
    .exposureBiasValue = OwnedDouble(),
    .isoSpeedRatings = OwnedInt(),
    .exposureTime = OwnedDouble(),
    .orientation = OwnedInt(),
    .dateTimeOriginal = OwnedText(),
    .dateTime = OwnedText(),
});
static_assert(sizeof(Batch) == 11 * sizeof(void*));

static_assert(offsetof(TopBottomOffset, top) == 0 && offsetof(TopBottomOffset, bottom) == 8 &&
              sizeof(TopBottomOffset) == 16);

constexpr auto xmpDataLayout() {
    using R = ExivReader::XMPData;
    return std::array{offsetof(R, ns), offsetof(R, name), offsetof(R, value), sizeof(R)};
}
static_assert(xmpDataLayout() == layoutOf<Text, Text, Text>());
static_assert(sizeof(ExivReader) == sizeof(void*));

constexpr auto exportLayout() {
    using R = exiftool::ExportMetadataParameters;
    return std::array{
        offsetof(R, xResolution), offsetof(R, yResolution), offsetof(R, resolutionUnit),
        offsetof(R, software),    offsetof(R, rating),      sizeof(R),
    };
}
static_assert(exportLayout() == layoutOf<std::int32_t, std::int32_t, std::int32_t, Text, float>());
static_assert(offsetof(exiftool::ExportMetadataParameters, software) == 16);

}  // namespace

}  // namespace exiv2_wp
