#!/usr/bin/env bash
# Makes libexiv2 as a static library, and the stock exiv2 program of the same source, from Debian's
# source packages: what the fast exiv2.exe of tools/exiv2 is linked with, and what it is compared with.
# They go to build/libexiv2/native or build/libexiv2/windows; does nothing when they are there already.
#
#   scripts/libexiv2.sh native|windows
#
# apt gets the sources and checks their signatures, with a configuration of its own below build/: the
# system's sources of packages, asked for source packages too. Nothing is written below /etc. Run as
# root, or as a user who may use sudo, on a Debian machine.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"

# How a caller wants code of ours compiled is not for this.
unset CFLAGS CXXFLAGS CPPFLAGS LDFLAGS

readonly platform=${1:-}
readonly work=$root/build/libexiv2
readonly apt=$work/apt
readonly target=$work/$platform
readonly done_file=$target/made
readonly patch=$root/tools/exiv2/libexiv2_constant_tables.patch
readonly origin=$target/origin
readonly log=$work/$platform.log

# private_apt PROGRAM ARGUMENT...: apt-get or apt-cache with a state of its own.
private_apt() {
    local program=$1
    shift
    "$program" --quiet=2 \
        --option Dir::Etc::sourcelist="$apt/sources.list" --option Dir::Etc::sourceparts="$apt/parts" \
        --option Dir::State="$apt/state" --option Dir::State::status=/var/lib/dpkg/status \
        --option Dir::Cache="$apt/cache" --option APT::Sandbox::User= \
        --option Acquire::Retries=3 "$@" </dev/null
}

# copy_package_sources: the system's, in both of apt's forms, with source packages in place of built
# ones.
copy_package_sources() {
    local file
    rm -rf "$apt"
    mkdir -p "$apt/parts" "$apt/state/lists/partial" "$apt/cache/archives/partial"
    : >"$apt/sources.list"
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/*; do
        if [[ $file == *.list && -r $file ]]; then
            sed -n 's/^[[:blank:]]*deb[[:blank:]]/deb-src /p' "$file" >"$apt/parts/${file##*/}"
        elif [[ $file == *.sources ]]; then
            sed 's/^Types:.*/Types: deb-src/' "$file" >"$apt/parts/${file##*/}"
        fi
    done
    # A source of packages that has nothing for this, or can't be reached, is no reason to stop.
    private_apt apt-get update || true
}

# fetch_source PACKAGE: its unpacked source in build/libexiv2/source/PACKAGE, with Debian's patches.
# The newest version that can be had: a mirror may announce one that it doesn't hold yet, or any more.
fetch_source() {
    local fetched=$work/source/fetched-$1
    local version
    local versions
    if [[ -d $work/source/$1 ]]; then
        return
    fi
    if [[ ! -d $apt/state ]]; then
        copy_package_sources
    fi
    versions=$(private_apt apt-cache showsrc "$1" | sed -n 's/^Version: //p' | sort -urV)
    for version in $versions; do
        rm -rf "$fetched"
        mkdir -p "$fetched"
        if (cd "$fetched" && private_apt apt-get source "$1=$version"); then
            mv "$fetched/$1"-*/ "$work/source/$1"
            rm -rf "$fetched"
            return
        fi
    done
    echo "apt has no source of $1." >&2
    return 1
}

# install_project SOURCE OPTION...: builds a project by CMake and installs it into the target folder.
install_project() {
    local source=$1
    local build=$work/objects/$platform/${source##*/}
    shift
    rm -rf "$build"
    cmake -G Ninja -S "$source" -B "$build" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$target" \
        -DCMAKE_INSTALL_LIBDIR=lib -DBUILD_SHARED_LIBS=OFF -Wno-dev "$@" &&
    cmake --build "$build" --target install
}

# Without its translations: the output doesn't depend on a language, and nothing looks for one. As
# Debian has it otherwise.
readonly exiv2_options=(-DEXIV2_ENABLE_NLS=OFF -DEXIV2_BUILD_SAMPLES=OFF -DEXIV2_ENABLE_BMFF=ON
    -DCMAKE_CXX_STANDARD=14)
readonly section_flags="-O2 -ffunction-sections -fdata-sections"

# The source of exiv2, with what makes a program that is linked with it start faster. A version that the
# patch doesn't fit does without.
fetch_exiv2() {
    fetch_source exiv2 || return
    if patch --directory="$work/source/exiv2" --strip=1 --forward --dry-run <"$patch"; then
        patch --directory="$work/source/exiv2" --strip=1 --forward <"$patch"
    fi
}

# install_exiv2 OPTION...: its sources compiled eight at a time, in less than half the time; one by one
# where a version of it doesn't compile so. A header of it may be read but once.
install_exiv2() {
    local header=$work/source/exiv2/src/enforce.hpp
    if [[ -f $header ]] && ! grep --quiet '^#pragma once' "$header"; then
        sed -i '1i #pragma once' "$header"
    fi
    install_project "$work/source/exiv2" "${exiv2_options[@]}" "$@" -DCMAKE_UNITY_BUILD=ON \
        -DCMAKE_PROJECT_exiv2_INCLUDE="$root/cmake/UniteLibexiv2.cmake" ||
        install_project "$work/source/exiv2" "${exiv2_options[@]}" "$@"
}

make_native() {
    fetch_exiv2 &&
    install_exiv2 \
        -DCMAKE_POSITION_INDEPENDENT_CODE=OFF -DCMAKE_CXX_FLAGS_RELEASE="$section_flags -DNDEBUG" \
        -DEXPAT_LIBRARY="$(find /usr/lib -name libexpat.a -print -quit)" \
        -DZLIB_LIBRARY="$(find /usr/lib -name libz.a -not -path '*mingw*' -print -quit)"
}

make_windows() {
    # Debian's patches of expat want a value for XML_DTD, which its own configuration leaves empty.
    local toolchain=$root/cmake/mingw-w64.cmake
    fetch_source expat &&
    install_project "$work/source/expat/expat" -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
        -DEXPAT_DTD=OFF -DCMAKE_C_FLAGS=-DXML_DTD=1 -DEXPAT_SHARED_LIBS=OFF -DEXPAT_BUILD_TOOLS=OFF -DEXPAT_BUILD_EXAMPLES=OFF \
        -DEXPAT_BUILD_TESTS=OFF -DEXPAT_BUILD_DOCS=OFF &&
    fetch_exiv2 &&
    install_exiv2 -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
        -DCMAKE_PREFIX_PATH="$target" -DCMAKE_CXX_FLAGS=-DXML_STATIC -DCMAKE_EXE_LINKER_FLAGS=-static \
        -DCMAKE_CXX_FLAGS_RELEASE="$section_flags -DNDEBUG" \
        -DEXPAT_LIBRARY="$target/lib/libexpat.a" -DEXPAT_INCLUDE_DIR="$target/include" \
        -DZLIB_LIBRARY=/usr/x86_64-w64-mingw32/lib/libz.a \
        -DZLIB_INCLUDE_DIR=/usr/x86_64-w64-mingw32/include
}

# record_source PACKAGE VERSION COPYRIGHT
record_source() {
    echo "  $1 $2" >>"$origin.new/sources"
    cp "$3" "$origin.new/$1.txt"
}

# Names and versions of Debian's sources, and their terms: for those who pass exiv2.exe on.
record_origin() {
    local name
    local zlib=libz-mingw-w64
    rm -rf "$origin.new"
    mkdir "$origin.new"
    for name in exiv2 expat; do
        record_source "$name" "$(sed -n '1s/.*(\(.*\)).*/\1/p' "$work/source/$name/debian/changelog")" \
            "$work/source/$name/debian/copyright"
    done
    record_source "$zlib" "$(dpkg-query --show --showformat='${source:Version}' "$zlib-dev")" \
        "/usr/share/doc/$zlib-dev/copyright"
    mv "$origin.new" "$origin"
}

# make_platform: everything in the target folder.
make_platform() {
    if ! command -v apt-get >/dev/null; then
        echo "This is not Debian. Please build libexiv2 0.27.6 or later as a static library with its program" >&2
        echo "exiv2 (${exiv2_options[*]}" >&2
        echo "-DBUILD_SHARED_LIBS=OFF), from a static expat and zlib, and install it into" >&2
        echo "$target, where CMake then finds it." >&2
        exit 1
    fi
    mkdir -p "$work"
    echo "Making libexiv2 in $target"
    rm -rf "$target" "$work/objects/$platform"
    if ! "make_$platform" >"$log" 2>&1; then
        cat "$log" >&2
        exit 1
    fi
    rm -rf "$work/objects/$platform"
    cksum <"$patch" >"$done_file"
}

case $platform in
    native) readonly packages=("${packages_libexiv2[@]}") ;;
    windows) readonly packages=("${packages_libexiv2[@]}" "${packages_libexiv2_windows[@]}") ;;
    *)
        echo "usage: scripts/libexiv2.sh native|windows" >&2
        exit 2
        ;;
esac
install_missing "${packages[@]}"
if [[ ! -f $done_file ]] || ! cksum <"$patch" | cmp --quiet - "$done_file"; then
    make_platform
fi
if [[ $platform == windows && ! -d $origin ]]; then
    record_origin
fi
