#pragma once

#include <cstddef>

namespace benchmarks {

/// What this program has allocated by `operator new` and not given back, and how often it did. The
/// bytes are those that the allocator takes, its own book-keeping included.
struct Allocations {
    std::size_t bytes = 0;
    std::size_t count = 0;  ///< of allocations ever made
};
Allocations allocations();

}  // namespace benchmarks
