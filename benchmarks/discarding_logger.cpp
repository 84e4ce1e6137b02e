#include "vesk_logger/vesk_logger.h"

// A logger that discards, linked into the benchmarks in the place of the host's, so that what they
// measure is the library's own work.

namespace vesk {

struct logstream::Items {};

logstream::logstream() = default;
logstream::logstream(const logstream&) {}
// There is nothing to copy.
logstream& logstream::operator=(const logstream&) {
    return *this;
}
logstream::~logstream() = default;

logstream& logstream::operator<<(LogMessageType) {
    return *this;
}
logstream& logstream::operator<<(const char*) {
    return *this;
}
logstream& logstream::operator<<(const std::string&) {
    return *this;
}
logstream& logstream::operator<<(const std::wstring&) {
    return *this;
}

// The host's own name.
logstream __vesklog() {
    return {};
}

void LOG(const logstream&) {}

}  // namespace vesk
