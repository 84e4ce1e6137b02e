#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "support/tool_directory.h"

/// The round of the whole product: what photoinfo and a host answer about real photos by real
/// tools. It is the same on every platform, so what is answered natively is what Windows must
/// answer.
namespace product {

/// One question to the product, which may take several runs of programs.
struct Question {
    struct Run {
        std::filesystem::path program;
        std::vector<std::string> arguments;
    };
    std::string name;  ///< of the test and of the recorded answer; begins with that of the tool
    std::vector<Run> runs;
    std::string output = {};  ///< the file among the outputs that the answer ends with; empty: none
};

/// The photos and the tools in temporary folders, the photos' being the current one as long as the
/// round lives: so no answer depends on a folder's name.
class Round {
public:
    Round();
    Round(const Round&) = delete;
    Round& operator=(const Round&) = delete;
    ~Round();

    /// Whether there are photos beside the sample.
    [[nodiscard]] bool hasPhotos() const { return photos_.size() > kOwnPhotos; }
    [[nodiscard]] std::vector<Question> questions() const;
    /// Exit codes, standard outputs and the output file. Ways of writing the current folder are
    /// left out; line ends are as they were written.
    [[nodiscard]] std::string ask(const Question& question) const;

private:
    static constexpr std::size_t kOwnPhotos = 3;

    [[nodiscard]] Question::Run photoinfo(const std::string& tools,
                                          std::vector<std::string> arguments) const;
    [[nodiscard]] Question::Run aboutAll(const std::string& tools,
                                         std::vector<std::string> arguments) const;
    [[nodiscard]] Question::Run consumer(std::vector<std::string> arguments) const;
    void addExiv2Questions(const std::string& tools, std::vector<Question>& questions) const;
    void addOwnQuestions(std::vector<Question>& questions) const;
    void addExiftoolQuestions(std::vector<Question>& questions) const;
    void makeExports() const;

    test_support::TemporaryDirectory folder_{"product-"};
    std::filesystem::path before_ = std::filesystem::current_path();
    std::filesystem::path photoinfo_;
    std::filesystem::path consumer_;
    std::filesystem::path exiftool_;  // its folder
    std::vector<std::string> photos_;
};

/// The questions' round, made when it is first asked for.
const Round& theRound();

/// Where the first line of `answer` that isn't as recorded begins, and both lines; empty: none.
std::string firstDifference(const std::string& recorded, const std::string& answer);

}  // namespace product
