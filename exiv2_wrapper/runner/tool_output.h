#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <span>
#include <string_view>

namespace exiv2_wp::internal {

/// The bytes that a tool has written, in one piece that grows at its end. It grows by the C
/// library's realloc, which can move a large piece without copying it or holding it twice: a
/// preview takes no more memory than its bytes.
class ToolOutput {
public:
    [[nodiscard]] std::string_view text() const { return {bytes_.get(), size_}; }

    void clear() { size_ = 0; }

    /// Room for `size` bytes behind the text, until the next call of a function that isn't const.
    /// Raises std::bad_alloc, and the text is as it was.
    [[nodiscard]] std::span<char> room(std::size_t size);

    /// Makes the first `count` bytes of that room part of the text.
    void keep(std::size_t count) { size_ += count; }

    /// Takes the first `count` bytes off the text; its room stays.
    void dropFront(std::size_t count);

private:
    struct Free {
        void operator()(char* bytes) const { std::free(bytes); }
    };

    std::unique_ptr<char, Free> bytes_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

}  // namespace exiv2_wp::internal
