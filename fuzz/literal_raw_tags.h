#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/model/cli_exif_metadata.h"

/// Slow second versions of what ExivReader answers.
namespace fuzz {

/// One tag of a record, or none.
class LiteralTag {
public:
    LiteralTag(const exiv2_wp::internal::CliExifMetadata& metadata, const std::string& key);

    [[nodiscard]] bool isFound() const { return isFound_; }
    [[nodiscard]] std::string text() const { return std::string(tag_.value); }

    template <typename Number>
    [[nodiscard]] std::optional<std::pair<Number, Number>> pairAt(int index) const {
        const std::vector<Element> pairs = asPairs();
        return has(pairs, index) ? narrowed<Number>(pairs[static_cast<std::size_t>(index)])
                                 : std::nullopt;
    }

    [[nodiscard]] std::optional<std::uint32_t> numberAt(int index) const;

    template <typename Number>
    [[nodiscard]] std::vector<Number> numbers(int count) const {
        std::vector<Number> numbers;
        for (const auto& quotient : asNumbers()) {
            if (static_cast<std::int64_t>(numbers.size()) >= count || !quotient ||
                !isIn<Number>(*quotient)) {
                break;
            }
            numbers.push_back(static_cast<Number>(*quotient));
        }
        return numbers;
    }

    [[nodiscard]] std::vector<std::pair<std::uint32_t, std::uint32_t>> pairs(int count) const;

private:
    using Element = std::pair<std::int64_t, std::int64_t>;

    template <typename Number>
    static bool isIn(std::int64_t value) {
        return value >= std::int64_t{std::numeric_limits<Number>::min()} &&
               value <= std::int64_t{std::numeric_limits<Number>::max()};
    }

    template <typename Number>
    static std::optional<std::pair<Number, Number>> narrowed(const Element& pair) {
        if (!isIn<Number>(pair.first) || !isIn<Number>(pair.second)) {
            return std::nullopt;
        }
        return std::pair(static_cast<Number>(pair.first), static_cast<Number>(pair.second));
    }

    template <typename List>
    static bool has(const List& list, int index) {
        return index >= 0 && static_cast<std::size_t>(index) < list.size();
    }

    // The rationals, or the integers over 1: a tag never has both.
    [[nodiscard]] std::vector<Element> asPairs() const;
    // The integers, or the rationals divided; none for a quotient beyond 64 bits.
    [[nodiscard]] std::vector<std::optional<std::int64_t>> asNumbers() const;

    exiv2_wp::internal::CliExifTag tag_;
    bool isFound_ = false;
};

/// What two more runs of the tool for one key give, when both print `printed`.
class LiteralToolReading {
public:
    LiteralToolReading(const std::string& printed, const std::string& key);

    [[nodiscard]] std::optional<std::string> bytes() const;
    [[nodiscard]] std::optional<std::uint32_t> number(int index) const;

private:
    std::string value_;  // empty: nothing was read
};

[[nodiscard]] std::vector<exiv2_wp::ExivReader::XMPData> literalXmp(
    const exiv2_wp::internal::CliExifMetadata& metadata);

}  // namespace fuzz
