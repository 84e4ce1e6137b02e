#!/usr/bin/env bash
# Records what the product answers natively about real photos, for the tests that ask the build for
# Windows the same: into build/answers, by the debug build. The stock exiv2 is the one that
# scripts/libexiv2.sh has made, or else the installed one.
# The photos are those of ../shared/photos, and the sample. Installs what is missing on a Debian machine.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"
readonly answers=$root/build/answers
cd "$root"

install_missing "${packages_build[@]}" "${packages_tools[@]}" "${packages_tests[@]}"
cmake --preset debug
cmake --build --preset debug --target record_answers
rm -rf "$answers"
mkdir -p "$answers"
# The tools speak the user's language otherwise.
LC_ALL=C.UTF-8 build/debug/bin/record_answers "$answers"
