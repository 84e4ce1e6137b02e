#include <windows.h>

#include "product/code_page.h"

namespace product {

unsigned narrowCodePage() {
    return GetACP();
}

std::filesystem::path literalPath(const std::filesystem::path& path) {
    const std::wstring prefix = L"\\\\?\\";
    const std::wstring text = std::filesystem::path(path).make_preferred().native();
    return text.starts_with(prefix) ? text : prefix + text;
}

}  // namespace product
