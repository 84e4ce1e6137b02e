#include "exiv2_wrapper/model/record_table.h"

#include <algorithm>
#include <chrono>
#include <deque>
#include <mutex>
#include <unordered_map>

namespace exiv2_wp::internal {

namespace {

constexpr std::size_t kCapacity = 200;
constexpr std::ptrdiff_t kEvictedAtOnce = 40;

struct Cache {
    std::mutex cacheMutex;
    std::unordered_map<std::string, SharedRecord> cacheTable;  // guarded by cacheMutex
    std::deque<std::string> cacheOrder;  // guarded by cacheMutex; the same keys, the oldest first

    [[nodiscard]] bool isFull() const { return cacheTable.size() >= kCapacity; }

    [[nodiscard]] bool wouldEvictOneOf(const KeySet& keys) const {
        return isFull() &&
               std::any_of(cacheOrder.begin(), cacheOrder.begin() + kEvictedAtOnce,
                           [&keys](const std::string& key) { return keys.contains(key); });
    }

    // The entry of an unfinished computation may go like any other: whoever waits for it holds its
    // future.
    void evictOldest() {
        for (std::ptrdiff_t i = 0; i < kEvictedAtOnce; ++i) {
            cacheTable.erase(cacheOrder.front());
            cacheOrder.pop_front();
        }
    }

    void erase(const std::string& key) {
        cacheTable.erase(key);
        const auto place = std::find(cacheOrder.begin(), cacheOrder.end(), key);
        if (place != cacheOrder.end()) {
            cacheOrder.erase(place);
        }
    }
};

// Made when it is first needed, not when the library is loaded.
Cache& cache() {
    static Cache instance;
    return instance;
}

}  // namespace

Record computationGuard::deliver(const Record& record) {
    promise_.set_value(record);
    isDelivered_ = true;
    return record;
}

void computationGuard::abandon() noexcept {
    try {
        promise_.set_value(nullptr);
    } catch (...) {
        // It was set already, so nobody waits.
    }
    const std::lock_guard lock(cache().cacheMutex);
    cache().erase(key_);
}

CacheEntry getOrCreateEntry(const std::string& key) {
    return getOrCreateEntryBeside({}, key).value();
}

std::optional<CacheEntry> getOrCreateEntryBeside(const KeySet& kept, const std::string& key) {
    Cache& shared = cache();
    const std::lock_guard lock(shared.cacheMutex);
    if (const auto found = shared.cacheTable.find(key); found != shared.cacheTable.end()) {
        return CacheEntry{found->second, std::nullopt};
    }
    if (shared.wouldEvictOneOf(kept)) {
        return std::nullopt;
    }
    if (shared.isFull()) {
        shared.evictOldest();
    }
    // Nothing fails once the entry is in the table, or nobody would ever settle it.
    std::string ownKey = key;
    std::promise<Record> promise;
    SharedRecord record = promise.get_future().share();
    shared.cacheOrder.push_back(key);
    try {
        shared.cacheTable.emplace(key, record);
    } catch (...) {
        shared.cacheOrder.pop_back();
        throw;
    }
    return CacheEntry{std::move(record), computationGuard(std::move(ownKey), std::move(promise))};
}

bool isSettled(const SharedRecord& record) {
    return record.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

std::size_t countKnown(const std::vector<std::string>& keys) {
    Cache& shared = cache();
    const std::lock_guard lock(shared.cacheMutex);
    const auto firstUnknown =
        std::find_if(keys.begin(), keys.end(), [&shared](const std::string& key) {
            const auto found = shared.cacheTable.find(key);
            return found == shared.cacheTable.end() || !isSettled(found->second);
        });
    return static_cast<std::size_t>(firstUnknown - keys.begin());
}

}  // namespace exiv2_wp::internal
