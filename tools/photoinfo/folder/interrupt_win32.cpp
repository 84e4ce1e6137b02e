#include <windows.h>

#include "photoinfo/folder/interrupt.h"

namespace photoinfo {

namespace {

// The system calls the handler on a thread of its own, and tells it no more than the event. An
// ignored Ctrl-C doesn't get here.
std::atomic<bool> isPending = false;

// False: the event goes on to the system's own handler, which ends the program.
BOOL WINAPI takeEvent(DWORD event) {
    const bool isInterrupt = event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT;
    return isInterrupt && !isPending.exchange(true) ? TRUE : FALSE;
}

}  // namespace

Interrupt::Interrupt() {
    isPending = false;
    isListening_ = SetConsoleCtrlHandler(takeEvent, TRUE) != FALSE;
}

Interrupt::~Interrupt() {
    if (isListening_) {
        SetConsoleCtrlHandler(takeEvent, FALSE);
    }
}

bool Interrupt::isRequested() const {
    return isPending || isRequested_;
}

void Interrupt::poll() {
    isRequested_ = isRequested();
}

}  // namespace photoinfo
