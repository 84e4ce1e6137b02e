#pragma once

#include <cstddef>
#include <functional>

namespace photoinfo {

class Interrupt;

/// What is done for several indices in a row before the work on them, by the thread that does it.
struct Preparation {
    std::size_t portion = 1;  ///< how many indices at most
    std::function<void(std::size_t begin, std::size_t end)> prepare = {};
};

/// Calls `work(index)` once for each index below `count`, lowest first, on `jobs` threads; shows a
/// progress bar meanwhile. Each thread takes a portion at a time, and prepares it first. An
/// interrupt, or an exception that `work` raises, keeps calls from being begun; those under way are
/// waited for. That exception, the first of several, comes out here.
void workInParallel(std::size_t count, std::size_t jobs, Interrupt& interrupt,
                    const std::function<void(std::size_t)>& work,
                    const Preparation& preparation = {});

}  // namespace photoinfo
