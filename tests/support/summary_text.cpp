#include "support/summary_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <locale>
#include <sstream>

namespace test_support {

namespace {

class FieldList {
public:
    FieldList() {
        text_.imbue(std::locale::classic());
        text_.precision(9);
    }

    void add(const char* name, float value) {
        text_ << name << ": ";
        std::isnan(value) ? text_ << "not a number\n" : text_ << value << '\n';
    }
    void add(const char* name, std::int32_t value) { text_ << name << ": " << value << '\n'; }
    void add(const char* name, bool value) {
        text_ << name << ": " << (value ? "true" : "false") << '\n';
    }
    void add(const char* name, const std::string& value) {
        text_ << name << ": " << ::testing::PrintToString(value) << '\n';
    }

    [[nodiscard]] std::string text() const { return text_.str(); }

private:
    std::ostringstream text_;
};

}  // namespace

std::string toText(const exiv2_wp::SExivMetadataInfo& info) {
    FieldList list;
    list.add("iso", info.iso);
    list.add("exposureTime", info.exposureTime);
    list.add("focalLength", info.focalLength);
    list.add("fNumber", info.fNumber);
    list.add("focalLength35mm", info.focalLength35mm);
    list.add("exposureBias", info.exposureBias);
    list.add("isApple", info.isApple);
    list.add("lensFocalMin", info.lensFocalMin);
    list.add("lensFocalMax", info.lensFocalMax);
    list.add("lensApertureAtFocalMin", info.lensApertureAtFocalMin);
    list.add("lensApertureAtFocalMax", info.lensApertureAtFocalMax);
    list.add("bitsPerSample", info.bitsPerSample);
    list.add("orientation", info.orientation);
    list.add("meteringMode", info.meteringMode);
    list.add("lightSource", info.lightSource);
    list.add("whiteBalance", info.whiteBalance);
    list.add("cameraMaker", info.cameraMaker);
    list.add("cameraModel", info.cameraModel);
    list.add("lensMaker", info.lensMaker);
    list.add("reservedText", info.reservedText);
    list.add("lensModel", info.lensModel);
    list.add("dateTimeOriginal", info.dateTimeOriginal);
    list.add("dateTimeIso", info.dateTimeIso);
    list.add("rating", info.rating);
    return list.text();
}

}  // namespace test_support
