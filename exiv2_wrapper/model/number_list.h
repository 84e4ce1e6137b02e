#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace exiv2_wp::internal {

/// Numerator and denominator; the denominator may be 0.
using Rational = std::pair<std::int64_t, std::int64_t>;

/// Appends the numbers among the words of `text`: whole numbers, or rationals of the form "1/2". A
/// word counts when all of it is such a number; others are skipped.
void readNumbers(std::string_view text, std::vector<std::int64_t>& numbers);
void readNumbers(std::string_view text, std::vector<Rational>& numbers);

/// The numbers in a text. They never change, but are read by the first question for them: few lists
/// are ever asked, and the dump of a maker note holds thousands of numbers. Any threads may ask at
/// once. A question raises nothing but std::bad_alloc; the next one then reads again.
template <typename Number>
class NumberList {
public:
    using const_iterator = const Number*;
    using iterator = const_iterator;

    NumberList() = default;
    /// `text` outlives the list and its copies.
    explicit NumberList(std::string_view text) : text_(text) {}
    explicit NumberList(const std::vector<Number>& numbers) : read_(new Numbers(numbers)) {}
    NumberList(std::initializer_list<Number> numbers) : read_(new Numbers(numbers)) {}
    NumberList(const NumberList& other) : text_(other.text_), read_(other.copyRead()) {}
    NumberList(NumberList&& other) noexcept
        : text_(other.text_), read_(other.read_.exchange(nullptr)) {}
    NumberList& operator=(const NumberList& other) { return *this = NumberList(other); }
    NumberList& operator=(NumberList&& other) noexcept {
        text_ = other.text_;
        other.read_ = read_.exchange(other.read_);
        return *this;
    }
    ~NumberList() { delete read_.load(); }

    [[nodiscard]] bool empty() const { return numbers().empty(); }
    [[nodiscard]] std::size_t size() const { return numbers().size(); }
    [[nodiscard]] const Number& front() const { return numbers().front(); }
    [[nodiscard]] const Number& operator[](std::size_t index) const { return numbers()[index]; }
    [[nodiscard]] const_iterator begin() const { return numbers().data(); }
    [[nodiscard]] const_iterator end() const { return begin() + size(); }

    [[nodiscard]] friend bool operator==(const NumberList& a, const NumberList& b) {
        return a.numbers() == b.numbers();
    }

private:
    using Numbers = std::vector<Number>;

    [[nodiscard]] const Numbers& numbers() const {
        const Numbers* const read = read_.load(std::memory_order_acquire);
        return read == nullptr ? readText() : *read;
    }

    // Of several threads that read at the same time, the first one's list is kept.
    const Numbers& readText() const {
        auto read = std::make_unique<Numbers>();
        readNumbers(text_, *read);
        read->shrink_to_fit();
        const Numbers* earlier = nullptr;
        return read_.compare_exchange_strong(earlier, read.get()) ? *read.release() : *earlier;
    }

    [[nodiscard]] const Numbers* copyRead() const {
        const Numbers* const read = read_.load();
        return read == nullptr ? nullptr : new Numbers(*read);
    }

    std::string_view text_;
    mutable std::atomic<const Numbers*> read_ = nullptr;
};

using IntegerList = NumberList<std::int64_t>;
using RationalList = NumberList<Rational>;

}  // namespace exiv2_wp::internal
