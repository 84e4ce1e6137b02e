// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/application.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <stdexcept>

#include "exiv2/entries.h"
#include "exiv2/photo.h"
#include "exiv2/plain_line.h"
#include "exiv2/preview.h"
#include "exiv2/summary.h"

namespace exiv2_tool {
namespace {

constexpr int kSuccess = 0;
constexpr int kFailure = 1;
constexpr int kUsage = 2;

constexpr std::size_t kUsualOutput = 32768;  // more than most photos need

using Arguments = std::span<const Argument>;

void complain(std::string_view about, std::string_view reason) {
    std::string line = "exiv2.exe: ";
    if (!about.empty()) {
        line += plainLine(about) + ": ";
    }
    line += plainLine(reason) + '\n';
    writeError(line);
}

int write(std::string_view output) {
    const Written written = writeOutput(output);
    if (written == Written::failed) {
        complain({}, "standard output can't be written");
    }
    return written == Written::whole ? kSuccess : kFailure;
}

/// Runs `work`; its failure is said to be about `file`.
template <typename Work>
int attempt(const Argument& file, const Work& work) {
    try {
        work();
        return kSuccess;
    } catch (const std::exception& error) {
        complain(file.text, error.what());
    } catch (...) {  // libexiv2's XMP part throws types of its own
        complain(file.text, "unreadable metadata");
    }
    return kFailure;
}

/// Writes what `print` appends to its first argument about the photo. What it has appended before
/// it fails counts, as with the stock tool.
template <typename Print>
int answer(const Argument& file, Wanted wanted, const Print& print) {
    std::string output;
    output.reserve(kUsualOutput);
    const int code = attempt(file, [&] {
        const Photo photo(file.native, wanted);
        print(output, photo.image());
    });
    return std::max(code, write(output));
}

/// What a call would print about a photo, and its exit code.
struct Part {
    int code = kFailure;
    std::string output;
};

template <typename Print>
Part partOf(const Argument& file, const Photo& photo, const Print& print) {
    Part part;
    part.code = attempt(file, [&] { print(part.output, photo.image()); });
    return part;
}

int writeParts(std::size_t position, const Part& entries, const Part& summary) {
    std::string output = std::to_string(position);
    for (const Part* const part : {&entries, &summary}) {
        output += ' ' + std::to_string(part->code) + ' ' + std::to_string(part->output.size());
    }
    output += '\n';
    output += entries.output;
    output += summary.output;
    return write(output);
}

/// A size in pixels: decimal digits and nothing else, from 1 to 2147483647.
std::uint32_t readSize(std::string_view text) {
    std::uint32_t size = 0;
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, size);
    if (result.ec != std::errc() || result.ptr != end || size == 0 ||
        size > std::uint32_t{std::numeric_limits<std::int32_t>::max()}) {
        throw std::invalid_argument("not a size in pixels: " + std::string(text));
    }
    return size;
}

int answerVersion(Arguments /*arguments*/) {
    return write(std::string("exiv2 ") + Exiv2::version() +
                 "\n"
                 "The exiv2.exe of exiv2_wrapper " EXIV2_TOOL_VERSION
                 ", a program of its own linked with libexiv2.\n"
                 "Licence: GPL-2.0-or-later. It comes without any warranty.\n");
}

int answerAll(Arguments arguments) {
    return answer(arguments[2], Wanted::everything, printAll);
}

int answerSummary(Arguments arguments) {
    return answer(arguments[1], Wanted::exif, printSummary);
}

int answerKey(Arguments arguments) {
    const std::string& key = arguments[1].text;
    const Wanted wanted = key.starts_with("Exif.") ? Wanted::exif : Wanted::everything;
    const auto print = arguments[3].text == "kh" ? printBytes : printInterpreted;
    return answer(arguments[4], wanted, [&](std::string& output, const Exiv2::Image& image) {
        print(output, image, key);
    });
}

// The format is accepted and left unused: libexiv2 knows a file by its content.
int answerPreview(Arguments arguments) {
    return answer(
        arguments[1], Wanted::everything, [&](std::string& output, const Exiv2::Image& image) {
            printPreview(output, image,
                         std::max(readSize(arguments[2].text), readSize(arguments[3].text)));
        });
}

/// Writes each file's part before it opens the next file.
int answerMany(Arguments arguments) {
    const Arguments files = arguments.subspan(1);
    for (std::size_t position = 0; position < files.size(); ++position) {
        const Argument& file = files[position];
        Part entries;
        Part summary;
        (void)attempt(file, [&] {
            const Photo photo(file.native);
            entries = partOf(file, photo, printAll);
            summary = partOf(file, photo, printSummary);
        });
        if (const int code = writeParts(position, entries, summary); code != kSuccess) {
            return code;
        }
        // Forgets the namespaces that this photo brought with it: they would have a say in the
        // next.
        Exiv2::XmpParser::terminate();
    }
    return kSuccess;
}

struct Call {
    /// Words parted by blanks. Those in capitals stand for any argument, with "..." for any number.
    std::string_view form;
    int (*answer)(Arguments);
};

constexpr Call kCalls[] = {
    {"--version", answerVersion},
    {"-PXEkycv -q FILE", answerAll},
    {"pr FILE", answerSummary},
    {"--key KEY --Print kh FILE", answerKey},
    {"--key KEY --Print kt FILE", answerKey},
    {"-ep FILE SIZE SIZE", answerPreview},
    {"-ep FILE SIZE SIZE FORMAT", answerPreview},
    {"--read FILE...", answerMany},
};

bool isPlaceholder(std::string_view word) {
    return std::all_of(word.begin(), word.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
}

bool hasForm(Arguments arguments, std::string_view form) {
    for (const Argument& argument : arguments) {
        const std::string_view word = form.substr(0, form.find(' '));
        if (word.ends_with("...")) {
            return true;
        }
        if (word.empty() || (!isPlaceholder(word) && word != argument.text)) {
            return false;
        }
        form.remove_prefix(std::min(word.size() + 1, form.size()));
    }
    return form.empty();
}

int refuse() {
    std::string reason = "the calls are";
    for (const Call& call : kCalls) {
        reason += ' ';
        reason += call.form;
        reason += ';';
    }
    complain({}, reason + " for all others there is the stock exiv2, https://exiv2.org");
    return kUsage;
}

}  // namespace

int runApplication(Arguments arguments) {
    // A photo's flaws are no news to whoever asks about it; real failures are thrown.
    Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
    // As the stock tool has it.
    Exiv2::enableBMFF();
    for (const Call& call : kCalls) {
        if (hasForm(arguments, call.form)) {
            return call.answer(arguments);
        }
    }
    return refuse();
}

}  // namespace exiv2_tool
