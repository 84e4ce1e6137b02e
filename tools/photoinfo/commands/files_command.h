#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "photoinfo/command.h"
#include "photoinfo/show/json.h"
#include "photoinfo/show/table.h"
#include "photoinfo/tool/exiftool_tool.h"

namespace photoinfo {

/// What a command found out about one file, in both forms in which it can be shown.
struct Finding {  // NOLINT(bugprone-exception-escape): JSON's move checks itself, and can't throw
    Table table;
    Json json;
};

/// A command that asks about files, one after another. Shows a table a file, or one JSON document:
/// an array with one object a file, in their order, with "file", the finding under the command's
/// own name, and "error"; each is null where there is none. A file that can't be read is complained
/// of, and the others are answered.
class FilesCommand : public Command {
public:
    enum class Tool { exiv2, exiftool };
    enum class Count { one, many };

    /// How the command presents itself; the texts live as long as the program.
    struct Words {
        const char* name;
        const char* description;
        const char* jsonName;  ///< of the finding in a file's object
        const char* nothing;   ///< shown when there is no finding
    };

    FilesCommand(const Words& words, Tool tool, Count count)
        : words_(words), tool_(tool), count_(count) {}

    CLI::App* addTo(CLI::App& program) final;
    ExitCode run(const SharedOptions& options) final;

protected:
    /// Adds what the command takes beside the files.
    virtual void addOptions(CLI::App& /*app*/) {}

    /// Checks the options, before any tool is started; a `Failure` ends the command.
    virtual void checkOptions() {}

    /// Asks about one file, which can be read; the tool runs. No finding: the file holds nothing of
    /// the kind. A `Failure` with ExitCode::file, whose message doesn't name the file, is about
    /// this one; any other ends the command.
    virtual std::optional<Finding> ask(const std::filesystem::path& file) = 0;

    /// The running tool of a command of Tool::exiftool.
    [[nodiscard]] const Exiftool& exiftool() const { return exiftool_.value(); }

private:
    struct Answer {
        std::string file;   // as the user named it; bytes
        std::string error;  // why it couldn't be read; empty: it was
        std::optional<Finding> finding;
    };

    void startTool(const SharedOptions& options);
    void readAheadFrom(std::size_t index) const;
    Answer answerAbout(const std::string& argument);
    void take(const Answer& answer);
    void show(const Answer& answer);
    void addToDocument(const Answer& answer);

    Words words_;
    Tool tool_;
    Count count_;
    std::vector<std::string> files_;
    bool isJson_ = false;
    std::optional<Exiftool> exiftool_;  // asked to quit when the command is done
    Json document_ = Json::array();
    bool hasShown_ = false;
    bool hasError_ = false;
};

}  // namespace photoinfo
