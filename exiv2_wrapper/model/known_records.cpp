#include "exiv2_wrapper/model/known_records.h"

#include <new>
#include <thread>

namespace exiv2_wp::internal {

namespace {

// As many files as the cache keeps. Only a host that spells its files in many ways needs more.
constexpr std::size_t kShelfCapacity = 200;

// The same record with a count of owners of its own: with the one count, every call would take its
// cache line away from all other processors.
KnownRecords::Record withOwnCount(const KnownRecords::Record& record) {
    if (record == nullptr) {
        return nullptr;
    }
    return {std::make_shared<KnownRecords::Record>(record), record.get()};
}

}  // namespace

std::optional<KnownRecords::Record> KnownRecords::find(const NativeString& path) {
    Shelf& shelf = ownShelf();
    const std::lock_guard lock(shelf.mutex);
    const auto found = shelf.records.find(path);
    return found == shelf.records.end() ? std::nullopt : std::optional(found->second);
}

void KnownRecords::remember(const NativeString& path, const Record& record) noexcept {
    Shelf& shelf = ownShelf();
    const std::lock_guard lock(shelf.mutex);
    if (shelf.records.size() >= kShelfCapacity) {
        shelf.records.clear();
    }
    try {
        shelf.records.insert_or_assign(path, withOwnCount(record));
    } catch (const std::bad_alloc&) {
        // The cache still knows it.
    }
}

void KnownRecords::forgetAll() noexcept {
    for (Shelf& shelf : shelves_) {
        const std::lock_guard lock(shelf.mutex);
        shelf.records.clear();
    }
}

KnownRecords::Shelf& KnownRecords::ownShelf() {
    return shelves_[std::hash<std::thread::id>()(std::this_thread::get_id()) % kShelves];
}

}  // namespace exiv2_wp::internal
