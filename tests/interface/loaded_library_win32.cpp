#include <windows.h>

#include "interface/loaded_library.h"

namespace test_support {

LoadedLibrary::LoadedLibrary(const std::filesystem::path& file)
    : library_(LoadLibraryW(file.c_str())) {}

LoadedLibrary::~LoadedLibrary() {
    if (library_ != nullptr) {
        FreeLibrary(static_cast<HMODULE>(library_));
    }
}

LoadedLibrary::Address LoadedLibrary::address(const char* symbol) const {
    return library_ == nullptr
               ? nullptr
               : reinterpret_cast<Address>(GetProcAddress(static_cast<HMODULE>(library_), symbol));
}

}  // namespace test_support
