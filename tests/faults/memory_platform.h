#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "exiv2_wrapper/platform/platform.h"

/// A platform in the real one's place that lives in memory: its tools answer at once, any of its
/// steps can fail, and it knows what is still open. Any thread may use it.
namespace test_support {

/// What one run of the tool does.
struct Run {
    std::string output = {};
    std::uint32_t exitCode = 0;
};

class MemoryPlatform {
public:
    /// The error of a step that fails.
    static constexpr exiv2_wp::internal::ErrorCode kError = 5;

    /// Forgets everything, and with it what a test has left open.
    void reset();

    /// Runs whose first argument is this; others end with exit code 99.
    void answer(const std::string& firstArgument, const Run& run);
    /// Calls for many files (--read) are answered as the runs for one are. With a function, it may
    /// change what the call does.
    void knowReadCall(std::function<void(Run&)> change = {});
    /// What the long-lived tool writes for each request.
    void answerRequests(const std::string& answer);
    /// Lets the n-th step from now on fail, counted from 1; 0: none.
    void failAt(int step);
    /// Is told the name of each step before it is taken, on the thread that takes it.
    void onStep(std::function<void(const std::string&)> listener);
    /// Is called whenever a file's full path is asked for, as for the cache's key.
    void onFileName(std::function<void()> listener);

    /// The steps that could have failed, since the last call of `failAt`: for example "start run".
    [[nodiscard]] std::vector<std::string> steps() const;
    /// Handles that are open and processes that nobody has waited for or let go.
    [[nodiscard]] std::size_t countOpen() const;
    /// What no platform forgives: a handle closed twice, a read that never ends.
    [[nodiscard]] std::vector<std::string> misuses() const;
    /// The requests that have reached the long-lived tool.
    [[nodiscard]] std::vector<std::string> requests() const;

private:
    friend struct MemoryPlatformAccess;

    struct Stream {
        std::string bytes;
        std::intptr_t writeEnd = exiv2_wp::internal::Handle::kNone;
    };

    mutable std::mutex mutex_;  // guards all of the following
    std::map<std::string, Run> runs_;
    bool knowsReadCall_ = false;
    std::function<void(Run&)> changeReadCall_;
    std::string requestAnswer_;
    int stepsLeft_ = 0;
    std::function<void(const std::string&)> stepListener_;
    std::function<void()> fileNameListener_;
    std::vector<std::string> steps_;
    std::vector<std::string> misuses_;
    std::vector<std::string> requests_;
    std::set<std::intptr_t> open_;
    std::map<std::intptr_t, std::shared_ptr<Stream>> streams_;  // by both ends
    std::map<std::intptr_t, std::uint32_t> exitCodes_;          // by process
    std::shared_ptr<Stream> serviceInput_;
    std::shared_ptr<Stream> serviceOutput_;
    bool isServiceAlive_ = false;
    std::intptr_t nextHandle_ = 100;
};

/// The one in force.
MemoryPlatform& memoryPlatform();

}  // namespace test_support
