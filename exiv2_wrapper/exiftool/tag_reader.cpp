#include "exiv2_wrapper/exiftool/tag_reader.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <iterator>

#include "exiv2_wrapper/exiftool/exiftool_process.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/log/log.h"
#include "exiv2_wrapper/text/path_text.h"
#include "exiv2_wrapper/text/text.h"

namespace exiftool {

namespace internal {

namespace {

namespace text = exiv2_wp::internal;

void addTagLine(std::string_view line, std::unordered_map<std::string, std::string>& tags) {
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos) {
        text::logPlain(text::LogType::trace, "readTags: ignoring line: ", std::string(line));
        return;
    }
    std::string_view name = line.substr(0, colon);
    name = name.substr(0, name.find_last_not_of(' ') + 1);
    std::string_view value = line.substr(colon + 1);
    value.remove_prefix(std::min(value.find_first_not_of(' '), value.size()));
    tags.insert_or_assign(std::string(name), std::string(value));
}

// All digits of the answer as one number: the tool's sentence holds one, the count of bytes.
int joinedDigits(std::string_view answer) {
    std::string digits;
    std::copy_if(answer.begin(), answer.end(), std::back_inserter(digits), text::isDigit);
    return digits.empty() ? 0 : std::stoi(digits);
}

}  // namespace

std::unordered_map<std::string, std::string> parseTagLines(std::string_view answer) {
    std::unordered_map<std::string, std::string> tags;
    while (!answer.empty()) {
        const std::size_t lineFeed = answer.find('\n');
        addTagLine(answer.substr(0, lineFeed), tags);
        answer.remove_prefix(lineFeed == std::string_view::npos ? answer.size() : lineFeed + 1);
    }
    return tags;
}

int getMakernotesSize(const std::filesystem::path& file) {
    try {
        // The last line feed makes an empty line, which the tool skips.
        const std::string request = text::hostUtf8Path(file) + "\n-s3\n-makernotes\n";
        std::string answer = getExiftoolProcess({}).execute({request});
        text::lowerCase(answer);
        return answer.find("warning") == std::string::npos ? joinedDigits(answer) : -1;
    } catch (const std::exception& exception) {
        text::logPlain(text::LogType::caughtException,
                       "getMakernotesSize: exception encountered: ", exception.what());
        return -1;
    }
}

}  // namespace internal

std::unordered_map<std::string, std::string> readTags(const std::filesystem::path& file,
                                                      const std::string& arguments) {
    std::string argumentLines = arguments;
    std::replace(argumentLines.begin(), argumentLines.end(), ' ', '\n');
    return internal::parseTagLines(internal::getExiftoolProcess({}).execute(
        {argumentLines, "-s2", exiv2_wp::internal::hostUtf8Path(file)}));
}

std::string getLensPrettyName(const std::filesystem::path& file) {
    const auto tags = readTags(file, "-Lens\n-LensID");
    auto chosen = tags.find("LensID");
    if (chosen == tags.end() || chosen->second.find("Unknown") != std::string::npos) {
        chosen = tags.find("Lens");
    }
    // A name that isn't plain ASCII is given up, and the other tag isn't tried in its place.
    if (chosen == tags.end() || !exiv2_wp::internal::isPlainAscii(chosen->second)) {
        return {};
    }
    // Several lenses can share one identifier; the tool then names them all, the likeliest first.
    return chosen->second.substr(0, chosen->second.find(" or "));
}

}  // namespace exiftool
