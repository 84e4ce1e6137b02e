#include "exiv2_wrapper/api/preview_failures.h"

#include <algorithm>
#include <iterator>

#include "exiv2_wrapper/model/cache_key.h"

namespace exiv2_wp::internal {

namespace {

constexpr std::size_t kCapacity = 1000;
constexpr std::size_t kForgottenAtOnce = 200;

}  // namespace

bool PreviewFailures::contains(const std::string& key) const {
    const std::lock_guard lock(mutex_);
    return keys_.contains(key);
}

void PreviewFailures::remember(const std::string& key) {
    const std::lock_guard lock(mutex_);
    if (keys_.size() >= kCapacity) {
        forgetSome();
    }
    keys_.insert(key);
}

std::size_t PreviewFailures::size() const {
    const std::lock_guard lock(mutex_);
    return keys_.size();
}

// Call with mutex_ held.
void PreviewFailures::forgetSome() {
    keys_.erase(keys_.begin(), std::next(keys_.begin(), kForgottenAtOnce));
}

PreviewFailures& previewFailures() {
    static PreviewFailures failures;
    return failures;
}

std::string makePreviewKey(const std::filesystem::path& file, int firstSize, int secondSize) {
    std::string key = makeCacheKey(file);
    const std::string sizes = std::to_string(firstSize) + "x" + std::to_string(secondSize);
    key.replace(0, std::min(key.size(), sizes.size()), sizes);
    return key;
}

}  // namespace exiv2_wp::internal
