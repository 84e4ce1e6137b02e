#include "photoinfo/show/json.h"

#include "photoinfo/show/text.h"

namespace photoinfo {

Json toJson(std::optional<std::int32_t> value) {
    return value ? Json(*value) : Json();
}

Json toJson(std::optional<float> value) {
    return value ? Json(sameDecimal(*value)) : Json();
}

Json toJson(const std::string& text) {
    return text.empty() ? Json() : Json(text);
}

void writeJson(std::ostream& stream, const Json& document) {
    constexpr int kIndent = 2;
    constexpr bool kEscapeBeyondAscii = true;
    stream << document.dump(kIndent, ' ', kEscapeBeyondAscii, Json::error_handler_t::replace)
           << '\n';
}

}  // namespace photoinfo
