#!/usr/bin/env bash
# Files by other programs, broken and repaired, must import to what is left of them: the same pictures and sound, each in
# its place.
#   repair.sh MAKEAVI AVIREPAIR CLIP_CHECKSUMS [EMULATOR]
set -euo pipefail

makeavi=$1
avirepair=$2
checksums=$3
emulator=${4:-}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"    # names without folders mean the same to both systems
failures=0
passed=0

# expect NAME WANTED FOUND
expect() {
    if [ "$2" = "$3" ]; then
        echo "ok   $1"
        passed=$((passed + 1))
    else
        echo "FAIL $1: '$3' instead of '$2'"
        failures=$((failures + 1))
    fi
}

# The exit code of a repair of broken.avi.
repair() {
    local code=0
    rm -f repaired.avi
    $emulator "$avirepair" broken.avi -o repaired.avi "$@" >report || code=$?
    echo "$code"
}

import() {
    $emulator "$checksums" "$1" | tr -d '\r'
}

# Both kinds of index lose their names.
without_index() {
    perl -0777 -pe 's/idx1|ix0[01]|indx/JUNK/g' "$1"
}

# What of the whole file's import a part still has: its first four pictures in each of four formats.
first_pictures() {
    grep -E 'frame [0-3]:'
}

# Pictures 4 to 6 show picture 3.
held_pictures() {
    awk '{ key = $1 } $2 == "frame" { if ($3 == "3:") held[key] = $0; number = $3 + 0
           if (number >= 4 && number <= 6) { line = held[key]; sub(/frame 3:/, "frame " number ":", line); print line }
           else print }'
}

$emulator "$makeavi" --size 64x36 --frames 12 --type 2Y8Q --audio pcm16:2:48000 -o original.avi
ffmpeg -nostdin -y -loglevel fatal -i original.avi -map 0 -c copy muxed.avi
import muxed.avi >whole

cp muxed.avi broken.avi
expect "FFmpeg's file as it is" 0 "$(repair)"
expect "FFmpeg's file as it is: import" "$(cat whole)" "$(import repaired.avi)"

without_index muxed.avi >broken.avi
expect "without its indexes" 0 "$(repair)"
expect "without its indexes: import" "$(cat whole)" "$(import repaired.avi)"

head -c 42000 muxed.avi >broken.avi
expect "cut off" 3 "$(repair)"
expect "cut off: import" "$(first_pictures <whole)" "$(import repaired.avi | grep frame)"

# 20,000 zeros over the end of the fourth sound, three pictures, two sounds and the beginning of a third.
cp muxed.avi broken.avi
dd if=/dev/zero of=broken.avi bs=1000 seek=40 count=20 conv=notrunc status=none
expect "with zeros in the middle" 3 "$(repair)"
expect "with zeros in the middle: import" "$(grep frame whole | held_pictures)" "$(import repaired.avi | grep frame)"
cp repaired.avi by-index.avi
without_index broken.avi >both.avi && mv both.avi broken.avi
expect "with zeros and without its indexes" 3 "$(repair)"
expect "with zeros and without its indexes: import" "$(import by-index.avi)" "$(import repaired.avi)"

# A small file, whose idx1 counts from the start of the file.
gst-launch-1.0 -q avimux name=mux ! filesink location=broken.avi \
    videotestsrc num-buffers=30 ! video/x-raw,width=64,height=48,framerate=25/1 ! jpegenc ! mux. \
    audiotestsrc num-buffers=20 samplesperbuffer=2400 ! audio/x-raw,format=S16LE,rate=48000,channels=1 ! mux.
md5() {
    ffmpeg -nostdin -v error -i "$1" -map 0 -c copy -f md5 -
}
expect "GStreamer's file" 0 "$(repair)"
expect "GStreamer's file: its streams" "$(md5 broken.avi)" "$(md5 repaired.avi)"

echo "$passed passed, $failures failed"
[ "$failures" = 0 ] && [ "$passed" = 12 ]
