#!/usr/bin/env bash
# Fetches the real Windows exiftool.exe, which the Windows build's tests run under Wine, into
# build/windows_exiftool. Does nothing when it is there already. It comes by npm, which is installed
# on a Debian machine without one; the version is pinned, and so is what the package must contain.
#
#   scripts/fetch_windows_exiftool.sh
set -euo pipefail

readonly npm_package=exiftool-vendored.exe
readonly version=13.59.3
readonly sha256=7eaf41b3b02ddb9c7bd32bea2417c783d6364a6725cb57d1a0163617aff4b577

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"
readonly target=$root/build/windows_exiftool

if [[ -f $target/$version ]]; then
    exit 0
fi
# Debian's npm is large, so any that is there will do.
command -v npm >/dev/null || install_missing npm ca-certificates
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

npm pack --silent --pack-destination "$work" "$npm_package@$version" </dev/null >/dev/null
echo "$sha256  $work/$npm_package-$version.tgz" | sha256sum --check --quiet
tar -xzf "$work/$npm_package-$version.tgz" -C "$work"

rm -rf "$target"
mkdir -p "$target"
cp -R "$work/package/bin/." "$target"
touch "$target/$version"
echo "Fetched $npm_package $version into $target"
