#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace photoinfo {

/// The line that shows how far a long piece of work is: a bar, what is done of how much, the rate
/// and the time left, for a terminal of this many columns, of which it fills all but the last. What
/// doesn't fit is left out, the bar first. Nothing is known of the rate before anything is done.
[[nodiscard]] std::string progressLine(std::size_t done, std::size_t total,
                                       std::chrono::duration<double> elapsed, std::size_t columns);

/// Shows that line on standard error and keeps it up to date; nothing at all when that isn't a
/// terminal. One thread uses it. The line is gone when this dies.
class ProgressBar {
public:
    explicit ProgressBar(std::size_t total);
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar();

    void show(std::size_t done);

private:
    std::size_t total_;
    std::chrono::steady_clock::time_point begin_;
    std::size_t columns_ = 0;  // of the line that is shown; 0: none is
};

}  // namespace photoinfo
