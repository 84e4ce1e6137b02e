#pragma once

#include <string>

/// The editor's logger, as far as exiv2_wrapper uses it: a line is built item by item and then
/// handed over.
namespace vesk {

/// How grave a line is, and what it is about. The names are the editor's own.
enum class LogMessageType : int {};

class logstream {
public:
    logstream& operator<<(LogMessageType type);
    logstream& operator<<(const char* text);
    logstream& operator<<(const std::string& text);
    logstream& operator<<(const std::wstring& text);

    const std::string& text() const { return text_; }

private:
    std::string text_;
};

logstream __vesklog();
void LOG(const logstream& line);

}  // namespace vesk
