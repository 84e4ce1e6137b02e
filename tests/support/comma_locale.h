#pragma once

#include <algorithm>
#include <array>
#include <clocale>
#include <locale>
#include <string>

namespace test_support {

/// Sets, during its life, what a host in another country sets: a global C++ locale with a decimal
/// comma and grouped digits, in which furthermore "x" is white space and "A" has no lower case;
/// and, where the system has one, a C locale with a decimal comma.
class CommaLocale {
public:
    CommaLocale()
        : cLocale_(std::setlocale(LC_ALL, nullptr)),
          locale_(std::locale::global(
              std::locale(std::locale(std::locale::classic(), new Numbers), new Characters))) {
        for (const char* const name : {"de_DE.UTF-8", "de_DE", "German"}) {
            if (std::setlocale(LC_ALL, name) != nullptr) {
                break;
            }
        }
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;
    ~CommaLocale() {
        std::locale::global(locale_);
        std::setlocale(LC_ALL, cLocale_.c_str());
    }

private:
    struct Numbers : std::numpunct<char> {
        [[nodiscard]] char do_decimal_point() const override { return ','; }
        [[nodiscard]] char do_thousands_sep() const override { return '.'; }
        [[nodiscard]] std::string do_grouping() const override { return "\3"; }
    };

    struct Characters : std::ctype<char> {
        Characters() : std::ctype<char>(table()) {}
        [[nodiscard]] char do_tolower(char c) const override {
            return c == 'A' ? c : std::ctype<char>::do_tolower(c);
        }
        static const mask* table() {
            static const auto kMasks = [] {
                std::array<mask, table_size> masks{};
                std::copy_n(classic_table(), table_size, masks.begin());
                masks['x'] = space;
                return masks;
            }();
            return kMasks.data();
        }
    };

    std::string cLocale_;
    std::locale locale_;
};

}  // namespace test_support
