#pragma once

#include <string>

#if defined(_WIN32)
#if defined(VESK_LOGGER_BUILDING)
#define VESK_LOGGER_API __declspec(dllexport)
#else
#define VESK_LOGGER_API __declspec(dllimport)
#endif
#else
#define VESK_LOGGER_API __attribute__((visibility("default")))
#endif

/// Stand-in for the host application's logging library: the part of it that exiv2_wrapper uses.
namespace vesk {

/// Message types, as numbers; their names belong to the real library.
enum class LogMessageType : int {};

/// One log line under construction. A value: copies share nothing, and a moved-from line is copied
/// from like any other, so that none is ever without its items.
// NOLINTNEXTLINE(cppcoreguidelines-special-member-functions): see above, moving is copying
class VESK_LOGGER_API logstream {
public:
    logstream();
    logstream(const logstream& other);
    logstream& operator=(const logstream& other);
    ~logstream();

    logstream& operator<<(LogMessageType type);
    /// Zero-terminated UTF-8; null adds an empty text.
    logstream& operator<<(const char* text);
    logstream& operator<<(const std::string& text);
    logstream& operator<<(const std::wstring& text);

private:
    friend VESK_LOGGER_API void LOG(const logstream& line);
    struct Items;
    Items* items_;  // owned; plain, so that the class looks the same to every compiler
};

/// A fresh line.
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the host's own name
VESK_LOGGER_API logstream __vesklog();

/// Emits the line: to the sink that is set (log_sink.h), else as one readable line on standard
/// error. Any thread may call; lines never interleave. What is written to standard error can be
/// chosen by the environment variable VESK_LOG, read once: "all" (the default), "failures"
/// (message types 2 and 3 only) or "off".
VESK_LOGGER_API void LOG(const logstream& line);

}  // namespace vesk
