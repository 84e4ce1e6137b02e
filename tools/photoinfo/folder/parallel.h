#pragma once

#include <cstddef>
#include <functional>

namespace photoinfo {

class Interrupt;

/// Calls `work(index)` once for each index below `count`, lowest first, on `jobs` threads; shows a
/// progress bar meanwhile. An interrupt, or an exception that `work` raises, keeps calls from being
/// begun; those under way are waited for. That exception, the first of several, comes out here.
void workInParallel(std::size_t count, std::size_t jobs, Interrupt& interrupt,
                    const std::function<void(std::size_t)>& work);

}  // namespace photoinfo
