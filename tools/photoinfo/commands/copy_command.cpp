#include <algorithm>
#include <array>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "photoinfo/command.h"
#include "photoinfo/files/photo_file.h"
#include "photoinfo/show/table.h"
#include "photoinfo/show/text.h"
#include "photoinfo/tool/exiftool_tool.h"

namespace photoinfo {

namespace {

namespace fs = std::filesystem;

// The resolution's units by their Exif codes, from 1 on.
constexpr std::array<const char*, 3> kUnits = {"none", "inch", "cm"};

constexpr float kRejected = -1.0F;
constexpr float kBest = 5.0F;

class CopyCommand : public Command {
public:
    CLI::App* addTo(CLI::App& program) override {
        CLI::App* const app = program.add_subcommand(
            "copy", "Copies a photo's metadata into an exported image, in place");
        app->add_option("SOURCE", source_, "The photo")->type_name(" ")->required();
        app->add_option("DESTINATION", destination_, "The image, which exists")
            ->type_name(" ")
            ->required();
        app->add_option("--software", parameters_.software, "The name of the writing software")
            ->type_name("TEXT");
        app->add_option("--rating", rating_, "Stars, 0 to 5; -1 for rejected")
            ->type_name("STARS")
            ->check(CLI::Range(kRejected, kBest));
        addResolution(*app);
        return app;
    }

    ExitCode run(const SharedOptions& options) override {
        checkOptions();
        const fs::path source = filePathOf(source_);
        const fs::path destination = filePathOf(destination_);
        checkFiles(source, destination);
        const Exiftool exiftool(options.toolDirectory);
        requireImage(exiftool, destination);
        if (!exiftool::copyMetadata(source, destination, parameters_)) {
            exiftool.requireAlive(destination);
            throw Failure(ExitCode::file, aboutFile(destination_,
                                                    "exiftool did not confirm that it updated this "
                                                    "file; does its name fit its content?"));
        }
        report();
        return ExitCode::success;
    }

private:
    // The three belong together: the library writes none of them otherwise.
    void addResolution(CLI::App& app) {
        constexpr std::int32_t kLeast = 1;
        constexpr std::int32_t kMost = 1'000'000;
        CLI::Option* const x =
            app.add_option("--x-resolution", parameters_.xResolution, "Pixels a unit across");
        CLI::Option* const y =
            app.add_option("--y-resolution", parameters_.yResolution, "Pixels a unit down");
        CLI::Option* const unit = app.add_option("--unit", unit_, "The resolution's unit");
        x->type_name("N")->check(CLI::Range(kLeast, kMost))->needs(y)->needs(unit);
        y->type_name("N")->check(CLI::Range(kLeast, kMost))->needs(x)->needs(unit);
        unit->type_name("UNIT")
            ->check(CLI::IsMember(std::vector<std::string>(kUnits.begin(), kUnits.end())))
            ->needs(x)
            ->needs(y);
    }

    void checkOptions() {
        if (!fitsRequest(parameters_.software)) {
            throw Failure(ExitCode::usage, "--software: the name holds a line end");
        }
        if (rating_) {
            parameters_.rating = *rating_;
        }
        if (!unit_.empty()) {
            parameters_.resolutionUnit = unitCode();
        }
    }

    [[nodiscard]] std::int32_t unitCode() const {
        const auto found = std::find(kUnits.begin(), kUnits.end(), unit_);
        return static_cast<std::int32_t>(found - kUnits.begin()) + 1;
    }

    void checkFiles(const fs::path& source, const fs::path& destination) const {
        requireReadable(source_);
        requireReadable(destination_);
        std::error_code error;
        if (fs::equivalent(source, destination, error)) {
            throw Failure(ExitCode::file, aboutFile(destination_, "is the source itself"));
        }
        requireNameFitsRequestOf(source_, source);
        requireNameFitsRequestOf(destination_, destination);
    }

    static void requireNameFitsRequestOf(const std::string& argument, const fs::path& file) {
        try {
            requireNameFitsRequest(file);
        } catch (const Failure& failure) {
            throw Failure(failure.code(), aboutFile(argument, failure.what()));
        }
    }

    void requireImage(const Exiftool& exiftool, const fs::path& destination) const {
        const auto tags = exiftool::readTags(destination, "-MIMEType");
        const auto type = tags.find("MIMEType");
        if (type == tags.end() || !type->second.starts_with("image/")) {
            exiftool.requireAlive(destination);
            throw Failure(ExitCode::file, aboutFile(destination_, "is no image"));
        }
    }

    void report() const {
        std::cout << printable(destination_) << '\n';
        Table table;
        table.row("Metadata from", source_);
        if (!parameters_.software.empty()) {
            table.row("Software", parameters_.software);
        }
        if (rating_) {
            table.row("Rating", *rating_ == kRejected ? "rejected" : decimal(*rating_));
        }
        if (!unit_.empty()) {
            table.row("Resolution", showResolution());
        }
        table.write(std::cout);
    }

    [[nodiscard]] std::string showResolution() const {
        return std::to_string(parameters_.xResolution) + " x " +
               std::to_string(parameters_.yResolution) +
               (unit_ == "none" ? " without a unit" : " per " + unit_);
    }

    std::string source_;
    std::string destination_;
    std::string unit_;
    std::optional<float> rating_;
    exiftool::ExportMetadataParameters parameters_;
};

}  // namespace

std::unique_ptr<Command> makeCopyCommand() {
    return std::make_unique<CopyCommand>();
}

}  // namespace photoinfo
