#!/usr/bin/env bash
# Tries the package for Windows as one does who has just fetched it, under Wine: unpacks it into an empty
# folder, puts ExifTool beside exiv2.exe, asks the doctor, writes a report and builds an application
# against it.
#
#   tests/packaging/try_windows_package.sh ZIP EXIFTOOL_FOLDER PHOTOS
#
# WINEPREFIX says which Wine. Everything that is made lies in build/test/package.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
zip=$(realpath "$1")
exiftool_folder=$(realpath "$2")
photos=$(realpath --canonicalize-missing "$3")
wine=$(PATH=/usr/lib/wine:$PATH command -v wine64 || command -v wine)
name=$(basename "$zip" .zip)
readonly root zip exiftool_folder photos wine
readonly folder=$root/build/test/package
readonly package=$folder/$name
# On Windows Perl warns wherever this is set.
unset LC_ALL

fail() {
    echo "FAIL: $*" >&2
    exit 1
}

# on_windows PROGRAM ARGUMENT...: its output, with line ends as they are here.
on_windows() {
    "$wine" "$@" </dev/null | tr -d '\r'
}

photoinfo() {
    echo "> photoinfo $*" >&2
    on_windows "$package/bin/photoinfo.exe" "$@"
}

unpack() {
    rm -rf "$folder"
    mkdir -p "$folder"
    cd "$folder"
    cmake -E tar xf "$zip"
    cp -R "$exiftool_folder/exiftool.exe" "$exiftool_folder/exiftool_files" "$package/tools"
}

# A link of a document leads to something in the package. What looks like one in code has blanks.
documents_hold_together() {
    local document target
    while IFS=: read -r document target; do
        target=${target:2:-1}
        [[ -e $(dirname "$document")/$target ]] || fail "$document: no $target"
    done < <(grep -oE '\]\([A-Za-z0-9_./-]+[)#]' "$package"/doc/*.md)
    grep -q 'not been chosen' "$package/LICENCES.txt" || fail "LICENCES.txt doesn't tell the library's state"
    grep -q '^  exiv2 0\.' "$package/tools/SOURCE.txt" || fail "SOURCE.txt doesn't name libexiv2's source"
    grep -q '^SYNOPSIS' "$package/doc/photoinfo.txt" || fail "photoinfo.txt is no manual"
}

# It finds the tools by itself.
doctor_finds_everything_in_order() {
    local report check
    report=$(photoinfo doctor) || true
    echo "$report"
    for check in "exiv2 starts" "exiv2 lens names" "exiv2 tag bytes" "exiv2 distances" "exiv2 file names" \
        "exiv2 previews" "exiv2 reads ahead" "exiftool stays" "exiftool is quiet" "exiftool copies"; do
        grep -qE "^  $check +ok" <<<"$report" || fail "the doctor doesn't find in order: $check"
    done
    if grep '^  ' <<<"$report" | grep -vE '^  [a-z0-9. ]+  ok(:|$)'; then
        fail "the doctor finds something else"
    fi
}

report_shows_all_photos() {
    local photo
    if [[ ! -d $photos ]]; then
        echo "No report: there is no folder $photos"
        return
    fi
    photoinfo report "Z:$photos" -o report.html
    while read -r photo; do
        grep -qF "$photo\",\"error\":null" report.html || fail "the report lacks $photo"
    done < <(find "$photos" -type f -not -name '*.md' -printf '%f\n')
    grep -qF '"preview":"data:image/jpeg' report.html || fail "the report shows no preview"
}

application_builds_and_runs() {
    local answer
    cmake -G Ninja -S "$package/doc/examples/consumer" -B consumer -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64.cmake" -DCMAKE_PREFIX_PATH="$package" >consumer.log
    cmake --build consumer >>consumer.log
    answer=$(on_windows consumer/consumer.exe "$package/tools" "$root/samples/sample.jpg")
    echo "$answer"
    [[ $answer == "Canon EOS 6D, crop factor 1" ]] || fail "the application answers: $answer"
}

unpack
documents_hold_together
doctor_finds_everything_in_order
report_shows_all_photos
application_builds_and_runs
echo "The package holds"
