#pragma once

#include <filesystem>

namespace test_support {

/// A shared library that is loaded while the program runs; unloaded with its owner.
class LoadedLibrary {
public:
    explicit LoadedLibrary(const std::filesystem::path& file);
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;
    ~LoadedLibrary();

    /// The function that has this name in the library; null when there is none, or no library.
    template <typename Function>
    Function* find(const char* symbol) const {
        return reinterpret_cast<Function*>(address(symbol));
    }

private:
    using Address = void (*)();
    [[nodiscard]] Address address(const char* symbol) const;

    void* library_;
};

}  // namespace test_support
