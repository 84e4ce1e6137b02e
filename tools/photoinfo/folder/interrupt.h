#pragma once

#include <atomic>

namespace photoinfo {

/// Takes Ctrl-C for a wish to stop, for as long as it lives; interrupt_posix.cpp and
/// interrupt_win32.cpp fulfil it. Made by the main thread before others start, one at a time. A
/// second Ctrl-C ends the program at once, as it does without this. Where the program was started
/// with Ctrl-C ignored, it stays ignored.
///
/// A terminal sends Ctrl-C to the tools too, which die of it on POSIX. So whoever has asked one
/// asks `isRequested` before believing its answer; that is true before such a death can be seen.
class Interrupt {
public:
    Interrupt();
    Interrupt(const Interrupt&) = delete;
    Interrupt& operator=(const Interrupt&) = delete;
    ~Interrupt();

    /// Any thread may call.
    [[nodiscard]] bool isRequested() const;

    /// Lets the second Ctrl-C through after the first. The thread that made this calls it now and
    /// then.
    void poll();

private:
    std::atomic<bool> isRequested_ = false;
    bool isListening_ = false;
};

}  // namespace photoinfo
