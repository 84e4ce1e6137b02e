#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "photoinfo/exit_code.h"

namespace photoinfo {

/// What every command is told by the options that they share.
struct SharedOptions {
    std::string toolDirectory;  ///< as an argument (platform.h); empty: neither named nor usual
};

/// One command of the program, such as "summary". It is asked for its place on the command line
/// first; of all commands the one that the user names is then run.
class Command {
public:
    Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;
    virtual ~Command() = default;

    /// Adds the command with its description and options, and returns what was added. The options
    /// write into this command, which lives longer than `program`.
    virtual CLI::App* addTo(CLI::App& program) = 0;

    /// Does the work: results on standard output, complaints on standard error (messages.h). A
    /// `Failure` that it raises is reported by the caller.
    virtual ExitCode run(const SharedOptions& options) = 0;
};

/// The commands, each made in the file of its name in commands/.
std::unique_ptr<Command> makeSummaryCommand();
std::unique_ptr<Command> makeInfoCommand();
std::unique_ptr<Command> makeBatchCommand();
std::unique_ptr<Command> makeOrientationCommand();
std::unique_ptr<Command> makeTagCommand();
std::unique_ptr<Command> makeXmpCommand();
std::unique_ptr<Command> makePreviewCommand();
std::unique_ptr<Command> makeTagsCommand();
std::unique_ptr<Command> makeLensCommand();
std::unique_ptr<Command> makeCopyCommand();
std::unique_ptr<Command> makeCropFactorCommand();
std::unique_ptr<Command> makeCanonicalCommand();
std::unique_ptr<Command> makeScanCommand();
std::unique_ptr<Command> makeReportCommand();
std::unique_ptr<Command> makeDoctorCommand();

}  // namespace photoinfo
