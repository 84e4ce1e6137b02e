#pragma once

#include <string>

/// The calls that the library makes to Windows, in their place functions that can be told to fail
/// (the linker's option --wrap puts them there).
namespace test_support {

/// Lets the n-th use of one call fail during its life, counted from 1, with this error code. One at
/// a time; for calls of one thread.
class FailingCall {
public:
    FailingCall(const std::string& call, int number, unsigned error);
    FailingCall(const FailingCall&) = delete;
    FailingCall& operator=(const FailingCall&) = delete;
    ~FailingCall();
};

/// How often a call has been used since the last FailingCall or `forgetCalls`.
[[nodiscard]] int countCalls(const std::string& call);
void forgetCalls();

}  // namespace test_support
