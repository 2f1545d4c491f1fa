#!/usr/bin/env bash
# Files written by other muxers, in codecs of theirs: every packet that ffprobe finds must be a chunk that avidump
# lists, and the other way round, with the same stream, position, size and key flag.
#   compare_packets.sh AVIDUMP
set -euo pipefail

avidump=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
failures=0
compared=0

# Lines "stream position size key" of both sides, in file order. ffprobe passes over empty chunks.
packets_of_ffprobe() {
    ffprobe -v error -show_entries packet=stream_index,pos,size,flags -of compact=p=0:nk=0 "$1" |
        awk -F'|' '{
            for (i = 1; i <= NF; i++) { split($i, pair, "="); value[pair[1]] = pair[2] }
            print value["stream_index"], value["pos"], value["size"], (value["flags"] ~ /^K/ ? "k" : "-")
        }' | sort -n -k2,2
}

packets_of_avidump() {
    "$avidump" --chunks "$1" |
        awk '$1 == "chunk" && $5 > 0 { print $2, $4, $5, $7 }' | sort -n -k2,2
}

# compare NAME INDEX_IN_USE PACKETS_AT_LEAST
compare() {
    local name=$1 index=$2 least=$3 file="$folder/$1.avi" count
    packets_of_ffprobe "$file" > "$folder/expected"
    packets_of_avidump "$file" > "$folder/found"
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
    ffmpeg -nostdin -y -loglevel error -f lavfi -i testsrc=size=64x48:rate=25:duration=4 \
        -f lavfi -i sine=frequency=440:sample_rate=48000:duration=4 "$@" "$folder/$name.avi"
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
compare gstreamer_jpeg OpenDML 100
launch gstreamer_jpeg_pcm \
    videotestsrc num-buffers=100 ! video/x-raw,width=64,height=48,framerate=25/1 ! jpegenc ! queue ! avimux. \
    audiotestsrc num-buffers=100 samplesperbuffer=1920 ! audio/x-raw,format=S16LE,rate=48000,channels=2 ! queue !
compare gstreamer_jpeg_pcm OpenDML 200

echo "$compared files compared, $failures differ"
[ "$failures" = 0 ] && [ "$compared" = 8 ]
