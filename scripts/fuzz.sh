#!/usr/bin/env bash
# Runs every fuzzer over its corpus and then for some seconds each; with 0 seconds, the corpus alone.
# Installs what is missing on a Debian machine and builds into build/fuzz; what the fuzzers learn
# stays in build/fuzz/learnt and is used again. Ends with an exit code other than 0 at the first
# finding, whose input is in build/fuzz/findings.
#
#   scripts/fuzz.sh [SECONDS [FUZZER...]]
#
# SECONDS is 20 unless told otherwise; FUZZER is a name such as print_all. With the environment
# variable EXIV2_WRAPPER_FUZZ_RUNS each fuzzer makes so many runs instead of taking so long.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"
cd "$root"

seconds=${1:-20}
shift || true
if (($#)); then
    fuzzers=("$@")
else
    fuzzers=(exiftool_answer image_metadata lens_range numbers preview print_all quoting raw_tags
        read_call single_tag summary)
fi

build() {
    local log=build/fuzz.log
    mkdir -p build
    if ! { cmake --preset fuzz && cmake --build --preset fuzz; } >"$log" 2>&1; then
        cat "$log" >&2
        return 1
    fi
}

# Several fuzzers read the same kind of text.
dictionary_of() {
    case $1 in
        image_metadata | raw_tags) echo fuzz/dictionaries/print_all.dict ;;
        *) echo "fuzz/dictionaries/$1.dict" ;;
    esac
}

# Inputs stay short, so that there are many: rules that depend on size have tests of their own.
longest_of() {
    case $1 in
        lens_range | numbers | quoting | single_tag) echo 256 ;;
        exiftool_answer) echo 2048 ;;
        *) echo 1024 ;;
    esac
}

# How long to go on. libFuzzer takes -runs=0 for "the corpus and nothing more".
limit() {
    if [[ -n ${EXIV2_WRAPPER_FUZZ_RUNS:-} ]]; then
        echo "-runs=$EXIV2_WRAPPER_FUZZ_RUNS"
    elif ((seconds == 0)); then
        echo "-runs=0"
    else
        echo "-max_total_time=$seconds"
    fi
}

# The caches keep what they are given, which libFuzzer takes for leaks and looks for them after each
# run; the look at the very end stays.
run_fuzzer() {
    local name=$1
    local learnt=build/fuzz/learnt/$name
    local log=build/fuzz/$name.log
    mkdir -p "$learnt" build/fuzz/findings
    if ! "build/fuzz/bin/${name}_fuzzer" "$(limit)" -max_len="$(longest_of "$name")" \
        -dict="$(dictionary_of "$name")" -artifact_prefix="build/fuzz/findings/$name-" \
        -detect_leaks=0 -timeout=60 -rss_limit_mb=4096 -print_final_stats=1 \
        "$learnt" "fuzz/corpus/$name" >"$log" 2>&1; then
        tail --lines=50 "$log" >&2
        return 1
    fi
    printf '%-16s %10d runs\n' "$name" "$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")"
}

install_missing "${packages_build[@]}" "${packages_fuzz[@]}"
build

# One fuzzer a processor. After a finding no other begins, and those under way are waited for.
running=()
trap wait EXIT
for fuzzer in "${fuzzers[@]}"; do
    if ((${#running[@]} == $(nproc))); then
        wait "${running[0]}"
        running=("${running[@]:1}")
    fi
    run_fuzzer "$fuzzer" &
    running+=($!)
done
while ((${#running[@]})); do
    wait "${running[0]}"
    running=("${running[@]:1}")
done
