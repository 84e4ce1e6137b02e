#!/usr/bin/env bash
# Makes the package for 64-bit Windows, build/package/exiv2_wrapper-VERSION-windows-x64.zip: the library
# and photoinfo, optimised, with our exiv2.exe, headers, documents and licences. Installs what is missing
# on a Debian machine.
#
#   scripts/package_windows.sh
#
# Run as root, or as a user who may use sudo.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"
readonly packages=$root/build/package

install_missing "${packages_build[@]}" "${packages_windows_package[@]}"
"$root/scripts/libexiv2.sh" windows
rm -rf "$packages"
cd "$root"
cmake --workflow --preset mingw-release
rm -rf "$packages/_CPack_Packages"
du --apparent-size --block-size=kB "$packages"/*.zip
