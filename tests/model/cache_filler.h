#pragma once

#include <string>

#include "exiv2_wrapper/model/record_table.h"

namespace test_support {

/// Lets 200 files that no test knows into the cache, as many as it holds, so that every other goes.
/// No tool is run for them.
inline void fillCache() {
    constexpr int kCapacity = 200;
    static int number = 0;
    for (int i = 0; i < kCapacity; ++i) {
        exiv2_wp::internal::CacheEntry entry =
            exiv2_wp::internal::getOrCreateEntry("no file " + std::to_string(number++));
        entry.guard.value().deliver(nullptr);
    }
}

}  // namespace test_support
