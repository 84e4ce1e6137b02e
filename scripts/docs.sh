#!/usr/bin/env bash
# Makes the reference of the exported header, build/docs/docs/reference/html/index.html, with Doxygen.
# Fails when anything that is exported has no documentation.
#
#   scripts/docs.sh
#
# Run as root, or as a user who may use sudo.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"

install_missing "${packages_build[@]}" "${packages_docs[@]}"
cmake -S "$root" -B "$root/build/docs" -G Ninja --log-level=WARNING \
    -DEXIV2_WRAPPER_BUILD_TESTS=OFF -DEXIV2_WRAPPER_BUILD_BENCHMARKS=OFF \
    -DEXIV2_WRAPPER_BUILD_TOOLS=OFF
cmake --build "$root/build/docs" --target docs
