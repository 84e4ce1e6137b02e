#include <filesystem>
#include <fstream>
#include <iostream>

#include "product/round.h"

// record_answers FOLDER [PREFIX]: asks the questions whose names begin so, and makes a file of each
// answer.
int main(int argc, char** argv) {
    if (argc != 2 && argc != 3) {
        return 2;
    }
    const std::filesystem::path folder = std::filesystem::absolute(argv[1]);
    const product::Round round;
    std::size_t count = 0;
    for (const product::Question& question : round.questions()) {
        if (argc == 2 || question.name.starts_with(argv[2])) {
            std::ofstream(folder / question.name, std::ios::binary) << round.ask(question);
            ++count;
        }
    }
    std::cout << count << " answers recorded in " << folder.string() << '\n';
}
