#!/usr/bin/env bash
# Measures the library against what its work costs at least, and prints one table: what, ours, the
# reference and its value, their ratio, the target, and whether it is met. Medians all; whatever is
# compared was measured by turns in one run. A quiet machine gives the truest ratios.
#
#   scripts/bench.sh [--brief] [BENCHMARK...]
#
# --brief takes every measure once, which shows that the benchmarks run and nothing else.
# BENCHMARK: names of programs in benchmarks/, without "_benchmark"; all of them by default. The
# environment variable EXIV2_WRAPPER_PHOTOS names a folder of real photos to parse and to scan,
# LARGE_HOST_GIGABYTES the size of the large host (4), EXIV2_WRAPPER_BENCH_BUILD another build folder
# than build/bench, EXIV2_TOOL another exiv2.exe than this project's that reads many files by one run.
# Run as root, or as a user who may use sudo, on a Debian machine: it installs what is missing.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"

readonly build=${EXIV2_WRAPPER_BENCH_BUILD:-$root/build/bench}
readonly all=(
    uncached
    large_host
    parser
    memory
    cached
    exiftool
    preview
    process
    exiv2_tool
    read_ahead
)
readonly results=$build/benchmarks/results
export VESK_LOG=off
export EXIV2_WRAPPER_PHOTOS=${EXIV2_WRAPPER_PHOTOS:-$root/../shared/photos}

# build BENCHMARK...: quiet unless it fails. The tests need more packages, so they stay out.
build() {
    local log=$root/build/bench.log
    mkdir -p "$root/build"
    "$root/scripts/libexiv2.sh" native
    if ! {
        cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
            -DEXIV2_WRAPPER_BUILD_TESTS=OFF -DEXIV2_WRAPPER_BUILD_BENCHMARKS=ON \
            -DEXIV2_WRAPPER_UNITE_SOURCES=ON -DEXIV2_WRAPPER_WARNINGS_AS_ERRORS=OFF &&
            cmake --build "$build" --target "${@/%/_benchmark}"
    } >"$log" 2>&1; then
        cat "$log" >&2
        return 1
    fi
}

# run BENCHMARK: its results as JSON.
run() {
    echo "Measuring: $1" >&2
    "$build/bin/$1_benchmark" --benchmark_out="$results/$1.json" --benchmark_out_format=json \
        >/dev/null 2>"$results/$1.log" || {
        cat "$results/$1.log" >&2
        return 1
    }
}

install_missing "${packages_build[@]}" "${packages_tools[@]}" "${packages_benchmarks[@]}"
if [[ ${1:-} == --brief ]]; then
    shift
    export EXIV2_WRAPPER_BENCH_BRIEF=yes LARGE_HOST_GIGABYTES=1
fi
if (($# == 0)); then
    set -- "${all[@]}"
fi
build "$@"
mkdir -p "$results"
files=()
for benchmark in "$@"; do
    run "$benchmark"
    files+=("$results/$benchmark.json")
done
jq --null-input --raw-output --from-file "$root/benchmarks/table.jq" "${files[@]}"
