#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <unordered_map>

#include "exiv2_wrapper/model/cli_exif_metadata.h"
#include "exiv2_wrapper/text/path_text.h"

namespace exiv2_wp::internal {

/// What threads were told about files before, by the path as they spelled it. It stands in front of
/// the cache: asking again costs one search, without making the file's key, and threads that ask at
/// the same time don't wait for each other, nor do their processors for one counter of owners.
///
/// It has many shelves; a thread uses one of them, which it shares with few others. Whoever changes
/// the cache keeps the two in step: it calls `remember` only for an entry that the cache holds, and
/// `forgetAll` when one goes, both under the cache's mutex.
class KnownRecords {
public:
    using Record = std::shared_ptr<const CliExifMetadata>;

    /// What this thread's shelf has about a file; a null record is an answer too. No value:
    /// nothing.
    [[nodiscard]] std::optional<Record> find(const NativeString& path);

    /// Puts a record onto this thread's shelf. `path` is absolute: what it means never changes.
    /// Does nothing when memory is exhausted.
    void remember(const NativeString& path, const Record& record) noexcept;

    /// Empties all shelves. Records that were handed out stay with their owners.
    void forgetAll() noexcept;

private:
    static constexpr std::size_t kShelves = 64;
    static constexpr std::size_t kCacheLine = 64;

    struct PathHash {
        std::size_t operator()(const NativeString& path) const {
            return std::hash<std::basic_string_view<NativeString::value_type>>()(path);
        }
    };

    // Alone on its cache lines, so that processors don't take them from each other.
    struct alignas(kCacheLine) Shelf {
        std::mutex mutex;
        std::unordered_map<NativeString, Record, PathHash> records;  // guarded by mutex
    };

    Shelf& ownShelf();

    std::array<Shelf, kShelves> shelves_;
};

}  // namespace exiv2_wp::internal
