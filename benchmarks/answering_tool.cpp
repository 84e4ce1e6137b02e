#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

// Stands in for both tools where a benchmark wants an answer of a certain size.
//
// As exiv2.exe: -PXEkycv prints the file print_all that lies beside it; -ep writes a preview of so
// many bytes as the format asks for; every other call prints nothing.
// As exiftool.exe with -stay_open: a request with a line -bytes=COUNT gets so many bytes in lines,
// and each gets "{ready}".

namespace {

// In lines, as a listing of tags is.
std::string lines(std::size_t bytes) {
    constexpr auto kLine = "MakerNoteEntry                  : 10 20 30 40 50 60 70 80 90\n";
    const std::size_t length = std::strlen(kLine);
    std::string text;
    text.reserve(bytes + length);
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
    for (std::string line; std::getline(std::cin, line);) {
        if (line.starts_with("-bytes=")) {
            const std::size_t bytes = std::stoul(line.substr(7));
            answer = answer.size() == bytes ? answer : lines(bytes);
        } else if (line == "-execute") {
            write(answer);
            write("{ready}\n");
        } else if (line == "false") {
            return EXIT_SUCCESS;
        }
    }
    return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv, argv + argc);
    const std::string call = argc > 1 ? arguments[1] : "";
    if (call == "-stay_open") {
        return stayOpen();
    }
    if (call == "-ep") {
        write("6000 4000 0 0 0 0\n");
        write(std::string(std::stoul(arguments.back()), '\xAB'));
    } else if (call == "-PXEkycv") {
        const std::filesystem::path tool = arguments[0];
        std::ifstream file(tool.parent_path() / "print_all", std::ios::binary);
        write({std::istreambuf_iterator<char>(file), {}});
    }
    return EXIT_SUCCESS;
}
