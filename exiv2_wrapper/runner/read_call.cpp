#include "exiv2_wrapper/runner/read_call.h"

#include <array>
#include <atomic>
#include <charconv>
#include <optional>
#include <system_error>
#include <vector>

#include "exiv2_wrapper/platform/platform.h"
#include "exiv2_wrapper/platform/quoting.h"
#include "exiv2_wrapper/runner/process_runner.h"
#include "exiv2_wrapper/runner/tool_location.h"

namespace exiv2_wp::internal {

namespace {

enum class Knowledge { untried, beingTried, known, refused };

std::atomic<Knowledge> knowledge = Knowledge::untried;

// The right to make the call. Until it is known whether the tool knows it, one thread has it, and
// finds out; the others don't wait for that.
class Permission {
public:
    Permission() {
        Knowledge before = Knowledge::untried;
        isTrial_ = knowledge.compare_exchange_strong(before, Knowledge::beingTried);
        isGiven_ = isTrial_ || before == Knowledge::known;
    }
    Permission(const Permission&) = delete;
    Permission& operator=(const Permission&) = delete;
    ~Permission() { settle(Knowledge::untried); }

    [[nodiscard]] bool isGiven() const { return isGiven_; }

    // What a trial has found out. The first finding counts.
    void settle(Knowledge found) {
        if (isTrial_) {
            knowledge = found;
            isTrial_ = false;
        }
    }

private:
    bool isTrial_ = false;
    bool isGiven_ = false;
};

// Position, exit code, size, exit code, size.
using Numbers = std::array<std::uint64_t, 5>;

constexpr std::size_t kLongestNumber = 20;
constexpr std::size_t kLongestLine = std::tuple_size_v<Numbers> * (kLongestNumber + 1);

std::optional<Numbers> parseLine(std::string_view line) {
    Numbers numbers{};
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (i > 0) {
            if (!line.starts_with(' ')) {
                return std::nullopt;
            }
            line.remove_prefix(1);
        }
        const char* const end = line.data() + line.size();
        const std::from_chars_result result = std::from_chars(line.data(), end, numbers[i]);
        if (result.ec != std::errc()) {
            return std::nullopt;
        }
        line.remove_prefix(static_cast<std::size_t>(result.ptr - line.data()));
    }
    return line.empty() ? std::optional(numbers) : std::nullopt;
}

bool canBecomeLine(std::string_view text) {
    return text.size() < kLongestLine &&
           text.find_first_not_of("0123456789 ") == std::string_view::npos;
}

// The tool takes such a name for an option.
bool isOption(const NativeString& argument) {
    return !argument.empty() && argument.front() == '-';
}

// The first files that a command line has room for.
std::vector<NativeString> argumentsFor(std::span<const std::filesystem::path* const> files) {
    std::vector<NativeString> arguments = {asciiArgument("--read")};
    std::size_t room =
        commandLineRoom(exiv2ExecutablePath.native()) + commandLineRoom(arguments.front());
    for (const std::filesystem::path* const file : files) {
        room += commandLineRoom(file->native());
        if (room > kLongestCommandLine<NativeString::value_type> || isOption(file->native())) {
            break;
        }
        arguments.push_back(file->native());
    }
    return arguments;
}

// A tool that was brought down by the very first photo has said nothing, as has one that couldn't
// be started; neither tells whether it knows the call.
Knowledge judge(PartState last, bool hasSpoken, std::optional<std::uint32_t> exitCode) {
    if (last == PartState::malformed) {
        return Knowledge::refused;
    }
    if (hasSpoken) {
        return Knowledge::known;
    }
    return !exitCode || isCrash(*exitCode) ? Knowledge::untried : Knowledge::refused;
}

}  // namespace

PartState takePart(std::string_view& output, std::uint64_t position, FilePart& part) {
    const std::size_t lineEnd = output.find('\n');
    if (lineEnd == std::string_view::npos) {
        return canBecomeLine(output) ? PartState::unfinished : PartState::malformed;
    }
    // However the output arrives: a line that was too long to wait for is too long as a whole, too.
    const std::optional<Numbers> numbers =
        lineEnd < kLongestLine ? parseLine(output.substr(0, lineEnd)) : std::nullopt;
    if (!numbers || numbers->front() != position) {
        return PartState::malformed;
    }
    const auto [at, printAllCode, printAllSize, summaryCode, summarySize] = *numbers;
    std::string_view rest = output.substr(lineEnd + 1);
    if (rest.size() < printAllSize || rest.size() - printAllSize < summarySize) {
        return PartState::unfinished;
    }
    part.printAll = {printAllCode == 0, rest.substr(0, printAllSize)};
    rest.remove_prefix(printAllSize);
    part.summary = {summaryCode == 0, rest.substr(0, summarySize)};
    rest.remove_prefix(summarySize);
    output = rest;
    return PartState::whole;
}

ReadCallResult runReadCall(std::span<const std::filesystem::path* const> files,
                           const std::function<void(const FilePart&)>& onPart) {
    const std::vector<NativeString> arguments = argumentsFor(files);
    ReadCallResult result = {.asked = arguments.size() - 1};
    Permission permission;
    if (result.asked == 0 || !permission.isGiven()) {
        return {};
    }
    ToolOutput output;
    PartState last = PartState::unfinished;
    const auto takeParts = [&] {
        std::string_view rest = output.text();
        do {
            FilePart part;
            last = takePart(rest, result.answered, part);
            if (last == PartState::whole) {
                permission.settle(Knowledge::known);
                ++result.answered;
                onPart(part);
            }
        } while (last == PartState::whole && result.answered < result.asked);
        output.dropFront(output.text().size() - rest.size());
        return last == PartState::unfinished;
    };
    const std::optional<std::uint32_t> exitCode = followExiv2Cli(arguments, output, takeParts);
    permission.settle(judge(last, !output.text().empty(), exitCode));
    return result;
}

bool isReadCallRefused() {
    return knowledge == Knowledge::refused;
}

void forgetReadCall() {
    knowledge = Knowledge::untried;
}

}  // namespace exiv2_wp::internal
