#!/usr/bin/env bash
# Makes sample.jpg from scratch: draws a picture, compresses it and writes metadata and two previews
# into it. Needs awk, cjpeg and djpeg (Debian: libjpeg-turbo-progs) and exiftool
# (libimage-exiftool-perl). The same versions of these make the same bytes.
#
#   samples/make_sample.sh [OUTPUT]      OUTPUT: build/sample.jpg unless told otherwise
#
# A new sample is looked at there first, and then copied to samples/.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
output=${1:-$here/../build/sample.jpg}

for tool in awk cjpeg djpeg exiftool; do
    if ! command -v "$tool" >/dev/null; then
        echo "make_sample.sh: $tool is missing" >&2
        exit 1
    fi
done

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

LC_ALL=C awk -f "$here/draw_picture.awk" >"$work/picture.ppm"
cjpeg -quality 82 -optimize "$work/picture.ppm" >"$work/picture.jpg"

# The Exif thumbnail that cameras write, and a larger preview as photo managers keep it in XMP.
djpeg -scale 1/4 "$work/picture.jpg" | cjpeg -quality 75 -optimize >"$work/thumbnail.jpg"
djpeg -scale 1/2 "$work/picture.jpg" | cjpeg -quality 75 -optimize >"$work/preview.jpg"

exiftool -quiet -charset UTF8 -@ "$here/sample_metadata.args" \
    "-IFD1:ThumbnailImage<=$work/thumbnail.jpg" \
    -XMP-xmp:ThumbnailFormat=JPEG -XMP-xmp:ThumbnailWidth=320 -XMP-xmp:ThumbnailHeight=214 \
    "-XMP-xmp:ThumbnailImage<=$work/preview.jpg" \
    -out "$work/sample.jpg" "$work/picture.jpg"

mkdir -p "$(dirname "$output")"
cp "$work/sample.jpg" "$output"
echo "$output: $(stat -c %s "$output") bytes"
