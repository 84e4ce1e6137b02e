#!/usr/bin/env bash
# Installs what is missing on a Debian machine and checks everything: the sources' form, the tests
# natively, under both sanitizers and as Windows programs under Wine, and the static analysis. Ends
# with an exit code other than 0 at the first failure. Writes nothing outside build/.
#
#   scripts/test.sh
#
# Run as root, or as a user who may use sudo.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"
cd "$root"

jobs=$(nproc)
export CMAKE_BUILD_PARALLEL_LEVEL=$jobs
export CTEST_PARALLEL_LEVEL=$jobs
export CLICOLOR_FORCE=0

# step TITLE COMMAND...: runs the command and tells how long it took.
step() {
    local title=$1
    local begin=$SECONDS
    shift
    echo "==== $title"
    "$@"
    echo "==== $title: done in $((SECONDS - begin)) s"
}

# tracked PATTERN...: the repository's own files, whoever owns the clone.
tracked() {
    git -c safe.directory='*' ls-files -- "$@"
}

check_format() {
    tracked '*.h' '*.cpp' | xargs clang-format --dry-run -Werror
}

check_scripts() {
    tracked '*.sh' .ci/run | xargs shellcheck --external-sources
}

# What the real tool prints about real photos, for replays on a platform that lacks the tool.
record_printouts() {
    scripts/record_printouts.sh "$root/build/printouts"
}

# workflow PRESET: configures, builds and tests.
workflow() {
    EXIV2_WRAPPER_PRINTOUTS=$root/build/printouts cmake --workflow --preset "$1"
}

# with_fixed_addresses COMMAND...: without random addresses in memory, where that is allowed.
with_fixed_addresses() {
    if setarch --addr-no-randomize true 2>/dev/null; then
        setarch --addr-no-randomize "$@"
    else
        "$@"
    fi
}

# The sanitizers' runtimes expect less random addresses than newer kernels hand out.
sanitizer_workflow() {
    EXIV2_WRAPPER_PRINTOUTS=$root/build/printouts \
        with_fixed_addresses cmake --workflow --preset "$1"
}

# The real tool for Windows is an npm package. Debian's npm is large, so any that is there will do.
fetch_windows_exiftool() {
    command -v npm >/dev/null || install_missing npm
    scripts/fetch_windows_exiftool.sh
}

# Wine's first start fills its prefix, which takes longer than a test may; no test should wait for
# it. The program that is left waiting for a line keeps Wine's services up: a test that started them
# would count as running for as long as they do. Random addresses make one start in some thousands
# fail; the build's own emulator goes without them too.
start_wine() {
    local wine
    wine=$(PATH=/usr/lib/wine:$PATH command -v wine64 || command -v wine)
    export WINEPREFIX=$root/build/mingw/wine WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml='
    mkdir -p "$root/build/mingw"
    with_fixed_addresses "$wine" wineboot --init </dev/null >/dev/null 2>&1
    exec {wine_stays}> >(with_fixed_addresses "$wine" cmd /c 'set /p line=' >/dev/null 2>&1)
}

# Wine shows this machine's files as drive Z.
wine_workflow() {
    start_wine
    EXIV2_WRAPPER_PRINTOUTS=Z:$root/build/printouts cmake --workflow --preset mingw
    exec {wine_stays}>&-
}

# The library and its tool by a second compiler, which warns of other things.
build_windows_by_clang() {
    cmake --preset mingw-clang -DEXIV2_WRAPPER_BUILD_TESTS=OFF
    cmake --build --preset mingw-clang
}

# The one optimised build; the benchmarks are compiled with the native tests, and measure something
# on a quiet machine only: scripts/bench.sh runs them.
run_demo() {
    CXXFLAGS=-Werror scripts/demo.sh
}

# The analysis sees a file as a build compiles it: those for Windows as the build by Clang does.
analyse() {
    tracked 'exiv2_wrapper/*.cpp' 'host/*.cpp' 'tools/*.cpp' | grep -v '_win32\.cpp$' |
        xargs --max-procs="$jobs" --max-args=1 clang-tidy --quiet -p build/debug
}

analyse_windows() {
    tracked 'exiv2_wrapper/*_win32.cpp' 'host/*_win32.cpp' 'tools/*_win32.cpp' |
        xargs --max-procs="$jobs" --max-args=1 clang-tidy --quiet -p build/mingw-clang
}

install_missing "${packages_build[@]}" "${packages_tools[@]}" "${packages_tests[@]}" \
    "${packages_demo[@]}" "${packages_clang[@]}" "${packages_fuzz[@]}" "${packages_docs[@]}" \
    "${packages_browser[@]}"

step "Format" check_format
step "Scripts" check_scripts
step "Print-outs of real photos" record_printouts
step "Native tests" workflow debug
step "Static analysis" analyse
step "Reference of the exported header" scripts/docs.sh
step "AddressSanitizer and UndefinedBehaviorSanitizer" sanitizer_workflow asan
step "ThreadSanitizer" sanitizer_workflow tsan
step "Fuzzers" scripts/fuzz.sh 20
step "Windows exiftool" fetch_windows_exiftool
step "Windows tests under Wine" wine_workflow
step "Windows build by Clang" build_windows_by_clang
step "Static analysis of the Windows sources" analyse_windows
step "Demo" run_demo
echo "==== All passed in $SECONDS s"
