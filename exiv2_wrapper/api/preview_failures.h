#pragma once

#include <cstddef>
#include <filesystem>
#include <mutex>
#include <string>
#include <unordered_set>

namespace exiv2_wp::internal {

/// A bounded set of requests that have failed. Any thread may call any function.
class PreviewFailures {
public:
    [[nodiscard]] bool contains(const std::string& key) const;
    /// Remembers a request. When 1000 are known already, 200 of them are forgotten first: whichever
    /// come first in the set, which isn't the order in which they failed.
    void remember(const std::string& key);
    [[nodiscard]] std::size_t size() const;

private:
    void forgetSome();

    mutable std::mutex mutex_;
    std::unordered_set<std::string> keys_;  // guarded by mutex_
};

/// The set of the whole process, made when it is first asked for.
[[nodiscard]] PreviewFailures& previewFailures();

/// The key of a request: the file's cache key with its first characters overwritten by the sizes,
/// "/photos/a.jpg" becoming "640x480/a.jpg"; the sizes alone when the path is shorter.
/// Paths that differ only in what is overwritten share their failures. Kept: a key is never shown,
/// and a failure shared is a preview less, not a wrong one.
[[nodiscard]] std::string makePreviewKey(const std::filesystem::path& file, int firstSize,
                                         int secondSize);

}  // namespace exiv2_wp::internal
