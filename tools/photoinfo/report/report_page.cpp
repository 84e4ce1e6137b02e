#include "photoinfo/report/report_page.h"

#include <algorithm>
#include <cstddef>

#include "photoinfo/report/base64.h"
#include "photoinfo/show/known_values.h"

namespace photoinfo {

namespace {

// Stands in the page where the data go.
constexpr std::string_view kDataMark = "{\"data\": \"here\"}";

// Thumbnails are far smaller; a photo that holds no smaller preview than a huge one goes without.
constexpr std::size_t kMostPreviewBytes = std::size_t{512} * 1024;

bool startsWith(std::span<const unsigned char> bytes, std::string_view signature) {
    return bytes.size() >= signature.size() &&
           std::equal(signature.begin(), signature.end(), bytes.begin(),
                      [](char a, unsigned char b) { return static_cast<unsigned char>(a) == b; });
}

// In a script element "<" could end the element or begin a comment, even within a JSON text. It
// occurs in texts only, where an escape means the same.
std::string escapedForPage(const std::string& json) {
    std::string escaped;
    for (const char c : json) {
        if (c == '<') {
            escaped += "\\u003c";
        } else {
            escaped += c;
        }
    }
    return escaped;
}

}  // namespace

std::string previewAddress(std::span<const unsigned char> bytes) {
    if (bytes.size() > kMostPreviewBytes) {
        return {};
    }
    if (startsWith(bytes, "\xFF\xD8\xFF")) {
        return "data:image/jpeg;base64," + toBase64(bytes);
    }
    if (startsWith(bytes, "\x89PNG\r\n\x1A\n")) {
        return "data:image/png;base64," + toBase64(bytes);
    }
    return {};
}

Json reportEntry(const ScannedPhoto& photo, const std::string& preview) {
    const exiv2_wp::SExivMetadataInfo info = photo.summary.value_or(exiv2_wp::SExivMetadataInfo());
    return {
        {"file", photo.file},
        {"error", toJson(photo.error)},
        {"preview", toJson(preview)},
        {"orientation", toJson(knownNumber(info.orientation))},
        {"maker", toJson(info.cameraMaker)},
        {"camera", toJson(info.cameraModel)},
        {"lens", toJson(info.lensModel.empty() ? photo.lensName : info.lensModel)},
        {"exposureTime", toJson(knownExposure(info.exposureTime))},
        {"fNumber", toJson(knownExposure(info.fNumber))},
        {"iso", toJson(knownExposure(info.iso))},
        {"focalLength", toJson(knownExposure(info.focalLength))},
        {"taken", toJson(info.dateTimeIso.empty() ? info.dateTimeOriginal : info.dateTimeIso)},
        {"rating", toJson(knownRating(info.rating))},
    };
}

std::string reportPage(const std::string& folder, const Json& photos) {
    constexpr bool kEscapeBeyondAscii = true;
    const Json document = {{"folder", folder}, {"photos", photos}};
    const std::string data =
        document.dump(-1, ' ', kEscapeBeyondAscii, Json::error_handler_t::replace);
    std::string page(reportTemplate());
    return page.replace(page.find(kDataMark), kDataMark.size(), escapedForPage(data));
}

}  // namespace photoinfo
