#include <dlfcn.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>

// load_probe LIBRARY: tells how many nanoseconds it takes to load a library into a process that has
// the C++ runtime and the host's own libraries already.

int main(int argc, char** argv) {
    const auto begin = std::chrono::steady_clock::now();
    if (argc != 2 || dlopen(argv[1], RTLD_NOW | RTLD_LOCAL) == nullptr) {
        std::fprintf(stderr, "%s\n", argc == 2 ? dlerror() : "usage: load_probe LIBRARY");
        return EXIT_FAILURE;
    }
    const std::chrono::duration<double, std::nano> time = std::chrono::steady_clock::now() - begin;
    std::printf("%.0f\n", time.count());
    return EXIT_SUCCESS;
}
