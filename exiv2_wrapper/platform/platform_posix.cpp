#include <dlfcn.h>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <ctime>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "exiv2_wrapper/platform/platform.h"
#include "exiv2_wrapper/text/text.h"

namespace exiv2_wp::internal {

namespace {

constexpr std::uint32_t kUnknownExitCode = 1;

// Far more than it takes, each being lost to another thread that closes a file at the wrong moment.
constexpr int kStartAttempts = 50;

ErrorCode toErrorCode(int error) {
    return static_cast<ErrorCode>(error);
}

ErrorCode lastError() {
    return toErrorCode(errno);
}

int descriptorOf(const Handle& handle) {
    return static_cast<int>(handle.value());
}

// A host that has closed a standard descriptor gets its number from the next call that opens
// something. A pipe must not stay there: what the host prints would become the tool's output.
ErrorCode moveOffStandardDescriptors(Handle& end) {
    if (descriptorOf(end) > STDERR_FILENO) {
        return 0;
    }
    const int moved = fcntl(descriptorOf(end), F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (moved == -1) {
        return lastError();
    }
    end = Handle(moved);
    return 0;
}

// Where the host has closed a standard descriptor, its number is soon another file's; one that is
// open for a program to inherit isn't closed on exec.
bool isForChildren(int descriptor) {
    const int flags = fcntl(descriptor, F_GETFD);
    return flags != -1 && (flags & FD_CLOEXEC) == 0;
}

// What a child does between its birth and its program, as posix_spawn wants it told. The first
// error is kept, and every later step then does nothing.
class SpawnPlan {
public:
    SpawnPlan() {
        note(posix_spawn_file_actions_init(&actions_));
        note(posix_spawnattr_init(&attributes_));
    }
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;
    ~SpawnPlan() {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }

    void giveDescriptor(int own, int childs) {
        note(posix_spawn_file_actions_adddup2(&actions_, own, childs));
    }

    // The host's own standard descriptor, or the null device where the host has closed it: a tool
    // that opens a photo must not get it as its standard error.
    void shareStandardDescriptor(int descriptor, int openMode) {
        if (isForChildren(descriptor)) {
            giveDescriptor(descriptor, descriptor);
        } else {
            openNullDevice(descriptor, openMode);
        }
    }

    void openNullDevice(int descriptor, int openMode) {
        note(posix_spawn_file_actions_addopen(&actions_, descriptor, "/dev/null", openMode, 0));
    }

    // Call it last: the descriptors handed over above are numbered by then.
    void closeOtherDescriptors() {
        note(posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1));
    }

    // Into the process group of this number; 0 makes a new one, of the child's own number.
    void joinGroup(pid_t group) {
        note(posix_spawnattr_setpgroup(&attributes_, group));
        flags_ |= POSIX_SPAWN_SETPGROUP;
    }

    // A host may block or ignore what a command-line tool relies on; the child starts afresh.
    void resetSignals() {
        sigset_t none;
        sigemptyset(&none);
        sigset_t defaults;
        sigemptyset(&defaults);
        sigaddset(&defaults, SIGPIPE);
        sigaddset(&defaults, SIGCHLD);
        note(posix_spawnattr_setsigmask(&attributes_, &none));
        note(posix_spawnattr_setsigdefault(&attributes_, &defaults));
        flags_ |= POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
    }

    ErrorCode start(const std::filesystem::path& program, std::span<const NativeString> arguments,
                    Process& process) {
        std::vector<char*> argv;
        argv.push_back(const_cast<char*>(program.c_str()));
        for (const NativeString& argument : arguments) {
            argv.push_back(const_cast<char*>(argument.c_str()));
        }
        argv.push_back(nullptr);

        note(posix_spawnattr_setflags(&attributes_, static_cast<short>(flags_)));
        pid_t child = 0;
        if (error_ == 0) {
            note(posix_spawn(&child, program.c_str(), &actions_, &attributes_, argv.data(),
                             environ));
        }
        if (error_ == 0) {
            process = Process(child, Handle::kNone);
        }
        return toErrorCode(error_);
    }

private:
    void note(int error) { error_ = error_ == 0 ? error : error_; }

    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
    int flags_ = 0;
    int error_ = 0;
};

std::uint32_t reap(pid_t child) {
    int status = 0;
    pid_t reaped = 0;
    do {
        reaped = waitpid(child, &status, 0);
    } while (reaped < 0 && errno == EINTR);
    if (reaped != child) {
        return kUnknownExitCode;
    }
    return WIFEXITED(status) ? static_cast<std::uint32_t>(WEXITSTATUS(status))
                             : kCrash + static_cast<std::uint32_t>(WTERMSIG(status));
}

// Keeps SIGPIPE from the host for as long as it lives: the signal is blocked in this thread alone,
// and one that a write has raised meanwhile is taken back. One that was pending before stays.
class SigpipeShield {
public:
    SigpipeShield() {
        sigset_t pending;
        sigpending(&pending);
        wasPending_ = sigismember(&pending, SIGPIPE) == 1;
        sigemptyset(&sigpipe_);
        sigaddset(&sigpipe_, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &sigpipe_, &before_);
    }
    SigpipeShield(const SigpipeShield&) = delete;
    SigpipeShield& operator=(const SigpipeShield&) = delete;
    ~SigpipeShield() {
        if (!wasPending_) {
            const timespec noWait{};
            while (sigtimedwait(&sigpipe_, nullptr, &noWait) < 0 && errno == EINTR) {
            }
        }
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }

private:
    sigset_t sigpipe_{};
    sigset_t before_{};
    bool wasPending_ = false;
};

// The guard of a long-lived tool: when nobody holds the other end of its standard input any more,
// the host is gone, and the whole group goes after it.
constexpr auto kGuardProgram = "/bin/sh";
constexpr auto kGuardScript = "read -r line; kill -9 0";

// How long a tool that was asked to quit is waited for.
constexpr int kQuitMilliseconds = 2000;

ErrorCode startGuard(const Handle& lifeline, Process& guard) {
    SpawnPlan plan;
    plan.giveDescriptor(descriptorOf(lifeline), STDIN_FILENO);
    plan.openNullDevice(STDOUT_FILENO, O_WRONLY);
    plan.openNullDevice(STDERR_FILENO, O_WRONLY);
    plan.closeOtherDescriptors();
    plan.joinGroup(0);
    plan.resetSignals();
    const NativeString arguments[] = {"-c", kGuardScript};
    return plan.start(kGuardProgram, arguments, guard);
}

std::vector<NativeString> splitAtBlanks(std::string_view text) {
    std::vector<NativeString> words;
    for (std::string_view word = takeWord(text); !word.empty(); word = takeWord(text)) {
        words.emplace_back(word);
    }
    return words;
}

pid_t processIdOf(const Process& process) {
    return static_cast<pid_t>(process.value());
}

// A child that has ended but hasn't been waited for counts as ended, and so does one that somebody
// else has waited for.
bool isAlive(const Process& process) {
    siginfo_t info{};
    const auto id = static_cast<id_t>(process.value());
    return waitid(P_PID, id, &info, WEXITED | WNOHANG | WNOWAIT) == 0 && info.si_pid == 0;
}

void waitForEnd(const Process& process, int milliseconds) {
    constexpr timespec kMillisecond = {0, 1'000'000};
    for (; milliseconds > 0 && isAlive(process); --milliseconds) {
        nanosleep(&kMillisecond, nullptr);
    }
}

// The current directory when the library was loaded: the name by which the system knows the library
// may be relative to it.
struct DirectoryAtLoad {
    DirectoryAtLoad() noexcept : isKnown(getcwd(path.data(), path.size()) != nullptr) {}

    std::array<char, PATH_MAX> path{};
    bool isKnown;
};

const DirectoryAtLoad directoryAtLoad;

}  // namespace

// A descriptor is gone after close, whatever close returns; trying again could hit another's.
void closeHandle(std::intptr_t handle) {
    ::close(static_cast<int>(handle));
}

void closeProcess(std::intptr_t process, std::intptr_t) {
    reap(static_cast<pid_t>(process));
}

ErrorCode makePipe(Pipe& pipe) {
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return lastError();
    }
    pipe.readEnd = Handle(ends[0]);
    pipe.writeEnd = Handle(ends[1]);
    const ErrorCode error = moveOffStandardDescriptors(pipe.readEnd);
    return error != 0 ? error : moveOffStandardDescriptors(pipe.writeEnd);
}

ErrorCode keepFromChildren(const Handle&) {
    return 0;
}

// Another thread's file may have a closed standard descriptor's number for a moment. When it is
// gone before the child could share it, the start fails, and the next attempt sees the number
// closed.
ErrorCode startRun(const std::filesystem::path& tool, std::span<const NativeString> arguments,
                   const Handle& output, Process& process) {
    ErrorCode error = EBADF;
    for (int attempt = 0; attempt < kStartAttempts && error == EBADF; ++attempt) {
        SpawnPlan plan;
        plan.giveDescriptor(descriptorOf(output), STDOUT_FILENO);
        plan.shareStandardDescriptor(STDIN_FILENO, O_RDONLY);
        plan.shareStandardDescriptor(STDERR_FILENO, O_WRONLY);
        plan.closeOtherDescriptors();
        plan.resetSignals();
        error = plan.start(tool, arguments, process);
    }
    return error;
}

std::size_t readSome(const Handle& readEnd, std::span<char> buffer) {
    ssize_t count = 0;
    do {
        count = ::read(descriptorOf(readEnd), buffer.data(), buffer.size());
    } while (count < 0 && errno == EINTR);
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

std::uint32_t waitForExitCode(Process& process) {
    const std::uint32_t exitCode = reap(static_cast<pid_t>(process.value()));
    process.release();
    return exitCode;
}

ErrorCode writeAll(const Handle& writeEnd, std::string_view bytes) {
    const SigpipeShield shield;
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptorOf(writeEnd), bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            return lastError();
        }
        bytes.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return 0;
}

ErrorCode startService(const std::filesystem::path& tool, std::string_view arguments,
                       const Handle& input, const Handle& output, Service& service) {
    Pipe lifeline;
    if (const ErrorCode error = makePipe(lifeline); error != 0) {
        return error;
    }
    if (const ErrorCode error = startGuard(lifeline.readEnd, service.guard); error != 0) {
        return error;
    }
    service.job = std::move(lifeline.writeEnd);

    SpawnPlan plan;
    plan.giveDescriptor(descriptorOf(input), STDIN_FILENO);
    plan.giveDescriptor(descriptorOf(output), STDOUT_FILENO);
    plan.giveDescriptor(descriptorOf(output), STDERR_FILENO);
    plan.closeOtherDescriptors();
    plan.joinGroup(processIdOf(service.guard));
    plan.resetSignals();
    const ErrorCode error = plan.start(tool, splitAtBlanks(arguments), service.process);
    if (error != 0) {
        endService(service);  // nothing to guard
    }
    return error;
}

ErrorCode createJob(Service&) {
    return 0;
}

ErrorCode killJobWithHost(const Service&) {
    return 0;
}

ErrorCode assignToJob(const Service&) {
    return 0;
}

void settleService(Service&) {}

ErrorCode countActiveProcesses(const Service& service, std::uint32_t& count) {
    count = isAlive(service.process) ? 1 : 0;
    return 0;
}

void awaitQuit(Service& service) {
    waitForEnd(service.process, kQuitMilliseconds);
    if (!isAlive(service.process)) {
        endService(service);
    }
}

void endService(Service& service) {
    service.job.close();  // the guard ends what is left
    // Somebody has ended the guard: the group's number is still its own while the tool is in it.
    if (isAlive(service.process) && !isAlive(service.guard)) {
        ::kill(-processIdOf(service.guard), SIGKILL);
    }
    service.process.close();
    service.guard.close();
}

std::uint32_t currentProcessId() {
    return static_cast<std::uint32_t>(::getpid());
}

std::filesystem::path shortPath(const std::filesystem::path&) {
    return {};
}

NativeString fullPath(const std::filesystem::path& path) {
    if (path.is_absolute()) {
        return path.native();
    }
    std::error_code error;
    const std::filesystem::path full = std::filesystem::absolute(path, error);
    return error ? path.native() : full.native();
}

std::filesystem::path libraryFile() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&libraryFile), &info) == 0 ||
        info.dli_fname == nullptr) {
        return {};
    }
    const std::filesystem::path file = info.dli_fname;
    if (file.is_relative() && !directoryAtLoad.isKnown) {
        return {};
    }
    return directoryAtLoad.path.data() / file;
}

}  // namespace exiv2_wp::internal
