#include "exiv2_wrapper/log/log.h"

#include "exiv2_wrapper/text/path_text.h"

namespace exiv2_wp::internal {

namespace {

vesk::logstream lineOfType(LogType type) {
    vesk::logstream line = vesk::__vesklog();
    beginLine(line, type);
    return line;
}

vesk::logstream failureLine(const char* signature, const char* message) {
    vesk::logstream line = lineOfType(LogType::failure);
    line << signature << ": " << message;
    return line;
}

}  // namespace

void beginLine(vesk::logstream& line, LogType type) {
    line << static_cast<vesk::LogMessageType>(type);
}

void logFailure(const char* signature, const char* message) {
    vesk::LOG(failureLine(signature, message));
}

void logFailure(const char* signature, const char* message, const std::filesystem::path& path) {
    vesk::logstream line = failureLine(signature, message);
    line << narrowPath(path);
    vesk::LOG(line);
}

void logPlain(LogType type, const char* message) {
    vesk::logstream line = lineOfType(type);
    line << message;
    vesk::LOG(line);
}

void logPlain(LogType type, const char* message, const std::string& value) {
    vesk::logstream line = lineOfType(type);
    line << message << value;
    vesk::LOG(line);
}

void logStepFailure(const char* step, std::uint32_t errorCode) {
    vesk::logstream line = lineOfType(LogType::failure);
    line << "exiftool " << step << " error: " << std::to_string(errorCode);
    vesk::LOG(line);
}

void logTrace(const char* message, const char* constant) {
    vesk::logstream line = lineOfType(LogType::trace);
    line << message << constant;
    vesk::LOG(line);
}

}  // namespace exiv2_wp::internal
