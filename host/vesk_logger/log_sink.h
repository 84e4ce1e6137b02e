#pragma once

#include <functional>
#include <string>
#include <variant>
#include <vector>

#include "vesk_logger/vesk_logger.h"

/// What only this stand-in offers: a look at each line as it was streamed, for tests.
namespace vesk {

/// A constant narrow text (`const char*`), kept apart from a `std::string` of the same bytes.
struct LogLiteral {
    std::string text;
    bool operator==(const LogLiteral& other) const { return text == other.text; }
};

/// One item of a line, in the type in which it was streamed.
using LogItem = std::variant<LogMessageType, LogLiteral, std::string, std::wstring>;

/// Receives the items of one line, in the order of their `operator<<`.
using LogSink = std::function<void(const std::vector<LogItem>&)>;

/// Sends every later line to `sink` instead of standard error; an empty sink restores that. The
/// sink is called by the logging thread, one line at a time.
VESK_LOGGER_API void setLogSink(LogSink sink);

}  // namespace vesk
