#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>

#include "exiv2_wrapper/exiftool/tool_channel.h"
#include "exiv2_wrapper/platform/platform.h"

namespace exiftool::internal {

/// The real tool: its process, the two pipes to it, and what ends it with the host.
class ProcessChannel final : public ToolChannel {
public:
    ProcessChannel() = default;
    ProcessChannel(const ProcessChannel&) = delete;
    ProcessChannel& operator=(const ProcessChannel&) = delete;
    ~ProcessChannel() override;

    /// Starts exiftool.exe in `exiftoolDir`, to stay. False when that is empty or a step fails,
    /// which is logged; what was made by then is kept until this object dies. Call it once.
    [[nodiscard]] bool start(const std::filesystem::path& exiftoolDir);

    void write(std::string_view bytes) override;
    [[nodiscard]] std::size_t read(std::span<char> buffer) override;
    [[nodiscard]] exiv2_wp::internal::ErrorCode countActiveProcesses(std::uint32_t& count) override;
    void close() override;

private:
    [[nodiscard]] bool makePipes();
    [[nodiscard]] bool tieToHost();
    void closePipes();

    exiv2_wp::internal::Service service_;
    exiv2_wp::internal::Pipe output_;  // carries the tool's standard output and error
    exiv2_wp::internal::Pipe input_;   // carries the requests
};

/// False for `error` 0. Otherwise logs the failed step with the platform's code and returns true.
[[nodiscard]] bool checkStep(exiv2_wp::internal::ErrorCode error, const char* step);

}  // namespace exiftool::internal
