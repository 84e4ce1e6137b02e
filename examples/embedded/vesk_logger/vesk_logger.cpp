#include "vesk_logger/vesk_logger.h"

#include <iostream>
#include <mutex>

namespace vesk {

logstream& logstream::operator<<(LogMessageType type) {
    text_ += "<" + std::to_string(static_cast<int>(type)) + "> ";
    return *this;
}

logstream& logstream::operator<<(const char* text) {
    text_ += text;
    return *this;
}

logstream& logstream::operator<<(const std::string& text) {
    text_ += text;
    return *this;
}

logstream& logstream::operator<<(const std::wstring& text) {
    for (const wchar_t c : text) {
        text_ += c < 0x80 ? static_cast<char>(c) : '?';
    }
    return *this;
}

logstream __vesklog() {
    return {};
}

// Any thread of the editor may log, so lines must not mix.
void LOG(const logstream& line) {
    static std::mutex mutex;
    const std::lock_guard<std::mutex> lock(mutex);
    std::cerr << "editor: " << line.text() << '\n';
}

}  // namespace vesk
