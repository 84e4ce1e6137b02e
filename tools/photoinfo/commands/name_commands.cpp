#include <iostream>
#include <string>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "photoinfo/command.h"
#include "photoinfo/show/json.h"
#include "photoinfo/show/table.h"
#include "photoinfo/show/text.h"

namespace photoinfo {

namespace {

/// What the library knows of names needs no tool and no photo.
class NameCommand : public Command {
protected:
    void addJsonFlag(CLI::App& app) { app.add_flag("--json", isJson_, "One JSON object"); }

    void show(const Table& table, const Json& json) const {
        if (isJson_) {
            writeJson(std::cout, json);
        } else {
            table.write(std::cout);
        }
    }

private:
    bool isJson_ = false;
};

class CropFactorCommand : public NameCommand {
public:
    CLI::App* addTo(CLI::App& program) override {
        CLI::App* const app = program.add_subcommand(
            "crop-factor", "A camera's crop factor; 1 for one that isn't known");
        app->add_option("MAKE", make_, "The camera's maker")->type_name(" ")->required();
        app->add_option("MODEL", model_, "The camera's model")->type_name(" ")->required();
        addJsonFlag(*app);
        return app;
    }

    ExitCode run(const SharedOptions& /*options*/) override {
        const float factor = exiv2_wp::getCropFactor(make_, model_);
        Table table;
        table.row("Crop factor", decimal(factor));
        show(table, {{"make", make_}, {"model", model_}, {"cropFactor", sameDecimal(factor)}});
        return ExitCode::success;
    }

private:
    std::string make_;
    std::string model_;
};

class CanonicalCommand : public NameCommand {
public:
    CLI::App* addTo(CLI::App& program) override {
        CLI::App* const app = program.add_subcommand(
            "canonical", "The forms under which names of cameras and lenses compare");
        app->add_option("NAME", name_, "The name of a camera or lens")->type_name(" ")->required();
        addJsonFlag(*app);
        return app;
    }

    ExitCode run(const SharedOptions& /*options*/) override {
        std::string camera = name_;
        std::string lens = name_;
        exiv2_wp::CamerasProfiles_canonizeName(camera);
        exiv2_wp::ImageLens_canonizeName(lens);
        Table table;
        table.row("As a camera", camera);
        table.row("As a lens", lens);
        show(table, {{"name", name_}, {"camera", camera}, {"lens", lens}});
        return ExitCode::success;
    }

private:
    std::string name_;
};

}  // namespace

std::unique_ptr<Command> makeCropFactorCommand() {
    return std::make_unique<CropFactorCommand>();
}

std::unique_ptr<Command> makeCanonicalCommand() {
    return std::make_unique<CanonicalCommand>();
}

}  // namespace photoinfo
