#include "exiv2_wrapper/platform/platform.h"

#include <utility>

namespace exiv2_wp::internal {

Handle& Handle::operator=(Handle&& other) noexcept {
    if (this != &other) {
        close();
        value_ = other.release();
    }
    return *this;
}

std::intptr_t Handle::release() {
    return std::exchange(value_, kNone);
}

void Handle::close() {
    if (isOpen()) {
        closeHandle(release());
    }
}

Process::Process(Process&& other) noexcept
    : process_(std::exchange(other.process_, Handle::kNone)),
      thread_(std::exchange(other.thread_, Handle::kNone)) {}

Process& Process::operator=(Process&& other) noexcept {
    if (this != &other) {
        close();
        process_ = std::exchange(other.process_, Handle::kNone);
        thread_ = std::exchange(other.thread_, Handle::kNone);
    }
    return *this;
}

void Process::close() {
    if (isStarted()) {
        closeProcess(std::exchange(process_, Handle::kNone), std::exchange(thread_, Handle::kNone));
    }
}

void Process::release() {
    process_ = Handle::kNone;
    thread_ = Handle::kNone;
}

}  // namespace exiv2_wp::internal
