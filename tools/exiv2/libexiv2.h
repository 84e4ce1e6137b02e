// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <exiv2/exiv2.hpp>
#include <span>
#include <stdexcept>
#include <utility>

/// libexiv2, and what differs between its versions 0.27 and 0.28.
namespace exiv2_tool {

/// A size of memory: long in 0.27, std::size_t in 0.28.
using MemorySize = decltype(std::declval<Exiv2::Value>().size());

/// Owns an image: std::auto_ptr in 0.27, std::unique_ptr in 0.28.
using ImagePointer = decltype(Exiv2::ImageFactory::open(std::declval<const Exiv2::byte*>(), 0));

/// The image whose file consists of these bytes, which live longer than it. Its metadata isn't read
/// yet. Throws a std::exception when they are no image.
[[nodiscard]] inline ImagePointer openImage(std::span<const std::uint8_t> bytes) {
    if (!std::in_range<MemorySize>(bytes.size())) {
        throw std::length_error("the file is too large");
    }
    return Exiv2::ImageFactory::open(bytes.data(), static_cast<MemorySize>(bytes.size()));
}

/// Element `index` of a value, or of what holds one, as a whole number.
template <typename T>
[[nodiscard]] std::int64_t numberAt(const T& value, MemorySize index) {
    if constexpr (requires { value.toInt64(index); }) {
        return value.toInt64(index);
    } else {
        return value.toLong(index);
    }
}

}  // namespace exiv2_tool
