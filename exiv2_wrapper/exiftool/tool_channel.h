#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "exiv2_wrapper/platform/platform.h"

namespace exiftool::internal {

/// What carries requests to the long-lived tool and its answers back. The protocol knows the tool
/// only through this; any stream pair can stand behind it.
class ToolChannel {
public:
    ToolChannel() = default;
    ToolChannel(const ToolChannel&) = delete;
    ToolChannel& operator=(const ToolChannel&) = delete;
    virtual ~ToolChannel() = default;

    /// Sends all bytes. Failures aren't reported: the answer that doesn't come tells.
    virtual void write(std::string_view bytes) = 0;

    /// Reads at most buffer.size() bytes; blocks until some arrive. 0: end, or a failed read.
    [[nodiscard]] virtual std::size_t read(std::span<char> buffer) = 0;

    /// How many processes of the tool are alive.
    [[nodiscard]] virtual exiv2_wp::internal::ErrorCode countActiveProcesses(
        std::uint32_t& count) = 0;

    /// Closes both directions and lets go of the tool, which has been asked to quit.
    virtual void close() = 0;
};

}  // namespace exiftool::internal
