#include "fuzz/checks.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <tuple>
#include <variant>

#include "vesk_logger/log_sink.h"

namespace fuzz {

namespace {

using exiv2_wp::internal::CliExifTag;

bool isSame(const CliExifTag& a, const CliExifTag& b) {
    const auto fields = [](const CliExifTag& tag) {
        return std::tie(tag.key, tag.type, tag.value, tag.rationals, tag.integers, tag.count);
    };
    return fields(a) == fields(b);
}

}  // namespace

void require(bool holds, const char* rule) {
    if (!holds) {
        std::fprintf(stderr, "This doesn't hold: %s\n", rule);
        std::abort();
    }
}

bool isSame(float a, float b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

bool isSame(const exiv2_wp::internal::CliExifMetadata& a,
            const exiv2_wp::internal::CliExifMetadata& b) {
    if (a.tags.size() != b.tags.size()) {
        return false;
    }
    for (const auto& [key, tag] : a.tags) {
        const CliExifTag* const other = b.find(key);
        if (other == nullptr || !isSame(tag, *other)) {
            return false;
        }
    }
    return a.fileKey == b.fileKey && a.lensName == b.lensName && a.lensId == b.lensId &&
           isSame(a.focalLength, b.focalLength) && isSame(a.focalLength35mm, b.focalLength35mm) &&
           isSame(a.subjectDistance, b.subjectDistance) && isSame(a.fNumber, b.fNumber);
}

bool isSame(const exiv2_wp::SExivMetadataInfo& a, const exiv2_wp::SExivMetadataInfo& b) {
    const auto exact = [](const exiv2_wp::SExivMetadataInfo& info) {
        return std::tie(info.isApple, info.bitsPerSample, info.orientation, info.meteringMode,
                        info.lightSource, info.whiteBalance, info.cameraMaker, info.cameraModel,
                        info.lensMaker, info.reservedText, info.lensModel, info.dateTimeOriginal,
                        info.dateTimeIso);
    };
    return exact(a) == exact(b) && isSame(a.iso, b.iso) && isSame(a.exposureTime, b.exposureTime) &&
           isSame(a.focalLength, b.focalLength) && isSame(a.fNumber, b.fNumber) &&
           isSame(a.focalLength35mm, b.focalLength35mm) && isSame(a.exposureBias, b.exposureBias) &&
           isSame(a.lensFocalMin, b.lensFocalMin) && isSame(a.lensFocalMax, b.lensFocalMax) &&
           isSame(a.lensApertureAtFocalMin, b.lensApertureAtFocalMin) &&
           isSame(a.lensApertureAtFocalMax, b.lensApertureAtFocalMax) && isSame(a.rating, b.rating);
}

std::string textOf(const unsigned char* bytes, std::size_t count) {
    return {reinterpret_cast<const char*>(bytes), count};
}

std::string takeLine(std::string& text) {
    const std::size_t lineFeed = text.find('\n');
    std::string line = text.substr(0, lineFeed);
    text.erase(0, lineFeed == std::string::npos ? lineFeed : lineFeed + 1);
    return line;
}

int takeNumber(std::string& text) {
    std::uint32_t number = 0;
    for (unsigned i = 0; i < 4 && i < text.size(); ++i) {
        number |= std::uint32_t{static_cast<unsigned char>(text[i])} << (8 * i);
    }
    text.erase(0, 4);
    return static_cast<int>(number);
}

LogTexts::LogTexts() {
    vesk::setLogSink([this](const std::vector<vesk::LogItem>& items) {
        std::string text;
        for (const vesk::LogItem& item : items) {
            if (const auto* const literal = std::get_if<vesk::LogLiteral>(&item)) {
                text += literal->text;
            } else if (const auto* const value = std::get_if<std::string>(&item)) {
                text += *value;
            }
        }
        const std::size_t signatureEnd = text.find("): ");  // failures alone have one
        texts_.push_back(signatureEnd == std::string::npos ? text : text.substr(signatureEnd + 3));
    });
}

LogTexts::~LogTexts() {
    vesk::setLogSink([](const std::vector<vesk::LogItem>&) {});
}

}  // namespace fuzz
