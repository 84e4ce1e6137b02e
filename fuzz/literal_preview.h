#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

/// Slow second versions of how a preview is taken out of the tool's output and handed to the host.
namespace fuzz {

/// By a stream over the whole output.
struct LiteralPreview {
    explicit LiteralPreview(const std::string& output);

    bool hasHeader = false;
    std::array<std::int32_t, 6> header = {};
    bool hasPayload = false;  ///< false when the output ends with the header's last digit
    std::string payload;
};

/// What a host hears of one request.
struct HostStory {
    bool result = false;
    std::int64_t top = -7;
    std::int64_t bottom = -7;
    std::vector<std::string> told;   ///< "name number number ...", one a callback
    std::vector<std::string> lines;  ///< what is logged, without the file's name

    void tell(std::string event, const std::vector<std::int64_t>& numbers);
    bool operator==(const HostStory&) const = default;
};

/// The story of a file whose extension is "raw", of a host that takes every payload.
[[nodiscard]] HostStory literalStory(const std::string& output, const std::string& format,
                                     int firstSize, int secondSize);

}  // namespace fuzz
