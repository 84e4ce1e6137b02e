#include "exiv2_wrapper/exiftool/request_protocol.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <new>
#include <optional>

namespace exiftool::internal {

namespace {

constexpr std::string_view kCharset = "-charset\nfilename=utf8\n";
constexpr std::string_view kExecute = "-execute\n";
constexpr std::string_view kMarker = "{ready}";
constexpr std::string_view kFinalMarker = " {ready}";

// More in one read could take the beginning of what belongs to the next answer.
constexpr std::size_t kChunkSize = 511;

// An answer's room grows fourfold: a long one is then moved seldom, and the system provides no page
// before it is written to.
constexpr std::size_t kGrowth = 4;

using Chunk = std::array<char, kChunkSize>;

// What the next read brings, up to a zero byte in it; no value at the end.
std::optional<std::string_view> readChunk(ToolChannel& channel, Chunk& chunk) {
    const std::size_t count = channel.read(chunk);
    if (count == 0) {
        return std::nullopt;
    }
    const std::string_view bytes(chunk.data(), count);
    return bytes.substr(0, bytes.find('\0'));
}

// Reads what is left of an answer that memory doesn't suffice for, without allocating: the next
// request would otherwise take it for its own. `answer` was kept, `bytes` in `chunk` couldn't be.
void skipRestOfAnswer(ToolChannel& channel, std::string_view answer, std::string_view bytes,
                      Chunk& chunk) {
    std::size_t matched = 0;  // bytes of the marker
    const auto completesMarker = [&matched](std::string_view text) {
        for (const char c : text) {
            const std::size_t restarted = c == kMarker.front() ? 1 : 0;
            matched = c == kMarker[matched] ? matched + 1 : restarted;
            if (matched == kMarker.size()) {
                return true;
            }
        }
        return false;
    };
    static_cast<void>(completesMarker(answer));
    for (std::optional<std::string_view> next = bytes; next && !completesMarker(*next);) {
        next = readChunk(channel, chunk);
    }
}

}  // namespace

std::string frameRequest(const std::vector<std::string>& lines) {
    std::string request(kCharset);
    for (const std::string& line : lines) {
        request += line;
        request += '\n';
    }
    request += kExecute;
    return request;
}

std::string readAnswer(ToolChannel& channel) {
    std::string answer;
    Chunk chunk{};
    while (const auto bytes = readChunk(channel, chunk)) {
        // A marker that is new must reach into the new chunk; all before it was searched already.
        const std::size_t searched =
            answer.size() < kMarker.size() ? 0 : answer.size() - (kMarker.size() - 1);
        try {
            if (answer.capacity() - answer.size() < bytes->size()) {
                answer.reserve(std::max(kGrowth * answer.capacity(), kChunkSize));
            }
            answer += *bytes;
        } catch (const std::bad_alloc&) {
            skipRestOfAnswer(channel, answer, *bytes, chunk);
            throw;
        }
        if (answer.find(kMarker, searched) != std::string::npos) {
            break;
        }
    }
    return answer;
}

void trimAnswer(std::string& answer) {
    // On most systems there are none, which a search tells ten times as fast.
    if (answer.find('\r') != std::string::npos) {
        std::erase(answer, '\r');
    }
    if (answer.ends_with(kFinalMarker)) {
        answer.resize(answer.size() - kFinalMarker.size());
    }
}

}  // namespace exiftool::internal
