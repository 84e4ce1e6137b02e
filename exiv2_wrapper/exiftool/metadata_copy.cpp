#include "exiv2_wrapper/exiftool/metadata_copy.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <string_view>
#include <tuple>
#include <utility>

#include "exiv2_wrapper/exiftool/exiftool_process.h"
#include "exiv2_wrapper/exiftool/tag_reader.h"
#include "exiv2_wrapper/text/path_text.h"
#include "exiv2_wrapper/text/text.h"

namespace exiftool {

namespace internal {

namespace {

using exiv2_wp::internal::hostUtf8Path;

// PNG has one place for metadata that every reader knows: XMP.
constexpr std::string_view kCopyToXmp =
    "-all:all>xmp:all\n-serialnumber>xmp-aux:serialnumber\n-lensmodel>xmp-aux:lens\n-flash\n";
constexpr std::string_view kCopyAll = "-all:all\n";

// What described the source's pixels and not the export's: the export stands upright, has its own
// size and samples, and its colour space is the one that the editor wrote.
constexpr std::string_view kPixelDescription =
    "-Orientation=1\n-ThumbnailImage=\n-ExifImageWidth=\n-ExifImageHeight=\n-ExtraSamples=\n"
    "--exif:ColorSpace\n";

// Larger maker notes don't fit into a JPEG's Exif segment beside the rest.
constexpr std::uint32_t kMakernotesLimit = 60000;

// Exif ratings begin at -1, for rejected; what is below isn't written.
constexpr float kNoRating = -2.0F;

// Looked for anywhere, so "11 image files updated" would do too; a request names one file.
constexpr std::string_view kSuccess = "1 image files updated";

std::string formatOf(const std::filesystem::path& file) {
    const std::string extension =
        exiv2_wp::internal::lowerCased(exiv2_wp::internal::utf8Path(file.extension()));
    return extension.empty() ? extension : extension.substr(1);
}

void appendResolution(const ExportMetadataParameters& parameters, std::string& request) {
    if (parameters.xResolution < 1 || parameters.yResolution < 1 || parameters.resolutionUnit < 1) {
        return;
    }
    request += "-XResolution=" + std::to_string(parameters.xResolution) + "\n";
    request += "-YResolution=" + std::to_string(parameters.yResolution) + "\n";
    request += "-ResolutionUnit=" + std::to_string(parameters.resolutionUnit) + "\n";
}

void appendSoftware(const ExportMetadataParameters& parameters, std::string& request) {
    if (parameters.software.empty()) {
        return;
    }
    request += "-exif:Software=" + parameters.software + "\n";
    request += "-CreatorTool=" + parameters.software + "\n";
}

void appendRating(const ExportMetadataParameters& parameters, std::string& request) {
    if (!(parameters.rating > kNoRating)) {  // a rating that is no number isn't written either
        return;
    }
    constexpr int kSignificantDigits = 6;
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), parameters.rating,
                                   std::chars_format::general, kSignificantDigits)
                         .ptr;
    request += "-Rating=";
    request.append(text.data(), end);
    request += '\n';
}

// The comparison is unsigned, so that the -1 of a file that the tool warns of is large too: its
// maker notes can't be trusted and aren't carried over.
bool areMakernotesTooLarge(const std::filesystem::path& source) {
    return static_cast<std::uint32_t>(getMakernotesSize(source)) > kMakernotesLimit;
}

}  // namespace

std::string makeCopyRequest(const std::filesystem::path& source,
                            const std::filesystem::path& destination,
                            const ExportMetadataParameters& parameters) {
    const std::string format = formatOf(destination);
    std::string request = "-TagsFromFile\n" + hostUtf8Path(source) + "\n-n\n";
    request += format == "png" ? kCopyToXmp : kCopyAll;
    request += kPixelDescription;
    appendResolution(parameters, request);
    appendSoftware(parameters, request);
    appendRating(parameters, request);
    if ((format == "jpg" || format == "jpeg") && areMakernotesTooLarge(source)) {
        request += "--makernotes\n";
    }
    request += hostUtf8Path(destination) + "\n-overwrite_original";
    return request;
}

}  // namespace internal

bool copyMetadata(const std::filesystem::path& source, const std::filesystem::path& destination,
                  ExportMetadataParameters parameters) {
    const std::string request = internal::makeCopyRequest(source, destination, parameters);
    const std::string answer = internal::getExiftoolProcess({}).execute({request});
    return answer.find(internal::kSuccess) != std::string::npos;
}

bool copyMetadata(const std::filesystem::path& source, const std::filesystem::path& destination,
                  std::tuple<int, int, int, std::string> parameters) {
    constexpr float kWithoutRating = -100.0F;
    return copyMetadata(
        source, destination,
        ExportMetadataParameters{std::get<0>(parameters), std::get<1>(parameters),
                                 std::get<2>(parameters), std::move(std::get<3>(parameters)),
                                 kWithoutRating});
}

}  // namespace exiftool
