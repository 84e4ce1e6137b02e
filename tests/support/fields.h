#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <locale>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <type_traits>

namespace test_support {

/// A record as text, "name: value" a line: equal exactly for equal ones. Numbers have all their
/// digits, texts are quoted, with escapes for bytes that don't print.
class Fields {
public:
    Fields() { text_.imbue(std::locale::classic()); }

    template <typename Value>
    Fields& add(const char* name, const Value& value) {
        text_ << name << ": ";
        if constexpr (std::is_floating_point_v<Value>) {
            text_.precision(std::numeric_limits<Value>::max_digits10);
            std::isnan(value) ? text_ << "not a number" : text_ << value;
        } else if constexpr (std::is_arithmetic_v<Value>) {
            text_ << std::boolalpha << value;
        } else {
            text_ << ::testing::PrintToString(value);
        }
        text_ << '\n';
        return *this;
    }
    /// A value that is missing.
    Fields& add(const char* name, std::nullopt_t) {
        text_ << name << ": unknown\n";
        return *this;
    }
    template <typename Value>
    Fields& add(const char* name, const std::optional<Value>& value) {
        return value ? add(name, *value) : add(name, std::nullopt);
    }
    template <typename Value>
    Fields& add(const char* name, const std::unique_ptr<Value>& value) {
        return value ? add(name, *value) : add(name, std::nullopt);
    }

    [[nodiscard]] std::string text() const { return text_.str(); }

private:
    std::ostringstream text_;
};

}  // namespace test_support
