#!/usr/bin/env bash
# Samples that other programs have remuxed, without changing the compressed data, must import to the same pictures and
# the same sound as before.
#   remux.sh MAKEAVI CLIP_CHECKSUMS [EMULATOR]
#
# FFmpeg keeps the stream's format data and its four-character code by default: "-copy_unknown" and "-tag:v" change
# nothing. Its files have both kinds of index.
# GStreamer cannot be tested as a writer: its muxer accepts a fixed list of codecs, and its pipeline stops or hangs with
# any other. The last case but one detects if that list changes. As a reader GStreamer must find every frame in our
# files.
set -euo pipefail

makeavi=$1
checksums=$2
emulator=${3:-}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"    # file names without folders are the same on both systems
failures=0
passed=0

fail() {
    echo "FAIL $1"
    failures=$((failures + 1))
}

pass() {
    echo "ok   $1"
    passed=$((passed + 1))
}

make_sample() {
    $emulator "$makeavi" --size 64x36 --frames 12 "$@"
}

import() {
    local code=0
    $emulator "$checksums" "$1" > "$2" || code=$?
    [ "$code" = 0 ] || echo "clip_checksums $1 ended with $code after $(wc -l < "$2") lines"
    return "$code"
}

copy() {
    ffmpeg -nostdin -y -loglevel fatal -i "$1" -map 0 -c copy "${@:3}" "$2"
}

# same NAME LINES: compares the checksums of the copy with those of the original, which must have that many lines.
same() {
    import original.avi wanted || { fail "$1: the original does not import"; return; }
    import copy.avi found || { fail "$1: the copy does not import"; return; }
    if [ "$(wc -l < wanted)" != "$2" ]; then
        fail "$1: $(wc -l < wanted) lines instead of $2"
    elif cmp -s original.avi copy.avi; then
        fail "$1: the copy is the same file, so this proves nothing"
    elif ! diff wanted found > difference; then
        fail "$1: the original (<) and the copy (>) import differently"
        head -n 6 difference
    else
        pass "$1"
    fi
}

# through_ffmpeg NAME LINES OPTIONS...: one line for each frame in each offered format, one for each second of sound.
through_ffmpeg() {
    make_sample "${@:3}" -o original.avi
    copy original.avi copy.avi || { fail "$1: FFmpeg does not copy it"; return; }
    same "$1" "$2"
}

# through_container NAME EXTENSION: remuxes to a container with timestamps instead of a frame rate, and back. Without -r
# FFmpeg would assume a multiple of the rate and fill the AVI file up with empty frames.
through_container() {
    make_sample --type 2Y8Q --audio pcm16:2:48000 -o original.avi
    copy original.avi "between.$2" || { fail "$1: FFmpeg does not copy it"; return; }
    copy "between.$2" copy.avi -r 25 || { fail "$1: FFmpeg does not copy it back"; return; }
    same "$1" 49
}

through_ffmpeg "4:2:2 with sound" 49 --type 2Y8Q --audio pcm16:2:48000
through_ffmpeg "10-bit RGBA without sound" 204 --type AR0Q
through_ffmpeg "alpha, at 59.94 frames per second" 24 --type AY8Q --rate 60000/1001
through_ffmpeg "several segments" 49 --type 0Y8Q --audio pcm16:2:48000 --segment-bytes 20KB
through_ffmpeg "only the legacy index" 48 --type 0G8Q --index idx1
through_ffmpeg "dropped frames" 48 --type 2Y8Q --drop 3,7-8
through_ffmpeg "24-bit sound in odd chunks" 49 --type 2Y8Q --audio pcm24:1:44100:chunk=777
through_ffmpeg "float sound of eight channels" 49 --type 2Y8Q --audio float32:8:48000:mask=0x63f
through_container "through Matroska" mkv
through_container "through NUT" nut

# Under this name GStreamer's demuxer outputs frames of unknown codecs.
if gst-inspect-1.0 avimux | grep -q video/x-avi-unknown; then
    fail "GStreamer's muxer now accepts unknown codecs: test its files"
else
    pass "GStreamer's muxer accepts no unknown codecs"
fi

make_sample --type 2Y8Q -o original.avi
gst-launch-1.0 -q filesrc location=original.avi ! avidemux ! queue ! filesink location=gstreamer.data
ffmpeg -nostdin -y -loglevel fatal -i original.avi -map 0:v -c copy -f data ffmpeg.data
if [ -s gstreamer.data ] && cmp gstreamer.data ffmpeg.data; then
    pass "GStreamer and FFmpeg read the same frames"
else
    fail "GStreamer and FFmpeg read different frames"
fi

echo "$passed passed, $failures failed"
[ "$failures" = 0 ] && [ "$passed" = 12 ]
