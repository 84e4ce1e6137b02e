#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "vesk_logger/vesk_logger.h"

namespace exiv2_wp::internal {

/// The logger's message types that the library uses.
enum class LogType : int {
    trace = 0,            ///< a plain trace line
    caughtException = 2,  ///< an exception that was caught and swallowed
    failure = 3,          ///< every failure
    startUp = 6,          ///< the directory with which the library was initialised
};

/// Begins a line by streaming its type.
void beginLine(vesk::logstream& line, LogType type);

/// Logs a failure: the signature of the function that failed, ": ", the message. Signatures are
/// constants in one compiler's spelling, so that a line reads the same whatever built the library.
void logFailure(const char* signature, const char* message);

/// The same with a file or directory, in its narrow form, behind a message that ends in a blank.
void logFailure(const char* signature, const char* message, const std::filesystem::path& path);

/// Logs a line of any type without a signature: a message, and a value behind one that ends in a
/// blank.
void logPlain(LogType type, const char* message);
void logPlain(LogType type, const char* message, const std::string& value);

/// Logs that a step of the start of the long-lived tool failed, with the platform's error code.
void logStepFailure(const char* step, std::uint32_t errorCode);

/// Logs a trace line: a message that ends in a blank, and a constant.
void logTrace(const char* message, const char* constant);

}  // namespace exiv2_wp::internal
