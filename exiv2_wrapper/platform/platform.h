#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>

#include "exiv2_wrapper/text/path_text.h"

/// All that the library asks of the operating system but for conversions of text, which are in
/// path_text.h. platform_win32.cpp and platform_posix.cpp fulfil it, function by function in this
/// order; they hold calls and error codes, no decisions.
namespace exiv2_wp::internal {

/// 0, or the platform's error code (GetLastError, errno).
using ErrorCode = std::uint32_t;

/// Owns one platform handle (a HANDLE or a descriptor) and closes it when it dies. Moves, never
/// copies. Holds the native value as an integer, so that this header needs neither type.
class Handle {
public:
    static constexpr std::intptr_t kNone = -1;

    Handle() = default;
    explicit Handle(std::intptr_t value) : value_(value) {}
    Handle(Handle&& other) noexcept : value_(other.release()) {}
    Handle& operator=(Handle&& other) noexcept;
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() { close(); }

    [[nodiscard]] bool isOpen() const { return value_ != kNone; }
    [[nodiscard]] std::intptr_t value() const { return value_; }
    /// Gives the native value up without closing it.
    std::intptr_t release();
    /// Closes at once; does nothing when it holds nothing.
    void close();

private:
    std::intptr_t value_ = kNone;
};

struct Pipe {
    Handle readEnd;
    Handle writeEnd;
};

/// A started child process. On POSIX a child that nobody has waited for is waited for when its
/// owner dies, so that none is left behind; the owner therefore lets go of the child's pipe first.
class Process {
public:
    Process() = default;
    /// `process` is a process handle or a process id, `thread` a thread handle or Handle::kNone.
    Process(std::intptr_t process, std::intptr_t thread) : process_(process), thread_(thread) {}
    Process(Process&& other) noexcept;
    Process& operator=(Process&& other) noexcept;
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    ~Process() { close(); }

    [[nodiscard]] bool isStarted() const { return process_ != Handle::kNone; }
    [[nodiscard]] std::intptr_t value() const { return process_; }
    /// Windows: closes the thread's handle, then the process's. POSIX: reaps the child.
    void close();
    /// Forgets the child without closing or reaping anything.
    void release();

private:
    std::intptr_t process_ = Handle::kNone;
    std::intptr_t thread_ = Handle::kNone;
};

/// What Handle::close does with a value that is open.
void closeHandle(std::intptr_t handle);

/// What Process::close does with a child that was started.
void closeProcess(std::intptr_t process, std::intptr_t thread);

/// A new pipe of the platform's default size. On Windows both ends can be inherited; on POSIX no
/// other child ever inherits either end, whichever thread starts it, and neither end takes the
/// place of a standard descriptor that the host has closed.
[[nodiscard]] ErrorCode makePipe(Pipe& pipe);

/// Keeps this end from every child started later. On POSIX it is so from birth.
[[nodiscard]] ErrorCode keepFromChildren(const Handle& end);

/// Starts `tool` with `arguments` (the program's name not among them), without a window: standard
/// output goes to `output`, standard input and error are the host's own, the environment and the
/// current directory too. The cost doesn't depend on how much memory the host has.
/// On POSIX a standard input or error that the host has closed, or has marked as closed on exec, is
/// the null device for the child; no descriptor but these three is inherited; the child starts with
/// no signal blocked and with SIGPIPE and SIGCHLD at their defaults, while the host's own signal
/// settings stay as they are.
[[nodiscard]] ErrorCode startRun(const std::filesystem::path& tool,
                                 std::span<const NativeString> arguments, const Handle& output,
                                 Process& process);

/// Reads at most buffer.size() bytes; blocks until some arrive. 0: end of file, or a failed read.
[[nodiscard]] std::size_t readSome(const Handle& readEnd, std::span<char> buffer);

/// Waits for the child's end, without limit, and returns its exit code; 1 when the code can't be
/// learnt. On POSIX that is the case for every child of a host that ignores SIGCHLD or waits for
/// children that aren't its own; a child ended by a signal has `kCrash` plus the signal's number.
[[nodiscard]] std::uint32_t waitForExitCode(Process& process);

/// The lowest exit code by which Windows tells that a child didn't end of its own will.
inline constexpr std::uint32_t kCrash = 0x80000000;

/// True for the exit code of a child that crashed or was ended from outside. The highest codes are
/// those of programs that return a small negative number.
[[nodiscard]] constexpr bool isCrash(std::uint32_t exitCode) {
    constexpr std::uint32_t kSmallNegatives = 0xFFFFFF00;
    return exitCode >= kCrash && exitCode < kSmallNegatives;
}

/// Writes all bytes; blocks while the pipe is full. On POSIX a reader that is gone is an error like
/// any other: no SIGPIPE reaches the host, and its signal settings stay as they are.
[[nodiscard]] ErrorCode writeAll(const Handle& writeEnd, std::string_view bytes);

/// A tool that is started once and stays, and what ends it with the host. On POSIX a closed `job`
/// ends the tool at once, killed host included; it goes before the two processes, which are then
/// reaped.
struct Service {
    Process process;
    Process guard;  ///< POSIX: the process that ends the tool when the host has ended
    Handle job;     ///< Windows: the job object. POSIX: the guard's lifeline to the host
};

/// Starts `tool` with `arguments` (plain ASCII, a blank before each), hidden, with standard input
/// from `input`, standard output and error to `output`, in the host's environment and current
/// directory. On Windows the path is not quoted.
/// On POSIX its guard is started first, and the tool joins the guard's process group: the guard
/// reads the lifeline, which only the host holds, and kills the group when it ends. That needs no
/// thread of the host to stay, leaves no moment in which a killed host leaves a tool behind, and
/// can't hit another process, since the group's number isn't given away while the guard lives. Both
/// inherit no descriptor but those named, and start with the signals that `startRun` promises.
[[nodiscard]] ErrorCode startService(const std::filesystem::path& tool, std::string_view arguments,
                                     const Handle& input, const Handle& output, Service& service);

/// Makes the job, tells it to end its processes with the host, and puts the tool into it. On POSIX
/// all three have been done by `startService`.
[[nodiscard]] ErrorCode createJob(Service& service);
[[nodiscard]] ErrorCode killJobWithHost(const Service& service);
[[nodiscard]] ErrorCode assignToJob(const Service& service);

/// Lets go of what is only needed to start the tool: on Windows its process and thread handles.
void settleService(Service& service);

/// How many processes of the tool are alive.
[[nodiscard]] ErrorCode countActiveProcesses(const Service& service, std::uint32_t& count);

/// Gives a tool that has been asked to quit, and whose pipes are closed, its time: it is never
/// ended for being slow. On POSIX it is waited for, two seconds at most, and reaped; one that takes
/// longer goes on under its guard until `endService`.
void awaitQuit(Service& service);

/// Parts with the tool for good. On Windows the job handle is given up without closing it, which
/// would end a tool that is still at quitting; the system closes it with the host. On POSIX the
/// guard ends a tool that is still there. No process is left behind.
void endService(Service& service);

/// This process's id: after a fork, what the parent started isn't the child's to end.
[[nodiscard]] std::uint32_t currentProcessId();

/// The 8.3 form of a path; empty where there is none, as everywhere on POSIX.
[[nodiscard]] std::filesystem::path shortPath(const std::filesystem::path& path);

/// The absolute form of a path, `path` itself when the system gives none. On Windows the system's
/// own, which knows the drives' current folders and shares of the network, and drops the dots and
/// blanks at the end of a name; the standard library's differs between compilers.
[[nodiscard]] NativeString fullPath(const std::filesystem::path& path);

/// The full path of the module that holds this library; empty when it can't be learnt.
[[nodiscard]] std::filesystem::path libraryFile();

}  // namespace exiv2_wp::internal
