#include "photoinfo/commands/files_command.h"

#include <algorithm>
#include <iostream>
#include <stdexcept>

#include "photoinfo/files/photo_file.h"
#include "photoinfo/messages.h"
#include "photoinfo/show/text.h"
#include "photoinfo/tool/exiv2_tool.h"
#include "photoinfo/tool/read_ahead.h"

namespace photoinfo {

CLI::App* FilesCommand::addTo(CLI::App& program) {
    CLI::App* const app = program.add_subcommand(words_.name, words_.description);
    if (count_ == Count::one) {
        files_.resize(1);
        app->add_option("FILE", files_.front(), "The photo")->type_name(" ")->required();
    } else {
        app->add_option("FILE", files_, "The photos")->type_name(" ")->required();
    }
    app->add_flag("--json", isJson_,
                  "One JSON document: an array with one object a file; unknown values are null");
    addOptions(*app);
    return app;
}

ExitCode FilesCommand::run(const SharedOptions& options) {
    checkOptions();
    startTool(options);
    for (std::size_t i = 0; i < files_.size(); ++i) {
        if (tool_ == Tool::exiv2 && files_.size() > 1 && i % kReadAheadPortion == 0) {
            readAheadFrom(i);
        }
        take(answerAbout(files_[i]));
    }
    if (isJson_) {
        writeJson(std::cout, document_);
    }
    return hasError_ ? ExitCode::file : ExitCode::success;
}

void FilesCommand::startTool(const SharedOptions& options) {
    if (tool_ == Tool::exiv2) {
        startExiv2(options.toolDirectory);
    } else {
        exiftool_.emplace(options.toolDirectory);
    }
}

void FilesCommand::readAheadFrom(std::size_t index) const {
    std::vector<std::filesystem::path> files;
    const std::size_t end = std::min(index + kReadAheadPortion, files_.size());
    for (; index < end; ++index) {
        files.push_back(filePathOf(files_[index]));
    }
    readAhead(files);
}

FilesCommand::Answer FilesCommand::answerAbout(const std::string& argument) {
    const std::filesystem::path file = filePathOf(argument);
    Answer answer{argument, readingError(file), std::nullopt};
    if (!answer.error.empty()) {
        return answer;
    }
    try {
        answer.finding = ask(file);
    } catch (const Failure& failure) {
        if (failure.code() != ExitCode::file) {
            throw;
        }
        answer.error = failure.what();
    } catch (const std::out_of_range&) {
        answer.error = "exiv2 describes it in a way that is not understood";
    }
    return answer;
}

// A table is shown at once; the JSON document needs all answers.
void FilesCommand::take(const Answer& answer) {
    if (!answer.error.empty()) {
        hasError_ = true;
        complain(aboutFile(answer.file, answer.error));
    }
    if (isJson_) {
        addToDocument(answer);
    } else if (answer.error.empty()) {
        show(answer);
    }
}

void FilesCommand::show(const Answer& answer) {
    std::cout << (hasShown_ ? "\n" : "") << printable(answer.file) << '\n';
    if (answer.finding) {
        answer.finding->table.write(std::cout);
    } else {
        std::cout << "  " << words_.nothing << '\n';
    }
    std::cout.flush();
    hasShown_ = true;
}

void FilesCommand::addToDocument(const Answer& answer) {
    document_.push_back({{"file", answer.file},
                         {words_.jsonName, answer.finding ? answer.finding->json : Json()},
                         {"error", toJson(answer.error)}});
}

}  // namespace photoinfo
