# shellcheck shell=bash
# Sourced by the scripts: which Debian packages they need, and how those get onto the machine.

# To build the library and its command-line tool.
# shellcheck disable=SC2034 # used by those who source this
packages_build=(cmake ninja-build g++ libcli11-dev nlohmann-json3-dev)
# The two tools that the library drives.
# shellcheck disable=SC2034
packages_tools=(exiv2 libimage-exiftool-perl)
# For the demo: a maker of fresh images.
# shellcheck disable=SC2034
packages_demo=(netpbm)
# To build libexiv2 as a static library from Debian's source packages, natively and for Windows.
# shellcheck disable=SC2034
packages_libexiv2=(dpkg-dev cmake ninja-build g++ libexpat1-dev zlib1g-dev)
# shellcheck disable=SC2034
packages_libexiv2_windows=(g++-mingw-w64-x86-64-posix libz-mingw-w64-dev)
# To check the form of the sources and of the scripts.
# shellcheck disable=SC2034
packages_format=(git clang-format)
# shellcheck disable=SC2034
packages_scripts=(git shellcheck)
# To build and run the native tests, on a machine too that has a static libexiv2 from another script.
# shellcheck disable=SC2034
packages_tests=(googletest libexiv2-dev libexpat1-dev zlib1g-dev libjpeg-turbo-progs pkgconf fish)
# To look at photoinfo's report as its readers do, in a browser without a window.
# shellcheck disable=SC2034
packages_browser=(chromium fonts-dejavu-core)
# To run the tests under the sanitizers of Clang.
# shellcheck disable=SC2034
packages_sanitizers=(clang lld llvm libclang-rt-dev)
# To analyse the sources, those for Windows too, beside clang-tidy.
# shellcheck disable=SC2034
packages_analysis=(git clang libexiv2-dev g++-mingw-w64-x86-64-posix)
# To build and run the fuzzers.
# shellcheck disable=SC2034
packages_fuzz=(clang llvm libclang-rt-dev)
# To build for Windows and to run what was built.
# shellcheck disable=SC2034
packages_windows=(g++-mingw-w64-x86-64-posix clang lld wine wine64)
# To build the package for Windows, with its manual.
# shellcheck disable=SC2034
packages_windows_package=(g++-mingw-w64-x86-64-posix groff-base)
# The sources of the locales from which Wine takes its code pages.
# shellcheck disable=SC2034
packages_locales=(locales)
# To build the Windows library by Clang too.
# shellcheck disable=SC2034
packages_clang=(clang lld)
# To measure how much of the library the tests reach.
# shellcheck disable=SC2034
packages_coverage=(gcovr)
# To read the exported header's documentation as pages.
# shellcheck disable=SC2034
packages_docs=(doxygen)
# To build and run the benchmarks, and to print their table.
# shellcheck disable=SC2034
packages_benchmarks=(libbenchmark-dev jq)

as_root() {
    if [[ $(id -u) == 0 ]]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        echo "Only root may do this, and there is no sudo: $*" >&2
        return 1
    fi
}

is_installed() {
    [[ $(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
}

# install_missing PACKAGE...: installs those that aren't there; a machine that has all isn't touched.
# EXIV2_WRAPPER_ASKED_PACKAGES names a file that gets to know what was asked for.
install_missing() {
    local package
    local missing=()
    if [[ -n ${EXIV2_WRAPPER_ASKED_PACKAGES:-} ]]; then
        printf '%s\n' "$@" >>"$EXIV2_WRAPPER_ASKED_PACKAGES"
    fi
    if ! command -v dpkg-query >/dev/null; then
        echo "This is not Debian; please provide what these packages hold: $*" >&2
        return 0
    fi
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    if ((${#missing[@]} == 0)); then
        return 0
    fi
    echo "Installing ${missing[*]}"
    as_root apt-get --quiet=2 --option Acquire::Retries=3 update </dev/null >/dev/null
    as_root env DEBIAN_FRONTEND=noninteractive apt-get --quiet=2 --option Acquire::Retries=3 install --yes \
        --no-install-recommends "${missing[@]}" </dev/null >/dev/null
}
