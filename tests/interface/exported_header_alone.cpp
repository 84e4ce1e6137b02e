// Alone and first, since it has to bring all that it needs.
#include "exiv2_wrapper/exiv2_wrapper.h"

// After it, what this file is for.
#include "interface/exported_header_alone.h"

long languageOfTheExportedHeader() {
    return __cplusplus;
}
