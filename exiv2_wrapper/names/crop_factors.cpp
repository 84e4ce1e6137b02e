#include <string>
#include <unordered_map>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/names/crop_factor_rows.h"

namespace exiv2_wp {

namespace {

constexpr float kFullFrame = 1.0F;

std::string canonicalName(std::string name) {
    ImageLens_canonizeName(name);
    return name;
}

using CropFactorTable = std::unordered_map<std::string, float>;

// Made by the first lookup, not when the library is loaded. The first row of a model counts; no two
// models have one canonical name.
const CropFactorTable& cropFactorTable() {
    static const CropFactorTable table = [] {
        CropFactorTable factors;
        for (const internal::CropFactorRow& row : internal::cropFactorRows()) {
            factors.emplace(canonicalName(std::string(row.model)), row.cropFactor);
        }
        return factors;
    }();
    return table;
}

}  // namespace

// The two parts are joined with nothing between them, which the canonical form allows: blanks
// don't count.
float getCropFactor(const std::string& make, const std::string& model) {
    const CropFactorTable& table = cropFactorTable();
    const auto found = table.find(canonicalName(make + model));
    return found == table.end() ? kFullFrame : found->second;
}

}  // namespace exiv2_wp
