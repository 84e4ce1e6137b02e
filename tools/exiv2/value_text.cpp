// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/value_text.h"

#include <array>
#include <charconv>
#include <concepts>
#include <limits>
#include <sstream>
#include <string_view>
#include <typeinfo>
#include <vector>

namespace exiv2_tool {
namespace {

void append(std::string& text, std::integral auto number) {
    std::array<char, std::numeric_limits<std::int64_t>::digits10 + 3> digits{};
    const auto end = std::to_chars(digits.begin(), digits.end(), number).ptr;
    text.append(digits.begin(), end);
}

template <typename Number>
void append(std::string& text, const std::pair<Number, Number>& rational) {
    append(text, rational.first);
    text += '/';
    append(text, rational.second);
}

template <typename Element>
void appendList(std::string& text, const std::vector<Element>& elements) {
    bool isFirst = true;
    for (const Element& element : elements) {
        if (!isFirst) {
            text += ' ';
        }
        isFirst = false;
        append(text, element);
    }
}

void append(std::string& text, const Exiv2::DataValue& value) {
    std::vector<Exiv2::byte> bytes(static_cast<std::size_t>(value.size()));
    value.copy(bytes.data());
    appendList(text, bytes);
}

void append(std::string& text, const Exiv2::AsciiValue& value) {
    text += std::string_view(value.value_).substr(0, value.value_.find('\0'));
}

template <typename Element>
void append(std::string& text, const Exiv2::ValueType<Element>& value) {
    appendList(text, value.value_);
}

/// Whether the value is exactly of this class; then it has been appended.
template <typename Class>
bool isAppended(std::string& text, const Exiv2::Value& value) {
    if (typeid(value) != typeid(Class)) {
        return false;
    }
    append(text, static_cast<const Class&>(value));
    return true;
}

/// The commonest kinds first.
template <typename... Classes>
bool isAppendedAsOneOf(std::string& text, const Exiv2::Value& value) {
    return (isAppended<Classes>(text, value) || ...);
}

}  // namespace

void appendNumber(std::string& text, std::int64_t number) {
    append(text, number);
}

void appendValue(std::string& text, const Exiv2::Value& value) {
    if (!isAppendedAsOneOf<Exiv2::UShortValue, Exiv2::AsciiValue, Exiv2::ULongValue,
                           Exiv2::URationalValue, Exiv2::DataValue, Exiv2::ShortValue,
                           Exiv2::RationalValue, Exiv2::LongValue>(text, value)) {
        std::ostringstream stream;
        stream << value;
        text += stream.str();
    }
}

}  // namespace exiv2_tool
