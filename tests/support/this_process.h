#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

/// What tests see and change of the process that they run in.
namespace test_support {

/// Puts files in the place of this process's standard input and standard error, as child processes
/// inherit them, until it dies. One at a time.
class RedirectedStreams {
public:
    /// `input` is read from its beginning, `error` is made anew.
    RedirectedStreams(const std::filesystem::path& input, const std::filesystem::path& error);
    RedirectedStreams(const RedirectedStreams&) = delete;
    RedirectedStreams& operator=(const RedirectedStreams&) = delete;
    ~RedirectedStreams();

private:
    struct Saved;
    std::unique_ptr<Saved> saved_;
};

/// Sets a variable of this process's environment, which child processes inherit; it has its value
/// from before, or none, when this dies.
class EnvironmentVariable {
public:
    EnvironmentVariable(std::string name, const std::string& value);
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;
    ~EnvironmentVariable();

private:
    std::string name_;
    std::optional<std::string> before_;
};

/// How many descriptors, on Windows handles, this process has open. A system that doesn't count
/// them gives the number of a fresh handle, which is larger by every handle that was left open.
std::size_t countOpenHandles();

/// How many handles the threads library may keep of threads that have ended, for later ones.
extern const std::size_t kHandlesKeptForThreads;

/// Whether this process has a child, running or ended but never waited for. Never on Windows, where
/// a child that is kept is a handle.
bool hasChildren();

}  // namespace test_support
