#!/usr/bin/env bash
# Shows the library at work on a fresh Debian machine: installs what is missing, builds into
# build/demo and walks through all that photoinfo can ask: the health of the tool directory, summary,
# lens, exposure, preview, tags, XMP, crop factor and an export, for which a fresh JPEG and a fresh
# PNG get the photo's metadata and are read back.
#
#   scripts/demo.sh [FILE...]
#
# The walk is made for each photo, or for the sample when none is given. A photo that lacks
# something, such as a preview, is no failure. The photos are only read: nothing is written outside
# build/. Run as root, or as a user who may use sudo.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"

build=$root/build/demo
tools=$build/tool_directory
results=$build/results

# build_programs: quiet unless it fails.
build_programs() {
    local log=$root/build/demo.log
    mkdir -p "$root/build"
    echo "Building into $build"
    "$root/scripts/libexiv2.sh" native
    if ! {
        cmake -S "$root" --preset release -B "$build" \
            -DEXIV2_WRAPPER_BUILD_TESTS=OFF -DEXIV2_WRAPPER_BUILD_BENCHMARKS=OFF \
            -DEXIV2_WRAPPER_WARNINGS_AS_ERRORS=OFF &&
            cmake --build "$build" --target photoinfo exiv2_tool
    } >"$log" 2>&1; then
        cat "$log" >&2
        return 1
    fi
}

# The library calls its tools by the same names on every platform.
lay_out_tools() {
    mkdir -p "$tools"
    ln -sfn "$build/tools/exiv2/exiv2.exe" "$tools/exiv2.exe"
    ln -sfn "$(command -v exiftool)" "$tools/exiftool.exe"
}

title() {
    printf '\n==== %s\n' "$1"
}

# photoinfo ARGUMENT...: shows the call and runs it. A photo that lacks something doesn't end the
# demo.
photoinfo() {
    local file_lacks_something=4
    local code=0
    printf '$ photoinfo'
    printf ' %q' "$@"
    printf '\n'
    "$build/bin/photoinfo" --tools "$tools" "$@" 2>&1 || code=$?
    ((code == 0 || code == file_lacks_something))
}

# fresh_image FORMAT FILE: what an editor has just exported, without metadata.
fresh_image() {
    LC_ALL=C awk -f "$root/samples/draw_picture.awk" | "pnmto$1" -quiet >"$2"
}

# camera_of PHOTO: sets make and model, which lacks the maker's name here; empty when unknown.
camera_of() {
    local summary
    summary=$("$build/bin/photoinfo" --tools "$tools" summary -- "$1" 2>/dev/null) || true
    make=$(sed -n 's/^  Camera maker  *//p' <<<"$summary")
    model=$(sed -n 's/^  Camera model  *//p' <<<"$summary")
    model=${model#"$make "}
}

read_photo() {
    local photo=$1
    local make model
    title "Summary"
    photoinfo summary -- "$photo"
    title "The lens, as ExifTool makes it out"
    photoinfo lens -- "$photo"
    title "The lens and how it was set"
    photoinfo info -- "$photo"
    title "Exposure values for lists, and how to turn the photo"
    photoinfo batch -- "$photo"
    photoinfo orientation -- "$photo"
    title "The smallest preview of 100 pixels or more, and the largest"
    photoinfo preview --size 100 -o "$results/small.jpg" -- "$photo"
    photoinfo preview -o "$results/large.jpg" -- "$photo"
    title "Tags, by ExifTool"
    photoinfo tags -- "$photo" Make Model LensID ExposureTime FNumber 'GPS*'
    title "One tag in every form, by exiv2"
    photoinfo tag -- "$photo" Exif.Photo.ExposureTime
    title "XMP properties"
    photoinfo xmp -- "$photo"
    title "Crop factor and canonical names of the camera"
    camera_of "$photo"
    photoinfo crop-factor -- "$make" "$model"
    photoinfo canonical -- "$make $model"
}

# export_as FORMAT PHOTO
export_as() {
    local image=$results/export.$1
    title "An export: a fresh ${1^^} gets the photo's metadata and is read back"
    fresh_image "$1" "$image"
    photoinfo copy --software 'Demo 1.0' --rating 5 --x-resolution 300 --y-resolution 300 \
        --unit inch -- "$2" "$image"
    photoinfo summary -- "$image"
    photoinfo tags -- "$image" Make Model LensModel ISO Orientation XResolution Software Rating \
        CreatorTool
}

install_missing "${packages_build[@]}" "${packages_tools[@]}" "${packages_demo[@]}"
build_programs
lay_out_tools
rm -rf "$results"
mkdir -p "$results"

title "The tool directory"
photoinfo doctor

if (($# == 0)); then
    cd "$root"
    set -- samples/sample.jpg
fi
for photo in "$@"; do
    printf '\n######## %s\n' "$photo"
    read_photo "$photo"
    export_as jpeg "$photo"
    export_as png "$photo"
done
