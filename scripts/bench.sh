#!/usr/bin/env bash
# Measures the library against what its work costs at least, and prints one table: what, ours, the
# reference and its value, their ratio, the target, and whether it is met. Medians all; whatever is
# compared was measured by turns in one run. A quiet machine gives the truest ratios: the row "the
# two bare tool runs" compares a thing with itself and so tells how true.
#
#   scripts/bench.sh [BENCHMARK...]
#
# BENCHMARK: names of programs in benchmarks/, without "_benchmark"; all of them by default. The
# environment variable PHOTO names another photo than the sample, EXIV2_WRAPPER_BENCH_BUILD another
# build folder than build/release, LARGE_HOST_GIGABYTES the size of the large host (4),
# EXIV2_WRAPPER_PHOTOS a folder of real photos to parse and to scan, EXIV2_TOOL another exiv2.exe that
# reads many files by one run than the one of this project.
# Run as root, or as a user who may use sudo, on a Debian machine: it installs what is missing.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"

readonly build=${EXIV2_WRAPPER_BENCH_BUILD:-$root/build/release}
readonly all=(uncached large_host parser memory cached names exiftool exiftool_answer preview process
    scan read_ahead)
readonly results=$build/benchmarks/results
export VESK_LOG=off
export EXIV2_WRAPPER_PHOTOS=${EXIV2_WRAPPER_PHOTOS:-$root/../shared/photos}

# build BENCHMARK...: quiet unless it fails.
build() {
    local log=$root/build/bench.log
    mkdir -p "$root/build"
    if ! {
        cmake -S "$root" --preset release -B "$build" &&
            cmake --build "$build" --target "${@/%/_benchmark}"
    } >"$log" 2>&1; then
        cat "$log" >&2
        return 1
    fi
}

# The parsers are measured with what the real tool prints about real photos, where there are some.
record_print_outs() {
    export EXIV2_WRAPPER_PRINTOUTS=$build/benchmarks/printouts
    "$root/scripts/record_printouts.sh" "$EXIV2_WRAPPER_PRINTOUTS" >/dev/null
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

# table FILE...: one line a row, its columns parted by tabs.
table() {
    jq --raw-output --from-file "$root/benchmarks/table.jq" "$@"
}

install_missing "${packages_build[@]}" "${packages_tools[@]}" "${packages_benchmarks[@]}"
if (($# == 0)); then
    set -- "${all[@]}"
fi
build "$@"
record_print_outs
mkdir -p "$results"
for benchmark in "$@"; do
    run "$benchmark"
done
{
    printf 'What\tOurs\tReference\tIts value\tRatio\tTarget\tMet\n'
    for benchmark in "$@"; do
        table "$results/$benchmark.json"
    done
} | awk -F '\t' -f "$root/benchmarks/table.awk"
