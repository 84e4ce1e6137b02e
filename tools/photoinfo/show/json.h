#pragma once

#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>
#include <string>

namespace photoinfo {

/// Members keep their order.
using Json = nlohmann::ordered_json;

/// null for what is unknown. A float becomes the number of its shortest decimal form; what isn't
/// finite has no form in JSON and is written as null. Text is bytes; it is made valid on writing.
[[nodiscard]] Json toJson(std::optional<std::int32_t> value);
[[nodiscard]] Json toJson(std::optional<float> value);
[[nodiscard]] Json toJson(const std::string& text);  ///< empty: unknown

/// null for a null pointer.
template <typename Value>
[[nodiscard]] Json toJson(const std::unique_ptr<Value>& value) {
    return value ? Json(*value) : Json();
}

/// Writes the document in lines, in plain ASCII: neither a terminal nor a pipe's code page can
/// change what it says.
void writeJson(std::ostream& stream, const Json& document);

}  // namespace photoinfo
