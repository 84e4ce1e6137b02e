#include "exiv2_wrapper/runner/tool_output.h"

#include <algorithm>
#include <new>

namespace exiv2_wp::internal {

std::span<char> ToolOutput::room(std::size_t size) {
    if (capacity_ - size_ < size) {
        const std::size_t capacity = std::max(size_ + size, 2 * capacity_);
        char* const bytes = static_cast<char*>(std::realloc(bytes_.get(), capacity));
        if (bytes == nullptr) {
            throw std::bad_alloc();
        }
        static_cast<void>(bytes_.release());  // realloc has taken care of it
        bytes_.reset(bytes);
        capacity_ = capacity;
    }
    return {bytes_.get() + size_, size};
}

void ToolOutput::dropFront(std::size_t count) {
    const std::string_view rest = text().substr(count);
    std::copy(rest.begin(), rest.end(), bytes_.get());
    size_ = rest.size();
}

}  // namespace exiv2_wp::internal
