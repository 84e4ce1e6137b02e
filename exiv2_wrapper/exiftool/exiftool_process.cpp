#include "exiv2_wrapper/exiftool/exiftool_process.h"

#include <utility>

#include "exiv2_wrapper/exiftool/process_channel.h"
#include "exiv2_wrapper/exiftool/request_protocol.h"
#include "exiv2_wrapper/log/log.h"
#include "exiv2_wrapper/platform/platform.h"

namespace exiftool::internal {

namespace {

namespace platform = exiv2_wp::internal;

struct UnloadDeleter {
    void operator()(ExiftoolProcess* process) const {
        if (process->stopAtUnload()) {
            delete process;
        }
    }
};

}  // namespace

ExiftoolProcess::ExiftoolProcess(const std::filesystem::path& exiftoolDir)
    : ownerProcessId_(platform::currentProcessId()) {
    auto channel = std::make_unique<ProcessChannel>();
    isRunning_ = channel->start(exiftoolDir);
    channel_ = std::move(channel);
}

ExiftoolProcess::ExiftoolProcess(std::unique_ptr<ToolChannel> channel)
    : channel_(std::move(channel)),
      ownerProcessId_(platform::currentProcessId()),
      isRunning_(true) {}

std::string ExiftoolProcess::execute(const std::vector<std::string>& lines) {
    const std::lock_guard lock(requestLock_);
    if (!isRunning_) {
        return {};
    }
    checkLiveness();
    if (!isRunning_) {
        return {};
    }
    channel_->write(frameRequest(lines));
    std::string answer = readAnswer(*channel_);
    trimAnswer(answer);
    return answer;
}

void ExiftoolProcess::stop() {
    const std::lock_guard lock(requestLock_);
    stopLocked();
}

bool ExiftoolProcess::stopAtUnload() {
    const std::unique_lock lock(requestLock_, std::try_to_lock);
    if (!lock.owns_lock() || ownerProcessId_ != platform::currentProcessId()) {
        return false;
    }
    stopLocked();
    return true;
}

// Once, on the first request: a tool that couldn't get going has ended by then.
void ExiftoolProcess::checkLiveness() {
    if (std::exchange(isLivenessChecked_, true)) {
        return;
    }
    std::uint32_t active = 0;
    const platform::ErrorCode error = channel_->countActiveProcesses(active);
    isRunning_ = error == 0 && active > 0;  // settled before a line is logged, which may raise
    static_cast<void>(checkStep(error, "QueryInformationJobObject"));
    if (!isRunning_) {
        platform::logPlain(platform::LogType::failure, "exiftool process could not start");
    }
}

void ExiftoolProcess::stopLocked() {
    if (!isRunning_) {
        return;
    }
    channel_->write(kQuitRequest);
    channel_->close();
    isRunning_ = false;
}

ExiftoolProcess& getExiftoolProcess(const std::filesystem::path& exiftoolDir) {
    static const std::unique_ptr<ExiftoolProcess, UnloadDeleter> process(
        new ExiftoolProcess(exiftoolDir));
    return *process;
}

}  // namespace exiftool::internal
