#!/usr/bin/env bash
# record_printouts.sh FOLDER: records what the real exiv2 prints about real photos, for tests that
# play it back where the tool doesn't run. Of each photo: NAME.print_all and NAME.summary, the
# output of the two runs, and NAME.print_all_exit and NAME.summary_exit, their exit codes.
# The photos are those of the folder that EXIV2_WRAPPER_PHOTOS names, and the sample. Installs the tool
# where it is missing, on a Debian machine.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"
photos=${EXIV2_WRAPPER_PHOTOS:-$root/../shared/photos}
folder=${1:?usage: record_printouts.sh FOLDER}

# record NAME ARGUMENT...: one run of the tool.
record() {
    local name=$1 code=0
    shift
    exiv2 "$@" >"$folder/$name" 2>/dev/null || code=$?
    echo "$code" >"$folder/${name}_exit"
}

install_missing "${packages_tools[@]}"
mkdir -p "$folder"
find "$folder" -type f \( -name '*.print_all*' -o -name '*.summary*' \) -delete

for photo in "$root"/samples/*.jpg "$photos"/*; do
    name=$(basename "$photo")
    if [[ -f $photo && $name != *.md ]]; then
        record "$name.print_all" -PXEkycv -q "$photo"
        record "$name.summary" pr "$photo"
    fi
done
echo "$(find "$folder" -name '*.print_all' | wc -l) photos recorded in $folder"
