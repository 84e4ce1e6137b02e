#include "vesk_logger/vesk_logger.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string_view>
#include <utility>

#include "vesk_logger/log_sink.h"

namespace vesk {

struct logstream::Items {
    std::vector<LogItem> list;
};

namespace {

struct Output {
    std::mutex mutex;
    LogSink sink;  // guarded by mutex
};

// Never destroyed: a library that is unloaded late may still log.
Output& output() {
    static auto* const instance = new Output;
    return *instance;
}

enum class Verbosity { all, failures, off };

Verbosity verbosity() {
    static const Verbosity chosen = [] {
        const char* const text = std::getenv("VESK_LOG");
        const std::string_view choice = text == nullptr ? "" : text;
        if (choice == "off") {
            return Verbosity::off;
        }
        return choice == "failures" ? Verbosity::failures : Verbosity::all;
    }();
    return chosen;
}

bool isWanted(const std::vector<LogItem>& items) {
    if (verbosity() != Verbosity::failures) {
        return verbosity() == Verbosity::all;
    }
    const auto* const type = items.empty() ? nullptr : std::get_if<LogMessageType>(&items.front());
    return type != nullptr && (static_cast<int>(*type) == 2 || static_cast<int>(*type) == 3);
}

void appendUtf8(std::string& text, char32_t c) {
    const auto put = [&text](char32_t byte) { text += static_cast<char>(byte); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xC0 | (c >> 6));
        put(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        put(0xE0 | (c >> 12));
        put(0x80 | ((c >> 6) & 0x3F));
        put(0x80 | (c & 0x3F));
    } else {
        put(0xF0 | (c >> 18));
        put(0x80 | ((c >> 12) & 0x3F));
        put(0x80 | ((c >> 6) & 0x3F));
        put(0x80 | (c & 0x3F));
    }
}

struct LineWriter {
    std::string& line;

    void operator()(LogMessageType type) const {
        line += "[" + std::to_string(static_cast<int>(type)) + "] ";
    }
    void operator()(const LogLiteral& literal) const { line += literal.text; }
    void operator()(const std::string& text) const { line += text; }
    void operator()(const std::wstring& text) const {
        for (std::size_t i = 0; i < text.size(); ++i) {
            auto c = static_cast<char32_t>(text[i]);
            const bool isPair = c >= 0xD800 && c < 0xDC00 && i + 1 < text.size() &&
                                (static_cast<char32_t>(text[i + 1]) & 0xFC00U) == 0xDC00;
            if (isPair) {
                c = 0x10000 + ((c - 0xD800) << 10) + (static_cast<char32_t>(text[++i]) - 0xDC00);
            }
            appendUtf8(line, c);
        }
    }
};

}  // namespace

logstream::logstream() : items_(new Items) {}
logstream::logstream(const logstream& other) : items_(new Items(*other.items_)) {}
logstream& logstream::operator=(const logstream& other) {
    if (this != &other) {
        items_->list = other.items_->list;
    }
    return *this;
}
logstream::~logstream() {
    delete items_;
}

logstream& logstream::operator<<(LogMessageType type) {
    items_->list.emplace_back(type);
    return *this;
}

logstream& logstream::operator<<(const char* text) {
    items_->list.emplace_back(LogLiteral{text == nullptr ? "" : text});
    return *this;
}

logstream& logstream::operator<<(const std::string& text) {
    items_->list.emplace_back(text);
    return *this;
}

logstream& logstream::operator<<(const std::wstring& text) {
    items_->list.emplace_back(text);
    return *this;
}

// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the host's own name
logstream __vesklog() {
    return {};
}

void LOG(const logstream& line) {
    Output& out = output();
    const std::lock_guard lock(out.mutex);
    if (out.sink) {
        out.sink(line.items_->list);
        return;
    }
    if (!isWanted(line.items_->list)) {
        return;
    }
    std::string text;
    for (const LogItem& item : line.items_->list) {
        std::visit(LineWriter{text}, item);
    }
    text += '\n';
    (void)std::fwrite(text.data(), 1, text.size(), stderr);
}

void setLogSink(LogSink sink) {
    Output& out = output();
    const std::lock_guard lock(out.mutex);
    out.sink = std::move(sink);
}

}  // namespace vesk
