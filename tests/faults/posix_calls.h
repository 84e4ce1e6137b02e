#pragma once

#include <string>
#include <vector>

/// The calls that the library makes to the system, in their place functions that can be told to
/// fail (the linker's option --wrap puts them there).
namespace test_support {

/// Lets the n-th use of one call fail during its life, counted from 1, and perhaps some more after
/// it. One at a time; for calls of one thread.
class FailingCall {
public:
    FailingCall(const std::string& call, int number, int error, int times = 1);
    FailingCall(const FailingCall&) = delete;
    FailingCall& operator=(const FailingCall&) = delete;
    ~FailingCall();
};

/// Lets `read` and `write` move one byte at a time during its life.
class TinyTransfers {
public:
    TinyTransfers();
    TinyTransfers(const TinyTransfers&) = delete;
    TinyTransfers& operator=(const TinyTransfers&) = delete;
    ~TinyTransfers();
};

/// How often a call has been used since the last FailingCall or `forgetCalls`.
[[nodiscard]] int countCalls(const std::string& call);
void forgetCalls();

}  // namespace test_support
