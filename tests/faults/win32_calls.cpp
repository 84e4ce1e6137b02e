#include "faults/win32_calls.h"

#include <windows.h>

#include <map>

#include "faults/failing_allocations.h"

namespace {

struct Calls {
    std::map<std::string, int> counts = {};
    std::string failing = {};
    int number = 0;
    DWORD error = 0;
};

Calls& calls() {
    static Calls instance;
    return instance;
}

bool fails(const char* call) {
    const test_support::SafeAllocations safe;  // the counting isn't what memory runs out in
    Calls& all = calls();
    const bool isFailing = ++all.counts[call] == all.number && all.failing == call;
    if (isFailing) {
        SetLastError(all.error);
    }
    return isFailing;
}

}  // namespace

namespace test_support {

FailingCall::FailingCall(const std::string& call, int number, unsigned error) {
    calls() = {.failing = call, .number = number, .error = error};
}

FailingCall::~FailingCall() {
    calls().failing.clear();
}

int countCalls(const std::string& call) {
    return calls().counts[call];
}

void forgetCalls() {
    calls() = {};
}

}  // namespace test_support

namespace {

// The type of one call, so that its stand-in has the same: a function of any parameters that either
// fails as told or goes on to the real one.
template <typename Function>
struct StandIn;

template <typename Result, typename... Parameters>
struct StandIn<Result(WINAPI*)(Parameters...)> {
    template <Result(WINAPI** real)(Parameters...), const char* name>
    static Result WINAPI call(Parameters... parameters) {
        return fails(name) ? Result() : (*real)(parameters...);
    }
};

}  // namespace

// A program calls an imported function through a pointer of this name; another one takes its place.
// clang-format off
#define EXIV2_WRAPPER_STAND_IN(function)                                        \
    constexpr char k##function[] = #function;                                   \
    extern "C" {                                                                \
    extern decltype(&function) __real___imp_##function;                         \
    decltype(&function) __wrap___imp_##function =                               \
        &StandIn<decltype(&function)>::call<&__real___imp_##function, k##function>; \
    }
// clang-format on

EXIV2_WRAPPER_STAND_IN(AssignProcessToJobObject)
EXIV2_WRAPPER_STAND_IN(CreateJobObjectA)
EXIV2_WRAPPER_STAND_IN(CreatePipe)
EXIV2_WRAPPER_STAND_IN(CreateProcessW)
EXIV2_WRAPPER_STAND_IN(GetExitCodeProcess)
EXIV2_WRAPPER_STAND_IN(QueryInformationJobObject)
EXIV2_WRAPPER_STAND_IN(ReadFile)
EXIV2_WRAPPER_STAND_IN(SetHandleInformation)
EXIV2_WRAPPER_STAND_IN(SetInformationJobObject)
EXIV2_WRAPPER_STAND_IN(WriteFile)
