#include <array>
#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <thread>

#include "support/stand_in_tool.h"

/// A stand-in for both tools that needs no scenario and starts as fast as a program can: what it
/// answers follows from the file's name alone.
namespace stand_in {

namespace {

std::string plain(const NativeString& text) {
    std::string plain;
    for (const auto unit : text) {
        plain += static_cast<char>(unit);  // the tests' paths are plain ASCII
    }
    return plain;
}

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

// "photo-17-slow.nef" of its whole path.
std::string nameOf(const std::string& path) {
    return path.substr(path.find_last_of("/\\") + 1);
}

std::string printAll(const std::string& name) {
    return "Exif.Image.Make Ascii 6 Maker\nExif.Image.Model Ascii 20 " + name +
           "\nExif.Image.Orientation Short 1 6\nExif.Photo.FNumber Rational 1 28/10\n"
           "Exif.Image.DateTime Ascii 20 2021:07:04 18:30:05\nXmp.dc.subject XmpBag 1 " +
           name + "\n";
}

/// What a call prints, and its exit code.
struct Answer {
    int exitCode = 0;
    std::string output = {};
};

Answer answer(const std::string& action, const std::string& name) {
    if (contains(name, "slow")) {
        std::this_thread::sleep_for(std::chrono::milliseconds(3));
    }
    if (contains(name, "failing")) {
        return {.exitCode = 1};
    }
    if (action == "-PXEkycv") {
        return {.output = printAll(name)};
    }
    if (action == "pr") {
        return {.output = contains(name, "raising") ? "Lens name:" : "Lens name : lens of " + name};
    }
    if (action == "--key") {
        return {.output = "Exif.Image.Make 4d 61 6b\n"};
    }
    return {.output = "4 3 0 0 0 0\n" + name};  // a preview
}

// Some that fail bring the tool down, as a photo can.
int answerAboutMany(const std::vector<NativeString>& arguments) {
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const std::string name = nameOf(plain(arguments[i]));
        if (contains(name, "failing") && i % 4 == 0) {
            return 1;
        }
        const Answer entries = answer("-PXEkycv", name);
        const Answer summary = answer("pr", name);
        platform::write(1, std::to_string(i - 1) + " " + std::to_string(entries.exitCode) + " " +
                               std::to_string(entries.output.size()) + " " +
                               std::to_string(summary.exitCode) + " " +
                               std::to_string(summary.output.size()) + "\n" + entries.output +
                               summary.output);
    }
    return 0;
}

// Gives every line of a request back, each as a tag of the name "Line".
void echo(const std::string& request) {
    std::string answer = "    1 image files updated\n";
    for (std::size_t at = 0; at < request.size();) {
        const std::size_t end = request.find('\n', at);
        answer += "Line: " + request.substr(at, end - at) + "\n";
        at = end + 1;
    }
    platform::write(1, answer + "{ready}\n");
}

int stay() {
    constexpr std::string_view kExecute = "-execute\n";
    constexpr std::string_view kQuit = "-stay_open\nfalse\n";
    std::array<char, 4096> buffer{};
    std::string pending;
    while (const std::size_t count = platform::read(buffer.data(), buffer.size())) {
        pending.append(buffer.data(), count);
        for (std::size_t end = 0; (end = pending.find(kExecute)) != std::string::npos;) {
            echo(pending.substr(0, end));
            pending.erase(0, end + kExecute.size());
        }
        if (pending == kQuit) {
            return 0;
        }
    }
    return 1;
}

}  // namespace

int play(const std::filesystem::path&, const NativeString&,
         const std::vector<NativeString>& arguments) {
    const std::string action = arguments.empty() ? "" : plain(arguments.front());
    if (action == "-stay_open") {
        return stay();
    }
    if (action == "--version") {
        return 0;
    }
    if (action == "--read") {
        return answerAboutMany(arguments);
    }
    // Every other call ends in the file, but for those of a preview.
    const Answer given =
        answer(action, nameOf(plain(action == "-ep" ? arguments.at(1) : arguments.back())));
    platform::write(1, given.output);
    return given.exitCode;
}

}  // namespace stand_in
