#pragma once

#include <chrono>
#include <thread>

namespace test_support {

/// Looks each millisecond whether a condition holds. False when it hasn't for two minutes.
template <typename Condition>
[[nodiscard]] bool waitUntil(const Condition& condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(2);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

}  // namespace test_support
