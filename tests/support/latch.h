#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>

namespace test_support {

/// Holds threads up until it has been counted down to 0. Like std::latch, which MinGW's library can
/// leave waiting for ever.
class Latch {
public:
    explicit Latch(std::ptrdiff_t count) : count_(count) {}

    void count_down() {
        const std::lock_guard lock(mutex_);
        --count_;
        if (count_ == 0) {
            isOpen_.notify_all();
        }
    }

    void wait() {
        std::unique_lock lock(mutex_);
        isOpen_.wait(lock, [this] { return count_ <= 0; });
    }

    void arrive_and_wait() {
        count_down();
        wait();
    }

private:
    std::mutex mutex_;
    std::condition_variable isOpen_;
    std::ptrdiff_t count_;  // guarded by mutex_
};

}  // namespace test_support
