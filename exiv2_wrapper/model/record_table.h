#pragma once

#include <cstddef>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "exiv2_wrapper/model/cli_exif_metadata.h"

/// The cache's table: for each file that is known or being read, the one reading of it. At most 200
/// files are kept, and the 40 that came first go when the next comes. Any thread may call; nothing
/// blocks for longer than a look at the table.
namespace exiv2_wp::internal {

/// Null: the file has no usable metadata.
using Record = std::shared_ptr<const CliExifMetadata>;
using SharedRecord = std::shared_future<Record>;

/// Owned by the caller that reads a file: whatever happens to it, nobody waits for ever. One that
/// dies without having delivered lets those who wait have null, and the next caller starts anew.
class computationGuard {
public:
    computationGuard(std::string key, std::promise<Record> promise) noexcept
        : key_(std::move(key)), promise_(std::move(promise)) {}
    computationGuard(computationGuard&& other) noexcept
        : key_(std::move(other.key_)),
          promise_(std::move(other.promise_)),
          isDelivered_(std::exchange(other.isDelivered_, true)) {}
    computationGuard& operator=(computationGuard&&) = delete;
    computationGuard(const computationGuard&) = delete;
    computationGuard& operator=(const computationGuard&) = delete;
    ~computationGuard() {
        if (!isDelivered_) {
            abandon();
        }
    }

    [[nodiscard]] const std::string& key() const { return key_; }

    Record deliver(const Record& record);

private:
    void abandon() noexcept;

    std::string key_;
    std::promise<Record> promise_;
    bool isDelivered_ = false;
};

struct CacheEntry {
    SharedRecord record;
    std::optional<computationGuard> guard;  ///< only for the caller that has to read the file
};

/// The entry of a key.
[[nodiscard]] CacheEntry getOrCreateEntry(const std::string& key);

using KeySet = std::unordered_set<std::string>;

/// The same, but no value when a new entry would push out one of these.
[[nodiscard]] std::optional<CacheEntry> getOrCreateEntryBeside(const KeySet& kept,
                                                               const std::string& key);

[[nodiscard]] bool isSettled(const SharedRecord& record);

/// How many keys there are before the first that isn't known.
[[nodiscard]] std::size_t countKnown(const std::vector<std::string>& keys);

}  // namespace exiv2_wp::internal
