#include "product/code_page.h"

namespace product {

unsigned narrowCodePage() {
    return kUtf8CodePage;
}

std::filesystem::path literalPath(const std::filesystem::path& path) {
    return path;
}

}  // namespace product
