#pragma once

#include <chrono>
#include <thread>

namespace test_support {

/// Looks each millisecond whether a condition holds. False when it hasn't for two minutes; the last
/// look comes after them, so that a machine that stands still meanwhile makes nothing fail.
template <typename Condition>
[[nodiscard]] bool waitUntil(const Condition& condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(2);
    for (;;) {
        const bool isLastLook = std::chrono::steady_clock::now() > end;
        if (condition()) {
            return true;
        }
        if (isLastLook) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

}  // namespace test_support
