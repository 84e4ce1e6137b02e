#include <dlfcn.h>

#include "interface/loaded_library.h"

namespace test_support {

LoadedLibrary::LoadedLibrary(const std::filesystem::path& file)
    : library_(::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {}

LoadedLibrary::~LoadedLibrary() {
    if (library_ != nullptr) {
        ::dlclose(library_);
    }
}

LoadedLibrary::Address LoadedLibrary::address(const char* symbol) const {
    return library_ == nullptr ? nullptr : reinterpret_cast<Address>(::dlsym(library_, symbol));
}

}  // namespace test_support
