#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "photoinfo/commands/files_command.h"
#include "photoinfo/tool/tag_names.h"

namespace photoinfo {

namespace {

/// Sorted by name.
using Tags = std::map<std::string, std::string>;
/// The tags in the order in which they are shown; no value: the file has none.
using ShownTags = std::vector<std::pair<std::string, std::optional<std::string>>>;

// exiftool takes the words behind a hyphen for options as well as for tags. A tag of any group, in
// family 0, is what a tag without a group is, and can be nothing else.
constexpr auto kAnyGroup = "-0all:";

// exiftool's word for what is wrong with the file, unless it is asked for.
constexpr auto kErrorTag = "Error";

// Takes the tag out, in any letter case.
std::optional<std::pair<std::string, std::string>> takeTag(Tags& tags, std::string_view name) {
    const auto found = std::find_if(tags.begin(), tags.end(),
                                    [name](const auto& tag) { return isSameTag(tag.first, name); });
    if (found == tags.end()) {
        return std::nullopt;
    }
    std::pair<std::string, std::string> tag = *found;
    tags.erase(found);
    return tag;
}

class TagsCommand : public FilesCommand {
public:
    TagsCommand()
        : FilesCommand({.name = "tags",
                        .description = "Tags as exiftool names and prints them; all unless named",
                        .jsonName = "tags",
                        .nothing = "no tags"},
                       Tool::exiftool, Count::one) {}

protected:
    void addOptions(CLI::App& app) override {
        app.add_option("TAG", names_, "Tags, for example LensID, EXIF:Model, Model#, GPS*")
            ->type_name(" ");
    }

    void checkOptions() override {
        for (const std::string& name : names_) {
            if (!isTagName(name)) {
                throw Failure(ExitCode::usage, name + ": is no name of a tag; --help tells more");
            }
        }
    }

    std::optional<Finding> ask(const std::filesystem::path& file) override {
        requireNameFitsRequest(file);
        const auto answer = exiftool::readTags(file, arguments());
        if (answer.empty()) {
            exiftool().requireAlive(file);
        }
        Tags tags(answer.begin(), answer.end());
        if (const auto error = tags.find(kErrorTag);
            error != tags.end() && !isAskedFor(kErrorTag)) {
            throw Failure(ExitCode::file, "exiftool: " + error->second);
        }
        return findingOf(inShownOrder(std::move(tags)));
    }

private:
    [[nodiscard]] std::string arguments() const {
        std::string arguments;
        for (const std::string& name : names_) {
            arguments += (arguments.empty() ? "" : " ") + std::string(kAnyGroup) + name;
        }
        return arguments.empty() ? std::string(kAnyGroup) + "all" : arguments;
    }

    [[nodiscard]] bool isAskedFor(std::string_view tag) const {
        return std::any_of(names_.begin(), names_.end(), [tag](const std::string& name) {
            return isSameTag(bareTagName(name), tag);
        });
    }

    // As they were asked for; behind them, by name, those that nobody named.
    [[nodiscard]] ShownTags inShownOrder(Tags tags) const {
        ShownTags shown;
        for (const std::string& name : names_) {
            if (standsForSeveralTags(name)) {
                continue;
            }
            if (auto tag = takeTag(tags, bareTagName(name))) {
                shown.emplace_back(std::move(tag->first), std::move(tag->second));
            } else {
                shown.emplace_back(bareTagName(name), std::nullopt);
            }
        }
        shown.insert(shown.end(), tags.begin(), tags.end());
        return shown;
    }

    static std::optional<Finding> findingOf(const ShownTags& tags) {
        if (tags.empty()) {
            return std::nullopt;
        }
        Finding finding{{}, Json::object()};
        for (const auto& [name, value] : tags) {
            finding.table.row(name, value.value_or(""));
            finding.json[name] = value ? Json(*value) : Json();
        }
        return finding;
    }

    std::vector<std::string> names_;
};

}  // namespace

std::unique_ptr<Command> makeTagsCommand() {
    return std::make_unique<TagsCommand>();
}

}  // namespace photoinfo
