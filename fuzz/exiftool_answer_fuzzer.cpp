#include <algorithm>
#include <array>
#include <sstream>

#include "exiv2_wrapper/exiftool/request_protocol.h"
#include "exiv2_wrapper/exiftool/tag_reader.h"
#include "exiv2_wrapper/text/text.h"
#include "fuzz/checks.h"

namespace {

using exiftool::internal::ToolChannel;
using Tags = std::unordered_map<std::string, std::string>;

// What the tool writes; a byte 0xFF ends what one read gets.
class InputChannel final : public ToolChannel {
public:
    explicit InputChannel(std::string input) : rest_(std::move(input)) {}

    void write(std::string_view) override {}
    std::size_t read(std::span<char> buffer) override {
        const std::size_t end = std::min(rest_.find('\xFF'), rest_.size());
        const std::size_t count = std::min(end, buffer.size());
        std::copy_n(rest_.begin(), count, buffer.begin());
        rest_.erase(0, count == end && count < rest_.size() ? count + 1 : count);
        return count;
    }
    exiv2_wp::internal::ErrorCode countActiveProcesses(std::uint32_t&) override { return 0; }
    void close() override {}

    [[nodiscard]] const std::string& rest() const { return rest_; }

private:
    std::string rest_;
};

// The whole answer searched after each chunk, carriage returns taken out one by one.
std::string literalAnswer(ToolChannel& channel) {
    std::string answer;
    std::array<char, 512> buffer{};
    while (const std::size_t count = channel.read({buffer.data(), 511})) {
        buffer[count] = '\0';
        answer += buffer.data();
        if (answer.size() >= 7 && answer.find("{ready}") != std::string::npos) {
            break;
        }
    }
    std::size_t at = 0;
    while ((at = answer.find('\r', at)) != std::string::npos) {
        answer.erase(at, 1);
    }
    const std::string marker = " {ready}";
    if (answer.size() >= 8 && answer.substr(answer.size() - 8) == marker) {
        answer = answer.substr(0, answer.size() - 8);
    }
    return answer;
}

Tags literalTags(const std::string& answer, std::vector<std::string>& ignored) {
    Tags tags;
    std::istringstream stream(answer);
    for (std::string line; std::getline(stream, line);) {
        const std::size_t colon = line.find(':');
        if (colon == std::string::npos) {
            ignored.push_back("readTags: ignoring line: " + line);
            continue;
        }
        std::string name = line.substr(0, colon);
        while (!name.empty() && name.back() == ' ') {
            name.pop_back();
        }
        std::string value = line.substr(colon + 1);
        while (!value.empty() && value.front() == ' ') {
            value.erase(0, 1);
        }
        tags[name] = value;
    }
    return tags;
}

void checkTags(const std::string& answer) {
    const fuzz::LogTexts log;
    std::vector<std::string> ignored;
    const Tags literal = literalTags(answer, ignored);
    fuzz::require(exiftool::internal::parseTagLines(answer) == literal, "both read the same tags");
    fuzz::require(log.texts() == ignored, "both ignore the same lines");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input = fuzz::textOf(data, size);
    InputChannel fast(input);
    InputChannel literal(input);
    for (int request = 0; request < 4; ++request) {
        std::string answer = exiftool::internal::readAnswer(fast);
        exiftool::internal::trimAnswer(answer);
        fuzz::require(answer == literalAnswer(literal), "both versions read the same answer");
        fuzz::require(fast.rest() == literal.rest(), "and leave the same for the next");
        checkTags(answer);
    }
    return 0;
}
