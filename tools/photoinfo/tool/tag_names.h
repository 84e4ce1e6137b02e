#pragma once

#include <string_view>

/// The names by which a user asks exiftool for tags: "Model", "EXIF:Model", "Model#" for its plain
/// number, "GPS*" and "all" for several.
namespace photoinfo {

/// False for what can't be the name of a tag. "-Artist=Ada", written like one, would change the
/// user's file.
[[nodiscard]] bool isTagName(std::string_view name);

/// True for a name that can stand for several tags.
[[nodiscard]] bool standsForSeveralTags(std::string_view name);

/// The name under which the answer holds the tag: without groups and "#".
[[nodiscard]] std::string_view bareTagName(std::string_view name);

/// Tag names are the same in any letter case.
[[nodiscard]] bool isSameTag(std::string_view first, std::string_view second);

}  // namespace photoinfo
