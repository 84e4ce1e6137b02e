#include <csignal>
#include <ctime>

#include "photoinfo/folder/interrupt.h"

namespace photoinfo {

namespace {

sigset_t onlySigint() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    return signals;
}

bool isIgnored() {
    struct sigaction action {};
    return ::sigaction(SIGINT, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

bool isPending() {
    sigset_t pending;
    sigemptyset(&pending);
    ::sigpending(&pending);
    return sigismember(&pending, SIGINT) == 1;
}

}  // namespace

// The signal stays pending, blocked in every thread, where any of them sees it at once. A handler
// would need a thread to run in, and another thread could learn of a tool's death before.
Interrupt::Interrupt() : isListening_(!isIgnored()) {
    if (isListening_) {
        const sigset_t sigint = onlySigint();
        ::pthread_sigmask(SIG_BLOCK, &sigint, nullptr);
    }
}

// A signal that nobody has taken then does its usual work.
Interrupt::~Interrupt() {
    if (isListening_) {
        poll();
        const sigset_t sigint = onlySigint();
        ::pthread_sigmask(SIG_UNBLOCK, &sigint, nullptr);
    }
}

// In this order: the signal is taken away only after the flag is set.
bool Interrupt::isRequested() const {
    return (isListening_ && isPending()) || isRequested_;
}

void Interrupt::poll() {
    if (isListening_ && !isRequested_ && isPending()) {
        isRequested_ = true;
        const sigset_t sigint = onlySigint();
        const timespec noWait{};
        (void)::sigtimedwait(&sigint, nullptr, &noWait);
        ::pthread_sigmask(SIG_UNBLOCK, &sigint, nullptr);
    }
}

}  // namespace photoinfo
