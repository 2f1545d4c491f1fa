#!/usr/bin/env bash
# Files of other muxers, with their codecs: the packets that ffprobe finds and the chunks that avidump lists must be the
# same, with the same stream, position, size and, for pictures, key flag.
#   compare_packets.sh AVIDUMP MAKEAVI [large]
# Both muxers write OpenDML indexes only for files beyond a gigabyte: "large" adds two of those. Otherwise a small
# sample of our own writer, whose segments can have any size, represents such files.
set -euo pipefail

avidump=$1
makeavi=$2
large=${3:-}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
failures=0
compared=0

# Lines "stream position size key" of both sides, in file order. ffprobe skips empty chunks, and may split the sound of
# one chunk into several packets: packets without a chunk header between them are joined. Its key flags of sound are the
# codec's and not the index's, so sound has "." instead.
packets_of_ffprobe() {
    ffprobe -v error -show_entries packet=codec_type,stream_index,pos,size,flags -of compact=p=0:nk=0 "$1" |
        awk -F'|' '{
            for (i = 1; i <= NF; i++) { split($i, pair, "="); value[pair[1]] = pair[2] }
            key = value["codec_type"] == "audio" ? "." : value["flags"] ~ /^K/ ? "k" : "-"
            print value["stream_index"], value["pos"], value["size"], key
        }' | sort -n -k2,2 |
        awk 'function flush() { if (size) print stream, position, size, key }
             size && $1 == stream && $2 == position + size { size += $3; next }
             { flush(); stream = $1; position = $2; size = $3; key = $4 }
             END { flush() }'
}

# packets_of_avidump FILE SHIFT: the shift is subtracted from every position.
packets_of_avidump() {
    "$avidump" --chunks "$1" |
        awk -v shift="$2" '
            $1 == "fccType:" { sound = $2 == "auds" }
            $1 == "chunk" && $5 > 0 { print $2, $4 - shift, $5, sound ? "." : $7 }' | sort -n -k2,2
}

# GStreamer's offsets in "idx1" are relative to the start of the file; FFmpeg's, as the format requires, to the "movi"
# list type. The parser supports only the latter, so its positions in GStreamer's files are too large by that much.
shift_of_absolute_idx1() {
    "$avidump" "$1" | awk '$1 == "LIST" && $2 == "movi" { sub(",", "", $3); print $3 + 8; exit }'
}

# compare NAME INDEX_IN_USE PACKETS_AT_LEAST [absolute]
compare() {
    local name=$1 index=$2 least=$3 file="$folder/$1.avi" count shift=0
    [ "${4:-}" != absolute ] || shift=$(shift_of_absolute_idx1 "$file")
    packets_of_ffprobe "$file" > "$folder/expected"
    packets_of_avidump "$file" "$shift" > "$folder/found"
    count=$(wc -l < "$folder/expected")
    if [ "$count" -lt "$least" ]; then
        echo "FAIL $name: $count packets, at least $least wanted"
        failures=$((failures + 1))
    elif ! "$avidump" "$file" | grep -q "^  indexInUse: $index\$"; then
        echo "FAIL $name: index in use is not $index"
        failures=$((failures + 1))
    elif ! diff -u "$folder/expected" "$folder/found" > "$folder/difference"; then
        echo "FAIL $name: ffprobe (-) and avidump (+) differ"
        head -n 20 "$folder/difference"
        failures=$((failures + 1))
    else
        echo "ok   $name: $count packets, $index"
    fi
    compared=$((compared + 1))
}

encode() {
    local name=$1
    shift
    ffmpeg -nostdin -y -loglevel error -f lavfi -i "testsrc=size=64x48:rate=25:duration=${seconds:-4}" \
        -f lavfi -i "sine=frequency=440:sample_rate=48000:duration=${seconds:-4}" "$@" "$folder/$name.avi"
}

launch() {
    local name=$1
    shift
    gst-launch-1.0 -q "$@" avimux. avimux name=avimux ! filesink location="$folder/$name.avi"
}

encode ffmpeg_mpeg4_pcm -c:v mpeg4 -g 10 -c:a pcm_s16le
compare ffmpeg_mpeg4_pcm idx1 200
encode ffmpeg_mpeg4_bframes -map 0:v -c:v mpeg4 -g 12 -bf 2
compare ffmpeg_mpeg4_bframes idx1 100
encode ffmpeg_mjpeg_two_sounds -map 0:v -map 1:a -map 1:a -c:v mjpeg -c:a pcm_s24le
compare ffmpeg_mjpeg_two_sounds idx1 300
encode ffmpeg_raw_mp2 -c:v rawvideo -pix_fmt bgr24 -c:a mp2
compare ffmpeg_raw_mp2 idx1 200
encode ffmpeg_ffv1_odd_sizes -map 0:v -c:v ffv1 -g 1
compare ffmpeg_ffv1_odd_sizes idx1 100
encode ffmpeg_sound_alone -map 1:a -c:a pcm_u8
compare ffmpeg_sound_alone idx1 40

launch gstreamer_jpeg videotestsrc num-buffers=100 ! video/x-raw,width=64,height=48,framerate=25/1 ! jpegenc !
compare gstreamer_jpeg idx1 100 absolute
launch gstreamer_jpeg_pcm \
    videotestsrc num-buffers=100 ! video/x-raw,width=64,height=48,framerate=25/1 ! jpegenc ! queue ! avimux. \
    audiotestsrc num-buffers=100 samplesperbuffer=1920 ! audio/x-raw,format=S16LE,rate=48000,channels=2 ! queue !
compare gstreamer_jpeg_pcm idx1 200 absolute

# One frame is empty, and therefore not a packet.
"$makeavi" --size 64x48 --frames 50 --drop 7 --audio pcm16:2:48000 --index opendml --segment-bytes 300KB \
    -o "$folder/makeavi_two_segments.avi"
[ "$("$avidump" "$folder/makeavi_two_segments.avi" | grep -c '^  RIFF AVI')" = 2 ]
compare makeavi_two_segments OpenDML 99
# The copy is one segment again, too small for an OpenDML index of FFmpeg.
ffmpeg -nostdin -y -loglevel fatal -i "$folder/makeavi_two_segments.avi" -map 0 -c copy "$folder/ffmpeg_copy.avi"
compare ffmpeg_copy idx1 99
wanted=10

if [ "$large" = large ]; then
    seconds=10 encode ffmpeg_large -vf scale=1920:1080 -c:v rawvideo -pix_fmt bgr24 -c:a pcm_s16le
    compare ffmpeg_large OpenDML 300
    rm "$folder/ffmpeg_large.avi"
    launch gstreamer_large \
        videotestsrc num-buffers=400 ! video/x-raw,width=1920,height=1080,format=YUY2,framerate=25/1 ! queue ! avimux. \
        audiotestsrc num-buffers=400 samplesperbuffer=1920 ! audio/x-raw,format=S16LE,rate=48000,channels=2 ! queue !
    compare gstreamer_large OpenDML 800
    wanted=12
fi

echo "$compared files compared, $failures differ"
[ "$failures" = 0 ] && [ "$compared" = "$wanted" ]
