#!/usr/bin/env bash
# Measures which lines and branches of the library the tests reach on this machine, and fails below
# 99 % of the lines or 97 % of the branches. Installs what is missing on a Debian machine, builds
# into build/coverage and leaves the lists there: uncovered.txt, and report.html for a browser.
#
#   scripts/coverage.sh
#
# Branches that only an exception takes don't count: every call has one. The tests of exhausted
# memory see to them.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"
cd "$root"

export CMAKE_BUILD_PARALLEL_LEVEL=${CMAKE_BUILD_PARALLEL_LEVEL:-$(nproc)}
export CTEST_PARALLEL_LEVEL=${CTEST_PARALLEL_LEVEL:-$(nproc)}

build() {
    local log=build/coverage.log
    mkdir -p build
    if ! { cmake --preset coverage && cmake --build --preset coverage; } >"$log" 2>&1; then
        tail --lines=50 "$log" >&2
        return 1
    fi
}

run_tests() {
    find build/coverage -name '*.gcda' -delete
    ctest --preset coverage --quiet
}

measure() {
    gcovr --root . --filter 'exiv2_wrapper/' --exclude-throw-branches \
        --exclude-unreachable-branches --fail-under-line 99 --fail-under-branch 97 \
        --print-summary --txt build/coverage/uncovered.txt \
        --html-details build/coverage/report.html build/coverage/exiv2_wrapper
}

install_missing "${packages_build[@]}" "${packages_tools[@]}" "${packages_tests[@]}" \
    "${packages_coverage[@]}"
build
run_tests
measure
