#include "photoinfo/application.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstddef>
#include <exception>
#include <iostream>
#include <memory>
#include <new>
#include <string_view>
#include <utility>

#include "photoinfo/command.h"
#include "photoinfo/messages.h"
#include "photoinfo/platform.h"
#include "photoinfo/tool/tool_folder.h"

namespace photoinfo {

namespace {

constexpr auto kDescription = "Shows what photos say about themselves.";

constexpr auto kFooter =
    "Exit codes:\n"
    "  0  done; a file without metadata is no failure\n"
    "  1  something unforeseen, such as output that cannot be written\n"
    "  2  the command line is not understood\n"
    "  3  no exiv2.exe that works\n"
    "  4  a file cannot be read, written or served; the others have been answered\n"
    "  5  no exiftool.exe that works\n"
    "  6  exiv2.exe works, but does not know the call that extracts previews\n"
    "  130  stopped by Ctrl-C";

struct CommandMaker {
    std::string_view name;  // as the command gives it to the parser
    std::unique_ptr<Command> (*make)();
};

// In the order of the help text.
constexpr std::array<CommandMaker, 15> kCommandMakers = {{
    {"summary", makeSummaryCommand},
    {"info", makeInfoCommand},
    {"batch", makeBatchCommand},
    {"orientation", makeOrientationCommand},
    {"tag", makeTagCommand},
    {"xmp", makeXmpCommand},
    {"preview", makePreviewCommand},
    {"tags", makeTagsCommand},
    {"lens", makeLensCommand},
    {"copy", makeCopyCommand},
    {"scan", makeScanCommand},
    {"report", makeReportCommand},
    {"crop-factor", makeCropFactorCommand},
    {"canonical", makeCanonicalCommand},
    {"doctor", makeDoctorCommand},
}};

using Arguments = std::vector<std::string>;

bool contains(const Arguments& arguments, std::string_view word) {
    return std::find(arguments.begin(), arguments.end(), word) != arguments.end();
}

// Setting up all commands takes a third of the program's start, so those are left out that the
// arguments can't mean. Help and complaints know all of them.
bool needsAllCommands(const Arguments& arguments) {
    const bool isHelpAsked =
        std::any_of(arguments.begin(), arguments.end(), [](const std::string& argument) {
            return argument.starts_with("-h") || argument.starts_with("--help");
        });
    return isHelpAsked ||
           std::none_of(kCommandMakers.begin(), kCommandMakers.end(),
                        [&](const CommandMaker& m) { return contains(arguments, m.name); });
}

// The parser takes "[a,b]" for a list of values, but to a user it is a file name like any other.
void protectBrackets(Arguments& arguments) {
    for (std::string& argument : arguments) {
        if (argument.size() > 1 && argument.front() == '[' && argument.back() == ']') {
            argument.insert(0, "./");
        }
    }
}

class Application {
public:
    explicit Application(Arguments arguments)
        : arguments_(std::move(arguments)), program_(kDescription, "photoinfo") {
        program_.footer(kFooter);
        program_.set_help_all_flag("--help-all",
                                   "Print this help message and those of all commands");
        program_.set_version_flag("--version", "photoinfo " PHOTOINFO_VERSION);
        // One command at most; that there is one is checked later, so that a misspelt one is named.
        program_.require_subcommand(0, 1);
        // A slash begins a path, on Windows too.
        program_.allow_windows_style_options(false);
        program_.fallthrough();
        program_
            .add_option(
                "--tools", options_.toolDirectory,
                "The folder that holds exiv2.exe and exiftool.exe; the folder tools beside the one "
                "of this program when they lie there. exiv2.exe may lie beside the library instead")
            ->type_name("DIR");
        program_.add_flag("--verbose", isVerbose_,
                          "Show the log of the library and the tools' own messages");
        const bool addsAll = needsAllCommands(arguments_);
        for (const CommandMaker& maker : kCommandMakers) {
            if (addsAll || contains(arguments_, maker.name)) {
                commands_.push_back(maker.make());
                parsers_.push_back(commands_.back()->addTo(program_));
            }
        }
    }

    ExitCode run() {
        protectBrackets(arguments_);
        std::reverse(arguments_.begin(), arguments_.end());
        try {
            program_.parse(std::move(arguments_));
        } catch (const CLI::ParseError& error) {
            return answer(error);
        }
        Command* const command = chosen();
        if (command == nullptr) {
            complain("no command is given; --help lists them");
            return ExitCode::usage;
        }
        if (!isVerbose_) {
            // Failures are told in this program's own words, not in those of the library's log and
            // of the tools.
            platform::setEnvironmentDefault("VESK_LOG", "off");
            platform::silenceTools();
        }
        if (options_.toolDirectory.empty()) {
            options_.toolDirectory = usualToolFolder();
        }
        return command->run(options_);
    }

private:
    // Asking for help or the version is an "error" to the parser.
    ExitCode answer(const CLI::ParseError& error) {
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
            program_.exit(error, std::cout, std::cerr);
            return ExitCode::success;
        }
        complain(std::string(error.what()) + "; --help tells more");
        return ExitCode::usage;
    }

    // Null when the user has named none.
    Command* chosen() {
        for (std::size_t i = 0; i < parsers_.size(); ++i) {
            if (parsers_[i]->parsed()) {
                return commands_[i].get();
            }
        }
        return nullptr;
    }

    Arguments arguments_;
    SharedOptions options_;
    bool isVerbose_ = false;
    std::vector<std::unique_ptr<Command>> commands_;
    CLI::App program_;
    std::vector<CLI::App*> parsers_;  // owned by program_, one a command
};

// What is still in the buffer counts as output too.
void finishOutput() {
    std::cout.flush();
    if (!std::cout) {
        throw Failure(ExitCode::failure, "standard output cannot be written");
    }
}

}  // namespace

int runApplication(std::vector<std::string> arguments) noexcept {
    try {
        const ExitCode code = Application(std::move(arguments)).run();
        finishOutput();
        return static_cast<int>(code);
    } catch (const Failure& failure) {
        complain(failure.what());
        return static_cast<int>(failure.code());
    } catch (const std::bad_alloc&) {
        complain("out of memory");
    } catch (const std::exception& error) {
        complain(error.what());
    }
    return static_cast<int>(ExitCode::failure);
}

}  // namespace photoinfo
