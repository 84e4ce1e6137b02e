#include "exiv2_wrapper/model/metadata_cache.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <deque>
#include <future>
#include <mutex>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "exiv2_wrapper/log/log.h"
#include "exiv2_wrapper/model/cache_key.h"
#include "exiv2_wrapper/model/print_all_parser.h"
#include "exiv2_wrapper/model/summary_parser.h"
#include "exiv2_wrapper/runner/process_runner.h"
#include "exiv2_wrapper/text/path_text.h"
#include "exiv2_wrapper/text/text.h"

namespace exiv2_wp::internal {

namespace {

using Record = std::shared_ptr<const CliExifMetadata>;
using SharedRecord = std::shared_future<Record>;

constexpr auto kSignature =
    "class std::shared_ptr<struct exiv2_wp::`anonymous namespace'::CliExifMetadata const > __cdecl "
    "exiv2_wp::`anonymous-namespace'::readExifMetadataFromCliCached(const class "
    "std::filesystem::path &)";

constexpr std::size_t kCapacity = 200;
constexpr std::size_t kEvictedAtOnce = 40;

// Ordinary image formats, of which nobody expects a summary: a failed run is not worth a line.
constexpr std::array<std::string_view, 28> kOrdinaryExtensions = {
    "jpg",  "jpeg", "jpe",  "jfif", "png", "bmp", "dib", "gif", "webp", "heic",
    "heif", "hif",  "avif", "jxl",  "jp2", "j2k", "jpf", "jpx", "psd",  "psb",
    "tga",  "exr",  "hdr",  "ppm",  "pgm", "pbm", "pnm", "ico",
};

struct Cache {
    std::mutex cacheMutex;
    std::unordered_map<std::string, SharedRecord> cacheTable;  // guarded by cacheMutex
    std::deque<std::string> cacheOrder;  // guarded by cacheMutex; keys, the oldest first

    // The entry of an unfinished computation may go like any other: whoever waits for it holds its
    // future.
    void evictOldest() {
        for (std::size_t i = 0; i < kEvictedAtOnce && !cacheOrder.empty(); ++i) {
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

struct CacheEntry {
    SharedRecord record;
    std::optional<std::promise<Record>> promise;  // only for the caller that has to compute
};

// Call with cacheMutex held.
CacheEntry getOrCreateEntry(const std::string& key) {
    Cache& shared = cache();
    if (const auto found = shared.cacheTable.find(key); found != shared.cacheTable.end()) {
        return {found->second, std::nullopt};
    }
    if (shared.cacheTable.size() >= kCapacity) {
        shared.evictOldest();
    }
    CacheEntry entry;
    entry.promise.emplace();
    entry.record = entry.promise->get_future().share();
    shared.cacheOrder.push_back(key);
    try {
        shared.cacheTable.emplace(key, entry.record);
    } catch (...) {
        shared.cacheOrder.pop_back();
        throw;
    }
    return entry;
}

// Owned by the caller that computes a key: whatever happens to it, nobody waits for ever.
class computationGuard {
public:
    computationGuard(std::string key, std::promise<Record> promise)
        : key_(std::move(key)), promise_(std::move(promise)) {}
    computationGuard(const computationGuard&) = delete;
    computationGuard& operator=(const computationGuard&) = delete;
    ~computationGuard() {
        if (!isDelivered_) {
            abandon();
        }
    }

    [[nodiscard]] const std::string& key() const { return key_; }

    Record deliver(const Record& record) {
        promise_.set_value(record);
        isDelivered_ = true;
        return record;
    }

private:
    // An exception is on its way to the caller. Those who wait get null, and the next caller
    // starts anew.
    void abandon() noexcept {
        try {
            promise_.set_value(nullptr);
        } catch (...) {
            // It was set already, so nobody waits.
        }
        const std::lock_guard lock(cache().cacheMutex);
        cache().erase(key_);
    }

    std::string key_;
    std::promise<Record> promise_;
    bool isDelivered_ = false;
};

bool isOrdinaryImage(const std::filesystem::path& file) {
    const std::string extension = lowerCased(utf8Path(file.extension()));
    return !extension.empty() &&
           std::find(kOrdinaryExtensions.begin(), kOrdinaryExtensions.end(),
                     std::string_view(extension).substr(1)) != kOrdinaryExtensions.end();
}

// The summary is a gift: without it the record is used all the same.
void addSummary(const std::filesystem::path& file, CliExifMetadata& record) {
    ToolOutput output;
    if (!runExiv2Cli({asciiArgument("pr"), file.native()}, output)) {
        if (!isOrdinaryImage(file)) {
            logFailure(kSignature, "Exiv2 failed run pr cli command for ", file);
        }
        return;
    }
    if (!parseSummaryOutput(output.text(), record)) {
        logFailure(kSignature, "Exiv2 failed to parse additional metadata output for ", file);
    }
}

// Null when the file has no usable metadata; that has been logged then.
Record readRecord(const std::filesystem::path& file, const std::string& key) {
    ToolOutput output;
    if (!runExiv2Cli({asciiArgument("-PXEkycv"), asciiArgument("-q"), file.native()}, output)) {
        logFailure(kSignature, "Exiv2 failed run -PXEkycv cli command for ", file);
        return nullptr;
    }
    const auto record = std::make_shared<CliExifMetadata>();
    record->fileKey = key;
    if (!parsePrintAllOutput(output.text(), *record)) {
        logFailure(kSignature, "Exiv2 failed to parse PrintAll output for ", file);
        return nullptr;
    }
    addSummary(file, *record);
    return record;
}

}  // namespace

std::shared_ptr<const CliExifMetadata> readExifMetadataFromCliCached(
    const std::filesystem::path& file) {
    std::string key = makeCacheKey(file);
    CacheEntry entry;
    {
        const std::lock_guard lock(cache().cacheMutex);
        entry = getOrCreateEntry(key);
    }
    if (!entry.promise) {
        return entry.record.get();
    }
    computationGuard guard(std::move(key), *std::move(entry.promise));
    return guard.deliver(readRecord(file, guard.key()));
}

}  // namespace exiv2_wp::internal
