// SPDX-License-Identifier: GPL-2.0-or-later
#include "reader/photo.h"

#include <stdexcept>
#include <string>

namespace exiv2_companion {

Photo openPhoto(const std::filesystem::path& file) {
    // Opening a named pipe would wait for a writer.
    if (!std::filesystem::is_regular_file(file)) {
        throw std::runtime_error("there is no such regular file");
    }
    // libexiv2 takes names such as "http://host/a.jpg" and "-" for something else than files; none
    // of those begins with a folder.
    Photo photo = Exiv2::ImageFactory::open(
        file.is_absolute() ? file.native() : (std::filesystem::path(".") / file).native());
    photo->readMetadata();
    return photo;
}

}  // namespace exiv2_companion
