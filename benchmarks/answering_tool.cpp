#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

// Stands in for both tools where a benchmark wants an answer of a certain size.
//
// As exiv2.exe: -ep writes a preview of so many bytes as the last argument asks for; every other
// call prints nothing.
// As exiftool.exe with -stay_open: a request with a line -bytes=COUNT gets so many bytes in lines,
// and each gets "{ready}".

namespace {

// In lines, as a listing of tags is.
std::string lines(std::size_t bytes) {
    constexpr std::string_view kLine =
        "MakerNoteEntry                  : 10 20 30 40 50 60 70 80 90\n";
    std::string text;
    text.reserve(bytes + kLine.size());
    while (text.size() < bytes) {
        text += kLine;
    }
    text.resize(bytes);
    return text;
}

void write(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

int stayOpen() {
    std::string answer;
    for (std::string line; std::getline(std::cin, line) && line != "false";) {
        if (line.starts_with("-bytes=")) {
            const std::size_t bytes = std::stoul(line.substr(7));
            answer = answer.size() == bytes ? answer : lines(bytes);
        } else if (line == "-execute") {
            write(answer);
            write("{ready}\n");
        }
    }
    return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string call = argc > 1 ? argv[1] : "";
    if (call == "-stay_open") {
        return stayOpen();
    }
    if (call == "-ep") {
        write("6000 4000 0 0 0 0\n");
        write(std::string(std::stoul(argv[argc - 1]), '\xAB'));
    }
    return EXIT_SUCCESS;
}
