#include <string>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "photoinfo/commands/files_command.h"
#include "photoinfo/tool/exiv_reader.h"

namespace photoinfo {

namespace {

using Properties = std::vector<exiv2_wp::ExivReader::XMPData>;

// The properties that hold others have none of their own.
constexpr auto kNoValue = "(no value)";

// They come sorted, so those of one namespace stand together.
Table tableOf(const Properties& properties) {
    Table table;
    const std::string* shownNamespace = nullptr;
    for (const auto& property : properties) {
        if (shownNamespace == nullptr || *shownNamespace != property.ns) {
            shownNamespace = &property.ns;
            table.heading(property.ns.empty() ? "unknown namespace" : property.ns);
        }
        table.row("  " + property.name, property.value.empty() ? kNoValue : property.value);
    }
    return table;
}

Json jsonOf(const Properties& properties) {
    Json list = Json::array();
    for (const auto& property : properties) {
        list.push_back({{"namespace", toJson(property.ns)},
                        {"name", property.name},
                        {"value", property.value}});
    }
    return list;
}

class XmpCommand : public FilesCommand {
public:
    XmpCommand()
        : FilesCommand({.name = "xmp",
                        .description = "The XMP properties of photos with their namespaces",
                        .jsonName = "properties",
                        .nothing = "no XMP properties"},
                       Tool::exiv2, Count::many) {}

protected:
    std::optional<Finding> ask(const std::filesystem::path& file) override {
        const Properties properties = makeExivReader(file)->getXMPData();
        return properties.empty()
                   ? std::nullopt
                   : std::optional<Finding>({tableOf(properties), jsonOf(properties)});
    }
};

}  // namespace

std::unique_ptr<Command> makeXmpCommand() {
    return std::make_unique<XmpCommand>();
}

}  // namespace photoinfo
