#include "faults/memory_platform.h"

#include <algorithm>
#include <utility>

#include "faults/failing_allocations.h"

namespace test_support {

using exiv2_wp::internal::ErrorCode;
using exiv2_wp::internal::Handle;
using exiv2_wp::internal::NativeString;
using exiv2_wp::internal::Pipe;
using exiv2_wp::internal::Process;
using exiv2_wp::internal::Service;

MemoryPlatform& memoryPlatform() {
    static MemoryPlatform instance;
    return instance;
}

void MemoryPlatform::reset() {
    const std::lock_guard lock(mutex_);
    runs_.clear();
    knowsReadCall_ = false;
    changeReadCall_ = nullptr;
    requestAnswer_.clear();
    stepsLeft_ = 0;
    stepListener_ = nullptr;
    fileNameListener_ = nullptr;
    steps_.clear();
    misuses_.clear();
    requests_.clear();
    open_.clear();
    streams_.clear();
    exitCodes_.clear();
    serviceInput_.reset();
    serviceOutput_.reset();
    isServiceAlive_ = false;
}

void MemoryPlatform::answer(const std::string& firstArgument, const Run& run) {
    const std::lock_guard lock(mutex_);
    runs_[firstArgument] = run;
}

void MemoryPlatform::knowReadCall(std::function<void(Run&)> change) {
    const std::lock_guard lock(mutex_);
    knowsReadCall_ = true;
    changeReadCall_ = std::move(change);
}

void MemoryPlatform::answerRequests(const std::string& answer) {
    const std::lock_guard lock(mutex_);
    requestAnswer_ = answer;
}

void MemoryPlatform::failAt(int step) {
    const std::lock_guard lock(mutex_);
    stepsLeft_ = step;
    steps_.clear();
}

void MemoryPlatform::onStep(std::function<void(const std::string&)> listener) {
    const std::lock_guard lock(mutex_);
    stepListener_ = std::move(listener);
}

void MemoryPlatform::onFileName(std::function<void()> listener) {
    const std::lock_guard lock(mutex_);
    fileNameListener_ = std::move(listener);
}

std::vector<std::string> MemoryPlatform::steps() const {
    const std::lock_guard lock(mutex_);
    return steps_;
}

std::size_t MemoryPlatform::countOpen() const {
    const std::lock_guard lock(mutex_);
    return open_.size() + exitCodes_.size();
}

std::vector<std::string> MemoryPlatform::misuses() const {
    const std::lock_guard lock(mutex_);
    return misuses_;
}

std::vector<std::string> MemoryPlatform::requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
}

// What the platform's functions do. Their own allocations never fail; what they hand to the library
// is made outside.
struct MemoryPlatformAccess {
    MemoryPlatform& platform = memoryPlatform();
    const SafeAllocations safe = {};

    // Takes a step; true when it is the one that fails.
    bool fails(const std::string& step) {
        std::function<void(const std::string&)> listener;
        {
            const std::lock_guard lock(platform.mutex_);
            listener = platform.stepListener_;
        }
        if (listener) {
            listener(step);
        }
        const std::lock_guard lock(platform.mutex_);
        platform.steps_.push_back(step);
        return platform.stepsLeft_ > 0 && --platform.stepsLeft_ == 0;
    }

    void close(std::intptr_t handle) {
        const std::lock_guard lock(platform.mutex_);
        if (platform.open_.erase(handle) == 0) {
            platform.misuses_.push_back("closed what isn't open");
        }
        if (const auto stream = platform.streams_.find(handle); stream != platform.streams_.end()) {
            if (stream->second->writeEnd == handle) {
                stream->second->writeEnd = Handle::kNone;
            }
            platform.streams_.erase(stream);
        }
    }

    std::uint32_t forget(std::intptr_t process) {
        const std::lock_guard lock(platform.mutex_);
        const auto found = platform.exitCodes_.find(process);
        if (found == platform.exitCodes_.end()) {
            platform.misuses_.push_back("waited for what isn't there");
            return 1;
        }
        const std::uint32_t exitCode = found->second;
        platform.exitCodes_.erase(found);
        return exitCode;
    }

    void makePipe(Pipe& pipe) {
        const std::lock_guard lock(platform.mutex_);
        const auto stream = std::make_shared<MemoryPlatform::Stream>();
        const std::intptr_t readEnd = platform.nextHandle_++;
        stream->writeEnd = platform.nextHandle_++;
        for (const std::intptr_t end : {readEnd, stream->writeEnd}) {
            platform.open_.insert(end);
            platform.streams_[end] = stream;
        }
        pipe.readEnd = Handle(readEnd);
        pipe.writeEnd = Handle(stream->writeEnd);
    }

    std::intptr_t addProcess(std::uint32_t exitCode) {
        platform.exitCodes_[platform.nextHandle_] = exitCode;
        return platform.nextHandle_++;
    }

    // Under the mutex, as is the next.
    Run runOf(const std::string& firstArgument) {
        const auto known = platform.runs_.find(firstArgument);
        return known == platform.runs_.end() ? Run{.exitCode = 99} : known->second;
    }

    Run readCall(std::size_t files) {
        Run call;
        for (std::size_t i = 0; i < files; ++i) {
            call.output += std::to_string(i);
            std::string outputs;
            for (const char* const argument : {"-PXEkycv", "pr"}) {
                const Run run = runOf(argument);
                call.output +=
                    " " + std::to_string(run.exitCode) + " " + std::to_string(run.output.size());
                outputs += run.output;
            }
            call.output += "\n" + outputs;
        }
        if (platform.changeReadCall_) {
            platform.changeReadCall_(call);
        }
        return call;
    }

    void startRun(std::span<const NativeString> arguments, const Handle& output, Process& process) {
        const std::lock_guard lock(platform.mutex_);
        const std::string first =
            arguments.empty() ? "" : std::string(arguments[0].begin(), arguments[0].end());
        const Run run = first == "--read" && platform.knowsReadCall_
                            ? readCall(arguments.size() - 1)
                            : runOf(first);
        platform.streams_.at(output.value())->bytes += run.output;
        process = Process(addProcess(run.exitCode), Handle::kNone);
    }

    std::size_t read(const Handle& readEnd, std::span<char> buffer) {
        const std::lock_guard lock(platform.mutex_);
        const auto found = platform.streams_.find(readEnd.value());
        if (found == platform.streams_.end()) {
            platform.misuses_.push_back("read from what isn't open");
            return 0;
        }
        MemoryPlatform::Stream& stream = *found->second;
        const bool isService = found->second == platform.serviceOutput_;
        if (stream.bytes.empty() &&
            (isService ? platform.isServiceAlive_ : stream.writeEnd != Handle::kNone)) {
            platform.misuses_.push_back("waited for bytes that never come");
        }
        const std::size_t count = std::min(buffer.size(), stream.bytes.size());
        std::copy_n(stream.bytes.begin(), count, buffer.begin());
        stream.bytes.erase(0, count);
        return count;
    }

    // A pipe that can't be read from stays so, and a tool that can't write any more ends.
    void breakPipe(const Handle& readEnd) {
        const std::lock_guard lock(platform.mutex_);
        const auto found = platform.streams_.find(readEnd.value());
        if (found != platform.streams_.end()) {
            found->second->bytes.clear();
            platform.isServiceAlive_ =
                platform.isServiceAlive_ && found->second != platform.serviceOutput_;
        }
    }

    void startService(const Handle& input, const Handle& output, Service& service) {
        const std::lock_guard lock(platform.mutex_);
        platform.serviceInput_ = platform.streams_.at(input.value());
        platform.serviceOutput_ = platform.streams_.at(output.value());
        platform.isServiceAlive_ = true;
        service.process = Process(addProcess(0), Handle::kNone);
    }

    // The tool gets what is written at once; a tool that can't be written to has ended.
    void write(const Handle& writeEnd, std::string_view bytes, bool isFailing) {
        const std::lock_guard lock(platform.mutex_);
        const auto found = platform.streams_.find(writeEnd.value());
        if (found == platform.streams_.end()) {
            platform.misuses_.push_back("wrote to what isn't open");
        } else if (isFailing || bytes.starts_with("-stay_open")) {
            platform.isServiceAlive_ = false;
        } else if (platform.isServiceAlive_) {
            platform.requests_.emplace_back(bytes);
            platform.serviceOutput_->bytes += platform.requestAnswer_;
        }
    }

    void createJob(Service& service) {
        const std::lock_guard lock(platform.mutex_);
        service.job = Handle(platform.nextHandle_);
        platform.open_.insert(platform.nextHandle_++);
    }

    bool isServiceAlive() {
        const std::lock_guard lock(platform.mutex_);
        return platform.isServiceAlive_;
    }

    void endService(Service& service) {
        service.job.close();
        service.process.close();
        const std::lock_guard lock(platform.mutex_);
        platform.isServiceAlive_ = false;
    }

    void tellOfFileName() {
        std::function<void()> listener;
        {
            const std::lock_guard lock(platform.mutex_);
            listener = platform.fileNameListener_;
        }
        if (listener) {
            listener();
        }
    }
};

}  // namespace test_support

namespace exiv2_wp::internal {

using Access = test_support::MemoryPlatformAccess;

namespace {

constexpr ErrorCode kError = test_support::MemoryPlatform::kError;

// A step that fails, or else does its work.
template <typename Work>
ErrorCode take(const char* step, const Work& work) {
    Access access;
    if (access.fails(step)) {
        return kError;
    }
    work(access);
    return 0;
}

}  // namespace

void closeHandle(std::intptr_t handle) {
    Access().close(handle);
}

void closeProcess(std::intptr_t process, std::intptr_t) {
    static_cast<void>(Access().forget(process));
}

ErrorCode makePipe(Pipe& pipe) {
    return take("make pipe", [&](Access& access) { access.makePipe(pipe); });
}

ErrorCode keepFromChildren(const Handle&) {
    return Access().fails("keep end from children") ? kError : 0;
}

ErrorCode startRun(const std::filesystem::path&, std::span<const NativeString> arguments,
                   const Handle& output, Process& process) {
    return take("start run", [&](Access& access) { access.startRun(arguments, output, process); });
}

std::size_t readSome(const Handle& readEnd, std::span<char> buffer) {
    Access access;
    if (access.fails("read")) {
        access.breakPipe(readEnd);
        return 0;
    }
    return access.read(readEnd, buffer);
}

std::uint32_t waitForExitCode(Process& process) {
    Access access;
    const bool isFailing = access.fails("wait");
    const std::uint32_t exitCode = access.forget(process.value());
    process.release();
    return isFailing ? 1 : exitCode;
}

ErrorCode writeAll(const Handle& writeEnd, std::string_view bytes) {
    Access access;
    const bool isFailing = access.fails("write");
    access.write(writeEnd, bytes, isFailing);
    return isFailing ? kError : 0;
}

ErrorCode startService(const std::filesystem::path&, std::string_view, const Handle& input,
                       const Handle& output, Service& service) {
    return take("start service",
                [&](Access& access) { access.startService(input, output, service); });
}

ErrorCode createJob(Service& service) {
    return take("create job", [&](Access& access) { access.createJob(service); });
}

ErrorCode killJobWithHost(const Service&) {
    return Access().fails("limit job") ? kError : 0;
}

ErrorCode assignToJob(const Service&) {
    return Access().fails("assign to job") ? kError : 0;
}

void settleService(Service&) {}

ErrorCode countActiveProcesses(const Service&, std::uint32_t& count) {
    return take("count processes",
                [&](Access& access) { count = access.isServiceAlive() ? 1 : 0; });
}

void awaitQuit(Service& service) {
    Access access;
    if (!access.isServiceAlive()) {
        access.endService(service);
    }
}

void endService(Service& service) {
    Access().endService(service);
}

std::uint32_t currentProcessId() {
    return 1;
}

std::filesystem::path shortPath(const std::filesystem::path&) {
    return {};
}

NativeString fullPath(const std::filesystem::path& path) {
    Access().tellOfFileName();
    return std::filesystem::absolute(path);
}

std::filesystem::path libraryFile() {
    return {};
}

}  // namespace exiv2_wp::internal
