#!/usr/bin/env bash
# Checks the project: installs what is missing on a Debian machine, then runs steps, one after
# another, to the first that fails. Writes nothing outside build/.
#
#   scripts/test.sh [--verbose]            what to run at the desk: format, scripts, native
#   scripts/test.sh --all [--verbose]      everything, as continuous integration does
#   scripts/test.sh [--verbose] STEP...    these steps
#   scripts/test.sh --help                 lists the steps
#
# A step that passes is a line with its time; one that fails shows all of its output, which also
# stands in build/test/STEP.log. Run as root, or as a user who may use sudo.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"
# shellcheck source=scripts/lib/found_packages.sh
source "$root/scripts/lib/found_packages.sh"
cd "$root"

readonly desk=(format scripts native)
readonly all=("${desk[@]}" analysis reference benchmarks demo asan tsan fuzzers wine product package
    windows-clang)
readonly logs=$root/build/test

jobs=$(nproc)
export CMAKE_BUILD_PARALLEL_LEVEL=$jobs
# Tests wait for processes more than they compute.
export CTEST_PARALLEL_LEVEL=$((jobs * 2))
export CLICOLOR_FORCE=0
export EXIV2_WRAPPER_PRINTOUTS=$root/build/printouts

describe() {
    case $1 in
        format) echo "the C++ sources are formatted" ;;
        scripts) echo "shellcheck finds nothing in the scripts" ;;
        native) echo "the build by GCC and its tests, with the installed tools" ;;
        analysis) echo "clang-tidy finds nothing; each source of the library includes what it uses" ;;
        reference) echo "everything exported is documented" ;;
        asan) echo "the tests under AddressSanitizer and UndefinedBehaviorSanitizer, by Clang" ;;
        tsan) echo "the tests of what has threads under ThreadSanitizer" ;;
        fuzzers) echo "each fuzzer, for some seconds" ;;
        wine) echo "the build for Windows by GCC, its tests under Wine" ;;
        product) echo "the real tools under Wine: the native answers, any name, three code pages" ;;
        package) echo "the package for Windows, made, unpacked and used under Wine" ;;
        windows-clang) echo "the build for Windows by Clang" ;;
        demo) echo "the optimised build and the demo" ;;
        benchmarks) echo "the benchmarks build and run; what they measure here counts for nothing" ;;
        *) return 1 ;;
    esac
}

usage() {
    sed -n '2,/^set/{/^#/!d;s/^# \{0,1\}//;p}' "${BASH_SOURCE[0]}"
    local step
    echo "Steps:"
    for step in "${all[@]}"; do
        printf '  %-14s %s\n' "$step" "$(describe "$step")"
    done
}

# ---- what steps share

# tracked PATTERN...: the repository's own files, whoever owns the clone.
tracked() {
    git -c safe.directory='*' ls-files -- "$@"
}

# workflow PRESET: configures, builds and tests.
workflow() {
    cmake --workflow --preset "$1"
}

# What the real tool prints about real photos, for replays on a platform that lacks the tool.
record_printouts() {
    scripts/record_printouts.sh "$EXIV2_WRAPPER_PRINTOUTS"
}

# with_fixed_addresses COMMAND...: without random addresses in memory, where that is allowed.
with_fixed_addresses() {
    if setarch --addr-no-randomize true 2>/dev/null; then
        setarch --addr-no-randomize "$@"
    else
        "$@"
    fi
}

# ---- the steps

step_format() {
    install_missing "${packages_format[@]}"
    tracked '*.h' '*.cpp' | xargs clang-format --dry-run -Werror
}

step_scripts() {
    install_missing "${packages_scripts[@]}"
    tracked '*.sh' .ci/run | xargs shellcheck --external-sources
}

step_native() {
    install_missing "${packages_build[@]}" "${packages_tools[@]}" "${packages_tests[@]}" \
        "${packages_browser[@]}"
    record_printouts
    workflow debug
}

# The newest clang-tidy that Debian 12 has leaves the system's headers out of its look, and takes a
# quarter of the time.
newest_clang_tidy() {
    local name=clang-tidy-22
    if ! command -v "$name" >/dev/null && ! apt-cache show "$name" >/dev/null 2>&1; then
        name=clang-tidy
    fi
    echo "$name"
}

# The analysis sees a file as a build by Clang compiles it: the sources of a folder as one, so that
# large headers are read once. The files that include them aren't ours. Without a static libexiv2 on this
# machine, only the exiv2.exe for Windows has memory of its own.
step_analysis() {
    local clang_tidy
    clang_tidy=$(newest_clang_tidy)
    install_missing "${packages_build[@]}" "${packages_analysis[@]}" "$clang_tidy"
    local tidy=(xargs --max-procs="$jobs" --max-args=1 "$clang_tidy" --quiet
        --header-filter='/(exiv2_wrapper|host|tools)/.*\.(h|cpp)$')
    # Beside each other, since fetching and configuring leave processors idle.
    scripts/libexiv2.sh windows &
    local libexiv2=$!
    trap wait EXIT
    cmake --preset analysis
    {
        find build/analysis -name 'unity_*.cxx' | sort --reverse
        tracked 'exiv2_wrapper/*_posix.cpp' 'tools/*_posix.cpp' 'host/*.cpp'
    } | "${tidy[@]}" -p build/analysis --checks=-bugprone-suspicious-include
    wait "$libexiv2"
    cmake --preset analysis-windows
    cmake --build --preset analysis-windows
    tracked 'exiv2_wrapper/*_win32.cpp' 'host/*_win32.cpp' 'tools/*_win32.cpp' tools/exiv2/memory.cpp |
        "${tidy[@]}" -p build/analysis-windows
}

step_reference() {
    scripts/docs.sh
}

# The sanitizers' runtimes expect less random addresses than newer kernels hand out.
sanitizer_workflow() {
    install_missing "${packages_build[@]}" "${packages_tools[@]}" "${packages_tests[@]}" \
        "${packages_sanitizers[@]}"
    record_printouts
    with_fixed_addresses cmake --workflow --preset "$1"
}

step_asan() {
    sanitizer_workflow asan
}

step_tsan() {
    sanitizer_workflow tsan
}

step_fuzzers() {
    scripts/fuzz.sh 5
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
    trap end_wine EXIT
}

# However a step ends, nothing stays under Wine. A step that leaves something there fails.
end_wine() {
    local server
    server=$(PATH=/usr/lib/wine:$PATH command -v wineserver)
    exec {wine_stays}>&-
    if ! timeout 60 "$server" --wait; then
        "$server" --kill
        echo "A program is left under Wine" >&2
        exit 1
    fi
}

# Wine shows this machine's files as drive Z.
step_wine() {
    install_missing "${packages_build[@]}" "${packages_tools[@]}" "${packages_tests[@]}" \
        "${packages_windows[@]}" "${packages_windows_package[@]}"
    scripts/fetch_windows_exiftool.sh
    scripts/libexiv2.sh windows
    record_printouts
    start_wine
    EXIV2_WRAPPER_PRINTOUTS=Z:$EXIV2_WRAPPER_PRINTOUTS workflow mingw
}

# The locales from which Wine takes the code pages of the tests.
make_locales() {
    local locale
    mkdir -p build/locales
    for locale in de_DE ja_JP ru_RU; do
        [[ -d build/locales/$locale.UTF-8 ]] ||
            localedef --inputfile="$locale" --charmap=UTF-8 "build/locales/$locale.UTF-8"
    done
}

step_product() {
    install_missing "${packages_build[@]}" "${packages_tools[@]}" "${packages_tests[@]}" \
        "${packages_windows[@]}" "${packages_windows_package[@]}" "${packages_locales[@]}"
    scripts/fetch_windows_exiftool.sh
    scripts/libexiv2.sh windows
    make_locales
    scripts/record_answers.sh
    start_wine
    cmake --preset mingw
    cmake --build --preset product
    ctest --preset product
}

step_package() {
    install_missing "${packages_build[@]}" "${packages_windows[@]}" "${packages_windows_package[@]}"
    scripts/fetch_windows_exiftool.sh
    scripts/package_windows.sh
    start_wine
    with_fixed_addresses tests/packaging/try_windows_package.sh build/package/*.zip \
        build/windows_exiftool "${EXIV2_WRAPPER_PHOTOS:-../shared/photos}"
}

# The library and the tools by a second compiler, which warns of other things. It can't link
# exiv2.exe: what it compiles defines a function that GCC's static C++ library defines too.
step_windows-clang() {
    install_missing "${packages_build[@]}" "${packages_windows[@]}" "${packages_clang[@]}"
    scripts/libexiv2.sh windows
    cmake --preset mingw-clang -DEXIV2_WRAPPER_BUILD_TESTS=OFF
    cmake --build --preset mingw-clang --target exiv2_wrapper photoinfo exiv2_tool_parts
}

# Into the folder of the demo, which then finds its programs there.
step_benchmarks() {
    CXXFLAGS=-Werror EXIV2_WRAPPER_BENCH_BUILD=$root/build/demo scripts/bench.sh --brief
}

step_demo() {
    CXXFLAGS=-Werror scripts/demo.sh
}

# ---- running them

# watch STEP PROCESS: waits for its end, and says every minute that it lives.
watch() {
    local begin=$SECONDS minutes=0
    while kill -0 "$2" 2>/dev/null; do
        if ((SECONDS - begin >= 60 * (minutes + 1))); then
            minutes=$((minutes + 1))
            echo "     $1: running for $minutes min"
        fi
        sleep 0.2
    done
}

# check_packages STEP: whether the folders that the step has made were configured with nothing but
# what its scripts installed. Those of earlier steps may hold what these had asked for.
check_packages() {
    local cache found packages=()
    command -v dpkg-query >/dev/null && [[ -e $EXIV2_WRAPPER_ASKED_PACKAGES ]] || return 0
    mapfile -t packages <"$EXIV2_WRAPPER_ASKED_PACKAGES"
    for cache in build/*/CMakeCache.txt; do
        ! grep --quiet --line-regexp --fixed-strings "$cache" "$EXIV2_WRAPPER_ASKED_PACKAGES.before" ||
            continue
        found=$(found_elsewhere "${cache%/*}" "${packages[@]}")
        if [[ -n $found ]]; then
            echo "$1 doesn't install what ${cache%/*} was configured with:"
            echo "$found"
            return 1
        fi
    done
}

# perform STEP
perform() {
    export EXIV2_WRAPPER_ASKED_PACKAGES=$logs/$1.packages
    rm -f "$EXIV2_WRAPPER_ASKED_PACKAGES"
    find build -maxdepth 2 -name CMakeCache.txt >"$EXIV2_WRAPPER_ASKED_PACKAGES.before"
    "step_$1"
    check_packages "$1"
}

# run STEP: a line when it has passed, its whole output when it hasn't.
run() {
    local step=$1 log=$logs/$1.log begin=$SECONDS code=0
    mkdir -p "$logs"
    if [[ $verbose == yes ]]; then
        (perform "$step") </dev/null > >(tee "$log") 2>&1 &
    else
        (perform "$step") </dev/null >"$log" 2>&1 &
    fi
    watch "$step" $!
    wait $! || code=$?
    if ((code != 0)); then
        [[ $verbose == yes ]] || cat "$log"
        echo "FAIL $step after $((SECONDS - begin)) s (build/test/$step.log)"
        return 1
    fi
    times[$step]=$((SECONDS - begin))
    echo "ok   $step: $((SECONDS - begin)) s"
}

table() {
    local step
    echo
    for step in "${chosen[@]}"; do
        printf '%-14s %5d s\n' "$step" "${times[$step]}"
    done
    printf '%-14s %5d s\n\n' "all" "$SECONDS"
    echo "Steps: ${#chosen[@]} passed, 0 failed"
}

verbose=no
chosen=()
while (($#)); do
    case $1 in
        --help) usage && exit ;;
        --verbose) verbose=yes ;;
        --all) chosen=("${all[@]}") ;;
        *)
            if ! describe "$1" >/dev/null; then
                echo "There is no step \"$1\": scripts/test.sh --help lists them" >&2
                exit 2
            fi
            chosen+=("$1")
            ;;
    esac
    shift
done
is_desk=no
if ((${#chosen[@]} == 0)); then
    chosen=("${desk[@]}")
    is_desk=yes
fi

declare -A times=()
for step in "${chosen[@]}"; do
    run "$step"
done
table
if [[ $is_desk == yes ]]; then
    echo "scripts/test.sh --all checks the rest: ${all[*]:${#desk[@]}}."
fi
