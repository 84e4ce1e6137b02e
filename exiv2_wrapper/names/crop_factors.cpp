#include "exiv2_wrapper/names/crop_factors.h"

#include <array>
#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/names/canonical_names.h"
#include "exiv2_wrapper/names/crop_factor_rows.h"

namespace exiv2_wp {

namespace internal {

namespace {

constexpr float kFullFrame = 1.0F;

// The factors by canonical name, so that a query is canonicalised once and found by one search.
// The outcome is that of comparing it with one model after another in the order of their names: of
// two models with one canonical name the first would count (the list has none such today).
class CropFactorTable {
public:
    CropFactorTable() {
        const std::map<std::string_view, float> models = cropFactorsByModel();
        std::size_t length = 0;
        for (const auto& [model, cropFactor] : models) {
            length += model.size();
        }
        names_.resize(length);

        std::span<char> room = names_;
        for (const auto& [model, cropFactor] : models) {
            const std::size_t used = writeLensCanonical(model, room);
            insert({room.data(), used}, cropFactor);
            room = room.subspan(used);
        }
    }

    [[nodiscard]] float find(std::string_view canonicalName) const {
        return slots_[placeOf(canonicalName)].cropFactor;
    }

private:
    struct Slot {
        std::string_view name = {};  // into names_; empty: the slot is free
        float cropFactor = kFullFrame;
    };

    // A power of two, and more than twice as many as there are names: a search meets its name or a
    // free slot after a step or two.
    static constexpr std::size_t kSlots = 1024;
    static_assert(kSlots > 2 * kCropFactorRowCount);

    // The slot of a name, or the free one in which it would be.
    [[nodiscard]] std::size_t placeOf(std::string_view name) const {
        std::size_t place = std::hash<std::string_view>()(name) % kSlots;
        while (!slots_[place].name.empty() && slots_[place].name != name) {
            place = (place + 1) % kSlots;
        }
        return place;
    }

    void insert(std::string_view name, float cropFactor) {
        Slot& slot = slots_[placeOf(name)];
        if (slot.name.empty()) {
            slot = {name, cropFactor};
        }
    }

    std::vector<char> names_;  // all canonical names, one behind the other
    std::array<Slot, kSlots> slots_;
};

// Made by the first lookup, not when the library is loaded.
const CropFactorTable& cropFactorTable() {
    static const CropFactorTable table;
    return table;
}

}  // namespace

std::map<std::string_view, float> cropFactorsByModel() {
    std::map<std::string_view, float> models;
    for (const CropFactorRow& row : cropFactorRows()) {
        models.emplace(row.model, row.cropFactor);
    }
    return models;
}

}  // namespace internal

// The two parts are joined with nothing between them, which the canonical form allows: blanks
// don't count.
float getCropFactor(const std::string& make, const std::string& model) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): written before it is read
    std::array<char, internal::kLongestModel> name;
    std::span<char> room = name;
    for (const std::string* const part : {&make, &model}) {
        const std::size_t used = internal::writeLensCanonical(*part, room);
        if (used > room.size()) {
            return internal::kFullFrame;  // longer than any name of the list
        }
        room = room.subspan(used);
    }
    return internal::cropFactorTable().find({name.data(), name.size() - room.size()});
}

}  // namespace exiv2_wp
