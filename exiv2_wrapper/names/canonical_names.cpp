#include <string>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/text/text.h"

namespace exiv2_wp {

namespace {

bool isDroppedFromCamera(char c) {
    return c == ' ' || c == '"' || c == '/';
}

bool isDroppedFromLens(char c) {
    return isDroppedFromCamera(c) || c == '-';
}

}  // namespace

void CamerasProfiles_canonizeName(std::string& name) {
    std::erase_if(name, isDroppedFromCamera);
    internal::lowerCase(name);
}

void ImageLens_canonizeName(std::string& name) {
    std::erase_if(name, isDroppedFromLens);
    internal::lowerCase(name);
}

}  // namespace exiv2_wp
