#include "fuzz/literal_summary.h"

#include <cmath>
#include <limits>
#include <stdexcept>

#include "api/literal_patterns.h"
#include "text/literal_text.h"

namespace fuzz {

namespace {

using exiv2_wp::SExivMetadataInfo;
using exiv2_wp::internal::CliExifMetadata;
using exiv2_wp::internal::CliExifTag;
using test_support::literalDouble;
using test_support::literalFloat;
using test_support::literalHasDate;
using test_support::literalHasOffset;
using test_support::literalInteger;
using test_support::literalLensRange;
using test_support::literalLower;
using test_support::literalTrim;

class Summarizer {
public:
    explicit Summarizer(const CliExifMetadata& metadata) : metadata_(metadata) {}

    LiteralSummary run() {
        exposure();
        camera();
        lensRange();
        lens();
        codes();
        date();
        rating();
        return summary_;
    }

private:
    const CliExifTag* get(const std::string& key) const {
        const auto found = metadata_.tags.find(key);
        return found == metadata_.tags.end() ? nullptr : &found->second;
    }

    const CliExifTag* getFirst(const std::vector<std::string>& keys) const {
        for (const std::string& key : keys) {
            if (get(key) != nullptr) {
                return get(key);
            }
        }
        return nullptr;
    }

    void missing(const std::string& name) { summary_.lines.push_back("No Exif data: " + name); }

    static std::string textOf(const CliExifTag& tag) { return std::string(tag.value); }

    static bool isPlain(const std::string& text) {
        for (const char c : text) {
            if ((static_cast<unsigned char>(c) & 0x80U) != 0) {
                return false;
            }
        }
        return true;
    }

    static bool readFloat(const CliExifTag& tag, float& value) {
        if (!tag.rationals.empty()) {
            const auto numerator = static_cast<double>(tag.rationals[0].first);
            const auto denominator = static_cast<double>(tag.rationals[0].second);
            value = static_cast<float>(denominator == 0 ? numerator : numerator / denominator);
            return true;
        }
        if (!tag.integers.empty()) {
            value = static_cast<float>(tag.integers[0]);
            return true;
        }
        const auto number = literalDouble(textOf(tag));
        value = number ? static_cast<float>(*number) : value;
        return number.has_value();
    }

    void value(const std::string& name, float& destination) {
        const CliExifTag* const tag = getFirst(
            {"Exif.Photo." + name, "Exif.Image." + name, "Xmp.exif." + name, "Xmp.exifEX." + name});
        if (tag == nullptr) {
            missing(name);
        } else if (!readFloat(*tag, destination)) {
            summary_.lines.push_back("Cannot parse Exif data: " + name);
        }
    }

    void exposure() {
        float aperture = 0;
        value("ISOSpeedRatings", info().iso);
        value("ExposureTime", info().exposureTime);
        value("FNumber", info().fNumber);
        value("FocalLength", info().focalLength);
        value("ExposureBiasValue", info().exposureBias);
        value("FocalLengthIn35mmFilm", info().focalLength35mm);
        value("ApertureValue", aperture);
        if (info().fNumber == -1.0F && aperture != 0.0F) {
            info().fNumber =
                static_cast<float>(std::pow(std::sqrt(2.0), static_cast<double>(aperture)));
        }
    }

    void camera() {
        if (const CliExifTag* const make = get("Exif.Image.Make")) {
            info().cameraMaker = isPlain(textOf(*make)) ? textOf(*make) : "Unknown Camera Maker";
            info().isApple = literalLower(info().cameraMaker) == "apple";
        } else {
            missing("Exif.Image.Make");
        }
        const CliExifTag* model = get("Exif.Image.UniqueCameraModel");
        model = model != nullptr ? model : get("Exif.Image.Model");
        if (model != nullptr) {
            info().cameraModel = isPlain(textOf(*model)) ? textOf(*model) : "Unknown Camera Model";
        }
    }

    void range(float first, float second, float third, float fourth) {
        info().lensFocalMin = first;
        info().lensFocalMax = second;
        info().lensApertureAtFocalMin = third;
        info().lensApertureAtFocalMax = fourth;
    }

    void rangeOf(const CliExifTag& tag) {
        float values[4] = {};
        for (int i = 0; i < 4; ++i) {
            const auto& [numerator, denominator] = tag.rationals[static_cast<std::size_t>(i)];
            values[i] = static_cast<float>(numerator);
            if (denominator != 0) {
                values[i] /= static_cast<float>(denominator);
            }
        }
        range(values[0], values[1], values[2], values[3]);
    }

    void rangeOfModel() {
        const CliExifTag* const model = get("Exif.Photo.LensModel");
        const auto ends = literalLensRange(model == nullptr ? "" : textOf(*model));
        if (!ends) {
            return;
        }
        try {
            info().lensFocalMin = static_cast<float>(std::stoi(ends->first));
            info().lensFocalMax = static_cast<float>(std::stoi(ends->second));
        } catch (const std::out_of_range&) {
            // The fields stay as they are.
        }
    }

    void lensRange() {
        const CliExifTag* const tag = get("Exif.Photo.LensSpecification");
        if (tag != nullptr && tag->rationals.size() >= 4) {
            rangeOf(*tag);
            return;
        }
        if (tag == nullptr) {
            missing("Exif.Photo.LensSpecification");
        }
        range(0, 0, 0, 0);
        if (tag != nullptr) {
            rangeOfModel();
            return;
        }
        if (const CliExifTag* const canon = get("Exif.CanonCs.Lens")) {
            if (canon->integers.size() >= 3 && canon->integers[2] != 0) {
                const auto units = static_cast<float>(canon->integers[2]);
                info().lensFocalMin = static_cast<float>(canon->integers[1]) / units;
                info().lensFocalMax = static_cast<float>(canon->integers[0]) / units;
            }
            return;
        }
        const CliExifTag* const xmp = get("Xmp.exifEX.LensSpecification");
        if (xmp == nullptr) {
            missing("Xmp.exifEX.LensSpecification");
        } else if (xmp->rationals.size() >= 4) {
            rangeOf(*xmp);
        }
    }

    void lens() {
        if (const auto* const maker = getFirst({"Exif.Photo.LensMake", "Xmp.exifEX.LensMake"})) {
            info().lensMaker = isPlain(textOf(*maker)) ? textOf(*maker) : "Unknown Lens Maker";
        }
        if (const auto* const model = getFirst(
                {"Exif.Photo.LensModel", "Exif.Canon.LensModel", "Xmp.exifEX.LensModel"})) {
            info().lensModel = isPlain(textOf(*model)) ? textOf(*model) : "";
        }
    }

    void code(const std::vector<std::string>& keys, std::int32_t& destination) {
        for (const std::string& key : keys) {
            const CliExifTag* const tag = get(key);
            if (tag == nullptr) {
                continue;
            }
            const auto number =
                tag->integers.empty() ? literalInteger(textOf(*tag)) : tag->integers[0];
            if (number && *number >= std::numeric_limits<std::int32_t>::min() &&
                *number <= std::numeric_limits<std::int32_t>::max()) {
                destination = static_cast<std::int32_t>(*number);
                return;
            }
        }
    }

    void codes() {
        code({"Exif.Image.BitsPerSample"}, info().bitsPerSample);
        code({"Exif.Image.Orientation"}, info().orientation);
        code({"Exif.Image.MeteringMode", "Exif.Photo.MeteringMode"}, info().meteringMode);
        code({"Exif.Image.LightSource", "Exif.Photo.LightSource"}, info().lightSource);
        code({"Exif.Photo.WhiteBalance"}, info().whiteBalance);
    }

    std::string firstPresent(const std::vector<std::string>& keys) const {
        for (const std::string& key : keys) {
            if (get(key) != nullptr && !literalTrim(textOf(*get(key))).empty()) {
                return literalTrim(textOf(*get(key)));
            }
        }
        return "";
    }

    void date() {
        info().dateTimeOriginal =
            firstPresent({"Exif.Photo.DateTimeOriginal", "Exif.Image.DateTimeOriginal",
                          "Exif.Image.DateTime", "Exif.Photo.DateTimeDigitized"});
        const std::string zone =
            firstPresent({"Exif.Photo.OffsetTime", "Exif.Photo.OffsetTimeOriginal",
                          "Exif.Photo.OffsetTimeDigitized", "Exif.Image.TimeZoneOffset"});
        std::string iso = info().dateTimeOriginal;
        if (!literalHasDate(iso)) {
            return;
        }
        iso[4] = iso[7] = '-';
        iso[10] = 'T';
        info().dateTimeIso = literalHasOffset(zone) ? iso + zone : iso;
    }

    void rating() {
        const CliExifTag* const tag = getFirst({"Xmp.xmp.Rating", "Exif.Image.Rating"});
        if (tag != nullptr) {
            info().rating = literalFloat(textOf(*tag)).value_or(0.0F);
        }
    }

    SExivMetadataInfo& info() { return summary_.info; }

    const CliExifMetadata& metadata_;
    LiteralSummary summary_;
};

}  // namespace

LiteralSummary literalSummarize(const CliExifMetadata& metadata) {
    return Summarizer(metadata).run();
}

}  // namespace fuzz
