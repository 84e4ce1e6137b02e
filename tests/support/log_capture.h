#pragma once

#include <filesystem>
#include <mutex>
#include <ostream>
#include <string>
#include <vector>

#include "vesk_logger/log_sink.h"

namespace vesk {

/// How a failed comparison shows an item: its type and its text.
void PrintTo(const LogItem& item, std::ostream* stream);

}  // namespace vesk

namespace test_support {

using LogLine = std::vector<vesk::LogItem>;

/// Receives every line that is logged during its life, from any thread.
class LogCapture {
public:
    LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;
    ~LogCapture();

    /// The lines so far.
    [[nodiscard]] std::vector<LogLine> lines() const;
    /// The lines so far of one message type.
    [[nodiscard]] std::vector<LogLine> linesOfType(int type) const;
    void clear();

private:
    mutable std::mutex mutex_;
    std::vector<LogLine> lines_;  // guarded by mutex_
};

/// A failure of the exiv2 side: type 3, signature, ": ", message.
LogLine failureLine(const std::string& signature, const std::string& message);
/// The same with the narrow form of a path behind it.
LogLine failureLine(const std::string& signature, const std::string& message,
                    const std::filesystem::path& path);
/// A trace line: type 0, a message and a constant.
LogLine traceLine(const std::string& message, const std::string& constant);

/// A line of any type without a signature: a message, and a text behind it.
LogLine plainLine(int type, const std::string& message);
LogLine plainLine(int type, const std::string& message, const std::string& value);
/// A failed step in the start of the long-lived tool, with the platform's error code.
LogLine stepFailureLine(const std::string& step, unsigned errorCode);

/// The signatures that failure lines carry.
extern const char* const kInitializeSignature;
extern const char* const kRunExiv2CliSignature;
extern const char* const kReadExifMetadataSignature;

}  // namespace test_support
