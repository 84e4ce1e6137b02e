#include "exiv2_wrapper/model/metadata_cache.h"

#include "exiv2_wrapper/model/cache_key.h"
#include "exiv2_wrapper/model/record_reader.h"
#include "exiv2_wrapper/model/record_table.h"

namespace exiv2_wp::internal {

std::shared_ptr<const CliExifMetadata> readExifMetadataFromCliCached(
    const std::filesystem::path& file) {
    CacheEntry entry = getOrCreateEntry(makeCacheKey(file));
    if (!entry.guard) {
        return entry.record.get();
    }
    return entry.guard->deliver(readRecord(file, entry.guard->key()));
}

}  // namespace exiv2_wp::internal
