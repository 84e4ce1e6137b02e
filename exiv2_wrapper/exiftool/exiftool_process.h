#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "exiv2_wrapper/exiftool/tool_channel.h"

namespace exiftool::internal {

/// The one long-lived tool: runs at most once in its life, serves one request after another.
class ExiftoolProcess {
public:
    /// Starts the tool in `exiftoolDir`. A failure is logged; the object then never runs.
    explicit ExiftoolProcess(const std::filesystem::path& exiftoolDir);
    /// A tool that runs already, at the other end of `channel`.
    explicit ExiftoolProcess(std::unique_ptr<ToolChannel> channel);
    ExiftoolProcess(const ExiftoolProcess&) = delete;
    ExiftoolProcess& operator=(const ExiftoolProcess&) = delete;
    ~ExiftoolProcess() = default;

    /// Sends one request and returns the whole answer, without carriage returns; the line with the
    /// tool's "{ready}" is still at its end. Empty when the tool doesn't run. Any thread may call;
    /// requests wait for each other. There is no time limit. The first request asks whether the
    /// tool is alive; a tool that dies later isn't noticed and isn't started again: its requests
    /// return what it had written.
    [[nodiscard]] std::string execute(const std::vector<std::string>& lines);

    /// Asks the tool to quit and closes the channel; later requests return empty answers. Does
    /// nothing when the tool doesn't run.
    void stop();

    /// `stop` for a host that ends. A request may have been cut off in another thread, together
    /// with the lock that it held: then, and in a process that was forked from the one that
    /// started the tool, it does nothing and returns false, and this object must not be destroyed.
    [[nodiscard]] bool stopAtUnload();

    /// Waits for no request that is under way.
    [[nodiscard]] bool isRunning() const { return isRunning_; }

private:
    void checkLiveness();
    void stopLocked();

    std::unique_ptr<ToolChannel> channel_;
    std::uint32_t ownerProcessId_;
    std::mutex requestLock_;
    bool isLivenessChecked_ = false;       // guarded by requestLock_
    std::atomic<bool> isRunning_ = false;  // changed under requestLock_
};

/// The process-wide tool. The first call starts it in `exiftoolDir`; later calls ignore their
/// argument, so a tool that was asked for before `exiftool::initialize` never runs. Asked to quit
/// when the library is unloaded.
[[nodiscard]] ExiftoolProcess& getExiftoolProcess(const std::filesystem::path& exiftoolDir);

}  // namespace exiftool::internal
