#include "exiv2_wrapper/names/canonical_names.h"

#include <string>

#include "exiv2_wrapper/exiv2_wrapper.h"

namespace exiv2_wp {

namespace {

// One pass: what is kept moves up over what was dropped.
template <typename IsDropped>
void canonize(std::string& name, IsDropped isDropped) {
    std::size_t length = 0;
    for (const char c : name) {
        if (!isDropped(c)) {
            name[length++] = internal::toLower(c);
        }
    }
    name.resize(length);
}

}  // namespace

void CamerasProfiles_canonizeName(std::string& name) {
    canonize(name, &internal::isDroppedFromCamera);
}

void ImageLens_canonizeName(std::string& name) {
    canonize(name, &internal::isDroppedFromLens);
}

}  // namespace exiv2_wp
