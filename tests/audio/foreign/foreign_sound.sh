#!/usr/bin/env bash
# Sound in files that FFmpeg and GStreamer wrote must reach the host exactly as FFmpeg itself decodes it.
#   foreign_sound.sh MAKEAVI COMPARE_SOUND [EMULATOR]
#
# FFmpeg's files hold our picture besides the sound, so that stream 0 is covered. GStreamer's muxer does not support our
# codec, so only its second sound is compared, which does not need the picture. It does not support float either. Below
# 1 GiB the offsets in its only index are absolute, where the importer expects offsets from the media list: such a file
# is not read correctly until another program, which writes the usual offsets, has copied it. The last case detects if
# that changes.
set -euo pipefail

makeavi=$1
compare_sound=$2
emulator=${3:-}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"    # file names without folders are the same on both systems
comparisons=()

encode() {
    ffmpeg -nostdin -y -loglevel error "$@"
}

# will_compare FILE STREAM: STREAM is the number of the sound, from 0, as in the importer.
will_compare() {
    encode -i "$1" -map "0:a:$2" -c:a pcm_f32le -f f32le "$1.$2.f32"
    comparisons+=("$1" "$2" "$1.$2.f32")
}

# A tone and noise; the second sound is longer and has another rate, so that they cannot be mistaken for each other.
first="aevalsrc=0.5*sin(2764*t)|1.9*random(0)-0.95:s=44100:d=1"
second="aevalsrc=1.9*random(1)-0.95|0.7*sin(5000*t)*sin(30*t):s=48000:d=1.3"

with_ffmpeg() {
    encode -i picture.avi -f lavfi -i "$first" -f lavfi -i "$second" -map 0:v -map 1:a -map 2:a \
        -copy_unknown -c:v copy -c:a "$1" "ffmpeg_$1.avi"
    will_compare "ffmpeg_$1.avi" 0
    will_compare "ffmpeg_$1.avi" 1
}

with_ffmpeg_in_six_channels() {
    local six="0.1*sin(900*t)|0.2*random(0)|0.3*random(1)|-0.4*random(2)|0.5*random(3)|-0.6*random(4)"
    encode -i picture.avi -f lavfi -i "aevalsrc=$six:c=5.1:s=48000:d=1" -map 0:v -map 1:a \
        -copy_unknown -c:v copy -c:a "$1" "ffmpeg_six_$1.avi"
    will_compare "ffmpeg_six_$1.avi" 0
}

with_gstreamer() {
    local sound="audio/x-raw,format=$1,rate=48000,channels=2"
    gst-launch-1.0 -q avimux name=mux ! filesink location="gstreamer_$1.avi" \
        videotestsrc num-buffers=30 ! video/x-raw,width=32,height=16,framerate=25/1 ! jpegenc ! queue ! mux. \
        audiotestsrc num-buffers=40 wave=sine ! audioconvert ! "$sound" ! queue ! mux. \
        audiotestsrc num-buffers=50 wave=white-noise volume=0.9 ! audioconvert ! "$sound" ! queue ! mux.
    encode -i "gstreamer_$1.avi" -map 0 -c copy "copied_gstreamer_$1.avi"
    will_compare "copied_gstreamer_$1.avi" 1
}

$emulator "$makeavi" --size 32x16 --frames 30 -o picture.avi

for codec in pcm_u8 pcm_s16le pcm_s24le pcm_s32le pcm_f32le; do with_ffmpeg "$codec"; done
for codec in pcm_s16le pcm_s24le pcm_f32le; do with_ffmpeg_in_six_channels "$codec"; done
for format in U8 S16LE S24LE S32LE; do with_gstreamer "$format"; done

$emulator "$compare_sound" "${comparisons[@]}"

status=0
$emulator "$compare_sound" gstreamer_S16LE.avi 1 copied_gstreamer_S16LE.avi.1.f32 > difference || status=$?
if [ "$status" != 1 ] || ! grep -q "differs from sample 0 " difference; then
    echo "FAIL a file with absolute offsets in its index is now read differently: status $status"
    cat difference
    exit 1
fi
echo "ok   absolute offsets in an index are not recognised"
