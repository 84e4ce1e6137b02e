#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>

#include "exiv2_wrapper/model/cli_exif_metadata.h"

/// How the raw-tag getters take single elements out of a tag. An element is a rational or an
/// integer of it; "no value" means that there is none at that index or that it lies outside the
/// range of the wanted type.
namespace exiv2_wp::internal {

template <typename Number>
using Pair = std::pair<Number, Number>;

/// Numerator and denominator of a rational; no value when either is out of range.
template <typename Number>
[[nodiscard]] std::optional<Pair<Number>> toPair(const Pair<std::int64_t>& rational) {
    if (!std::in_range<Number>(rational.first) || !std::in_range<Number>(rational.second)) {
        return std::nullopt;
    }
    return Pair<Number>(static_cast<Number>(rational.first), static_cast<Number>(rational.second));
}

/// An integer over 1; no value when it is out of range.
template <typename Number>
[[nodiscard]] std::optional<Pair<Number>> toPair(std::int64_t integer) {
    return toPair<Number>(Pair<std::int64_t>(integer, 1));
}

/// An integer as it is; no value when it is out of range.
template <typename Number>
[[nodiscard]] std::optional<Number> toNumber(std::int64_t integer) {
    return std::in_range<Number>(integer) ? std::optional(static_cast<Number>(integer))
                                          : std::nullopt;
}

/// A rational divided, truncated towards 0; its numerator when the denominator is 0. No value when
/// that is out of range, as is what -2^63 divided by -1 would give: no 64-bit number holds it.
template <typename Number>
[[nodiscard]] std::optional<Number> toNumber(const Pair<std::int64_t>& rational) {
    const auto [numerator, denominator] = rational;
    if (denominator == 0) {
        return toNumber<Number>(numerator);
    }
    if (denominator == -1 && numerator == std::numeric_limits<std::int64_t>::min()) {
        return std::nullopt;
    }
    return toNumber<Number>(numerator / denominator);
}

/// The element at `index` as a pair: of the rationals, else of the integers. A rational that is out
/// of range doesn't give way to an integer.
template <typename Number>
[[nodiscard]] std::optional<Pair<Number>> pairAt(const CliExifTag& tag, std::size_t index) {
    if (index < tag.rationals.size()) {
        return toPair<Number>(tag.rationals[index]);
    }
    return index < tag.integers.size() ? toPair<Number>(tag.integers[index]) : std::nullopt;
}

/// The element at `index` as a number: of the integers, else of the rationals. The other order than
/// for pairs, on purpose.
template <typename Number>
[[nodiscard]] std::optional<Number> numberAt(const CliExifTag& tag, std::size_t index) {
    if (index < tag.integers.size()) {
        return toNumber<Number>(tag.integers[index]);
    }
    return index < tag.rationals.size() ? toNumber<Number>(tag.rationals[index]) : std::nullopt;
}

}  // namespace exiv2_wp::internal
