#include "faults/posix_calls.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <map>

#include "faults/failing_allocations.h"

namespace {

struct Calls {
    std::map<std::string, int> counts = {};
    std::string failing = {};
    int first = 0;
    int last = 0;
    int error = 0;
    bool areTransfersTiny = false;
};

// Never destroyed: what else is linked into the program may use these calls to its very end.
Calls& calls() {
    static auto* const instance = new Calls;
    return *instance;
}

// The error with which this use of a call fails; 0 when it doesn't.
int errorOf(const char* call) {
    const test_support::SafeAllocations safe;
    Calls& all = calls();
    const int number = ++all.counts[call];
    return all.failing == call && number >= all.first && number <= all.last ? all.error : 0;
}

// For calls that return -1 and set errno.
bool fails(const char* call) {
    const int error = errorOf(call);
    if (error != 0) {
        errno = error;
    }
    return error != 0;
}

std::size_t atMost(std::size_t size) {
    return calls().areTransfersTiny ? std::min<std::size_t>(size, 1) : size;
}

}  // namespace

namespace test_support {

FailingCall::FailingCall(const std::string& call, int number, int error, int times) {
    calls() = {.failing = call, .first = number, .last = number + times - 1, .error = error};
}

FailingCall::~FailingCall() {
    calls().failing.clear();
}

TinyTransfers::TinyTransfers() {
    calls().areTransfersTiny = true;
}

TinyTransfers::~TinyTransfers() {
    calls().areTransfersTiny = false;
}

int countCalls(const std::string& call) {
    return calls().counts[call];
}

void forgetCalls() {
    calls() = {};
}

}  // namespace test_support

extern "C" {

int __real_pipe2(int* ends, int flags);
int __wrap_pipe2(int* ends, int flags) {
    return fails("pipe2") ? -1 : __real_pipe2(ends, flags);
}

// What stands behind the command, a number or a pointer, is passed on as the C library does it.
int __real_fcntl(int descriptor, int command, ...);
int __wrap_fcntl(int descriptor, int command, ...) {
    va_list arguments;
    va_start(arguments, command);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    return fails("fcntl") ? -1 : __real_fcntl(descriptor, command, argument);
}

ssize_t __real_read(int descriptor, void* buffer, std::size_t size);
ssize_t __wrap_read(int descriptor, void* buffer, std::size_t size) {
    return fails("read") ? -1 : __real_read(descriptor, buffer, atMost(size));
}

ssize_t __real_write(int descriptor, const void* bytes, std::size_t size);
ssize_t __wrap_write(int descriptor, const void* bytes, std::size_t size) {
    return fails("write") ? -1 : __real_write(descriptor, bytes, atMost(size));
}

// A child that isn't there any more has been waited for by somebody else.
pid_t __real_waitpid(pid_t child, int* status, int options);
pid_t __wrap_waitpid(pid_t child, int* status, int options) {
    if (!fails("waitpid")) {
        return __real_waitpid(child, status, options);
    }
    const int error = errno;
    if (error == ECHILD) {
        static_cast<void>(__real_waitpid(child, nullptr, 0));
    }
    errno = error;
    return -1;
}

int __real_waitid(idtype_t type, id_t id, siginfo_t* info, int options);
int __wrap_waitid(idtype_t type, id_t id, siginfo_t* info, int options) {
    return fails("waitid") ? -1 : __real_waitid(type, id, info, options);
}

int __real_posix_spawn(pid_t* child, const char* path, const posix_spawn_file_actions_t* actions,
                       const posix_spawnattr_t* attributes, char* const* argv, char* const* envp);
int __wrap_posix_spawn(pid_t* child, const char* path, const posix_spawn_file_actions_t* actions,
                       const posix_spawnattr_t* attributes, char* const* argv, char* const* envp) {
    const int error = errorOf("posix_spawn");
    return error != 0 ? error : __real_posix_spawn(child, path, actions, attributes, argv, envp);
}

int __real_posix_spawn_file_actions_init(posix_spawn_file_actions_t* actions);
int __wrap_posix_spawn_file_actions_init(posix_spawn_file_actions_t* actions) {
    const int error = errorOf("posix_spawn_file_actions_init");
    return error != 0 ? error : __real_posix_spawn_file_actions_init(actions);
}

int __real_posix_spawn_file_actions_adddup2(posix_spawn_file_actions_t* actions, int from, int to);
int __wrap_posix_spawn_file_actions_adddup2(posix_spawn_file_actions_t* actions, int from, int to) {
    const int error = errorOf("posix_spawn_file_actions_adddup2");
    return error != 0 ? error : __real_posix_spawn_file_actions_adddup2(actions, from, to);
}

int __real_posix_spawn_file_actions_addopen(posix_spawn_file_actions_t* actions, int descriptor,
                                            const char* path, int flags, mode_t mode);
int __wrap_posix_spawn_file_actions_addopen(posix_spawn_file_actions_t* actions, int descriptor,
                                            const char* path, int flags, mode_t mode) {
    const int error = errorOf("posix_spawn_file_actions_addopen");
    return error != 0
               ? error
               : __real_posix_spawn_file_actions_addopen(actions, descriptor, path, flags, mode);
}

int __real_posix_spawn_file_actions_addclosefrom_np(posix_spawn_file_actions_t* actions, int from);
int __wrap_posix_spawn_file_actions_addclosefrom_np(posix_spawn_file_actions_t* actions, int from) {
    const int error = errorOf("posix_spawn_file_actions_addclosefrom_np");
    return error != 0 ? error : __real_posix_spawn_file_actions_addclosefrom_np(actions, from);
}

int __real_posix_spawnattr_init(posix_spawnattr_t* attributes);
int __wrap_posix_spawnattr_init(posix_spawnattr_t* attributes) {
    const int error = errorOf("posix_spawnattr_init");
    return error != 0 ? error : __real_posix_spawnattr_init(attributes);
}

int __real_posix_spawnattr_setflags(posix_spawnattr_t* attributes, short flags);
int __wrap_posix_spawnattr_setflags(posix_spawnattr_t* attributes, short flags) {
    const int error = errorOf("posix_spawnattr_setflags");
    return error != 0 ? error : __real_posix_spawnattr_setflags(attributes, flags);
}

int __real_posix_spawnattr_setpgroup(posix_spawnattr_t* attributes, pid_t group);
int __wrap_posix_spawnattr_setpgroup(posix_spawnattr_t* attributes, pid_t group) {
    const int error = errorOf("posix_spawnattr_setpgroup");
    return error != 0 ? error : __real_posix_spawnattr_setpgroup(attributes, group);
}

int __real_posix_spawnattr_setsigmask(posix_spawnattr_t* attributes, const sigset_t* mask);
int __wrap_posix_spawnattr_setsigmask(posix_spawnattr_t* attributes, const sigset_t* mask) {
    const int error = errorOf("posix_spawnattr_setsigmask");
    return error != 0 ? error : __real_posix_spawnattr_setsigmask(attributes, mask);
}

int __real_posix_spawnattr_setsigdefault(posix_spawnattr_t* attributes, const sigset_t* defaults);
int __wrap_posix_spawnattr_setsigdefault(posix_spawnattr_t* attributes, const sigset_t* defaults) {
    const int error = errorOf("posix_spawnattr_setsigdefault");
    return error != 0 ? error : __real_posix_spawnattr_setsigdefault(attributes, defaults);
}

}  // extern "C"
