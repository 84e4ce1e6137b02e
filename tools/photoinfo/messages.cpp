#include "photoinfo/messages.h"

#include <new>
#include <string>

#include "photoinfo/platform.h"
#include "photoinfo/show/text.h"

namespace photoinfo {

void complain(std::string_view message) noexcept {
    try {
        platform::writeError("photoinfo: " + printable(message) + "\n");
    } catch (const std::bad_alloc&) {
        platform::writeError("photoinfo: out of memory\n");
    }
}

}  // namespace photoinfo
