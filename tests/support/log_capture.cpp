#include "support/log_capture.h"

#include <gtest/gtest.h>

#include <ostream>

#include "exiv2_wrapper/text/path_text.h"

namespace vesk {

namespace {

struct ItemPrinter {
    std::ostream& stream;
    void operator()(LogMessageType type) const { stream << "type " << static_cast<int>(type); }
    void operator()(const LogLiteral& literal) const {
        stream << "literal " << ::testing::PrintToString(literal.text);
    }
    void operator()(const std::string& text) const {
        stream << "string " << ::testing::PrintToString(text);
    }
    void operator()(const std::wstring& text) const {
        stream << "wstring " << ::testing::PrintToString(text);
    }
};

}  // namespace

void PrintTo(const LogItem& item, std::ostream* stream) {
    std::visit(ItemPrinter{*stream}, item);
}

}  // namespace vesk

namespace test_support {

namespace {

vesk::LogItem typeItem(int type) {
    return static_cast<vesk::LogMessageType>(type);
}
vesk::LogItem literal(const std::string& text) {
    return vesk::LogLiteral{text};
}

}  // namespace

const char* const kInitializeSignature =
    "bool __cdecl exiv2_wp::initialize(const class std::filesystem::path &)";

const char* const kRunExiv2CliSignature =
    "bool __cdecl exiv2_wp::`anonymous-namespace'::runExiv2Cli(const class std::vector<class "
    "std::basic_string<wchar_t,struct std::char_traits<wchar_t>,class std::allocator<wchar_t> "
    ">,class std::allocator<class std::basic_string<wchar_t,struct std::char_traits<wchar_t>,class "
    "std::allocator<wchar_t> > > > &,class std::basic_string<char,struct "
    "std::char_traits<char>,class std::allocator<char> > &)";

const char* const kReadExifMetadataSignature =
    "class std::shared_ptr<struct exiv2_wp::`anonymous namespace'::CliExifMetadata const > __cdecl "
    "exiv2_wp::`anonymous-namespace'::readExifMetadataFromCliCached(const class "
    "std::filesystem::path &)";

LogCapture::LogCapture() {
    vesk::setLogSink([this](const LogLine& line) {
        const std::lock_guard lock(mutex_);
        lines_.push_back(line);
    });
}

LogCapture::~LogCapture() {
    vesk::setLogSink({});
}

std::vector<LogLine> LogCapture::lines() const {
    const std::lock_guard lock(mutex_);
    return lines_;
}

std::vector<LogLine> LogCapture::linesOfType(int type) const {
    std::vector<LogLine> chosen;
    for (const LogLine& line : lines()) {
        if (!line.empty() && line.front() == typeItem(type)) {
            chosen.push_back(line);
        }
    }
    return chosen;
}

void LogCapture::clear() {
    const std::lock_guard lock(mutex_);
    lines_.clear();
}

LogLine failureLine(const std::string& signature, const std::string& message) {
    return {typeItem(3), literal(signature), literal(": "), literal(message)};
}

LogLine failureLine(const std::string& signature, const std::string& message,
                    const std::filesystem::path& path) {
    LogLine line = failureLine(signature, message);
    line.emplace_back(exiv2_wp::internal::narrowPath(path));
    return line;
}

LogLine traceLine(const std::string& message, const std::string& constant) {
    return {typeItem(0), literal(message), literal(constant)};
}

LogLine plainLine(int type, const std::string& message) {
    return {typeItem(type), literal(message)};
}

LogLine plainLine(int type, const std::string& message, const std::string& value) {
    return {typeItem(type), literal(message), value};
}

LogLine stepFailureLine(const std::string& step, unsigned errorCode) {
    return {typeItem(3), literal("exiftool "), literal(step), literal(" error: "),
            std::to_string(errorCode)};
}

}  // namespace test_support
