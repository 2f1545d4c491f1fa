// Too many streams, streams in another order, and sound formats at their limits.
#include "damage/Catalogue.h"

namespace damage {

namespace {

using namespace aviwriter;

Bytes soundFirst() { return clipWith(headers({soundList(), videoList()})); }

// The sound is stream 0 and the video stream 1, and the chunks are named accordingly.
Bytes soundFirstAndNamedSo() {
    std::vector<Idx1Entry> entries = mediaEntries();
    for (Idx1Entry& entry : entries) {
        entry.chunkId = entry.chunkId == "00dc" ? "01dc" : "00wb";
    }
    return riff("AVI ", {headers({soundList(), videoList()}), list("movi", mediaChunks()), idx1(entries)});
}

Bytes soundAlone() { return clipWith(headers({soundList()})); }
Bytes noStreams() { return clipWith(headers({})); }
Bytes twoVideos() { return clipWith(headers({videoList(), videoList()})); }

Bytes otherStreams() {
    return clipWith(headers({videoList(), streamList({.type = "txts"}, {}), streamList({.type = "mids"}, {}),
                             soundList()}));
}

Bytes manyStreams(std::size_t sounds) {
    std::vector<Bytes> streams(sounds, soundList());
    streams.insert(streams.begin(), videoList());
    return clipWith(headers(streams));
}
Bytes streams120() { return manyStreams(120); }
Bytes streams200() { return manyStreams(200); }

Bytes otherHandler() {
    StreamHeader header = videoHeader();
    header.handler = "XXXX";
    return clipWith(headers({streamList(header, videoFormat()), soundList()}));
}

Bytes soundIn(const Bytes& format) {
    return clipWith(headers({videoList(), streamList(soundHeader(), format)}));
}
Bytes compressedSound() { return soundIn(waveFormatEx({.formatTag = 0x55})); }
Bytes noChannels() { return soundIn(waveFormatEx({.channels = 0})); }
Bytes channels32() { return soundIn(waveFormatEx({.channels = 32})); }
Bytes channels33() { return soundIn(waveFormatEx({.channels = 33})); }
Bytes channels65535() { return soundIn(waveFormatEx({.channels = 65535, .blockAlign = 4})); }
Bytes bits12() { return soundIn(waveFormatEx({.blockAlign = 4, .bitsPerSample = 12})); }
Bytes wrongBlock() { return soundIn(waveFormatEx({.blockAlign = 3})); }
Bytes highestRateOfSound() { return soundIn(waveFormatEx({.samplesPerSec = 0xFFFFFFFF})); }
Bytes soundRateOfZero() { return soundIn(waveFormatEx({.samplesPerSec = 0})); }
Bytes format15Bytes() { return soundIn(cutTo(waveFormatEx({}), 15)); }
Bytes format16Bytes() { return soundIn(pcmWaveFormat({})); }
Bytes extrasClaimingMore() { return soundIn(waveFormatEx({.cbSize = 65535})); }
Bytes extensibleCutShort() { return soundIn(cutTo(waveFormatExtensible({}), 30)); }
Bytes floatCalled16Bits() { return soundIn(waveFormatEx({.formatTag = kWaveFormatFloat, .bitsPerSample = 16})); }

const DamagedFile kFiles[] = {
    {"sound-first", "the sound's header stands before the video's, the chunks are named the other way", soundFirst,
     "10 pictures: 0-9 imBadCompression (8); 19200 samples of sound, other sound from 0 on",
     {"Decompress failed: Quorvane error (-2147466494): the frame is not one of this codec"}},
    {"sound-first-and-named-so", "the sound is stream 0, the video stream 1", soundFirstAndNamedSo,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"sound-alone", "the clip has sound and no video", soundAlone,
     "refused: imBadFile (2)",
     {"Avi has no video stream"}},
    {"no-streams", "the headers have no streams", noStreams,
     "refused: imBadFile (2)",
     {"Avi has no video stream"}},
    {"two-videos", "the second stream is video too, and has the sound's chunks", twoVideos,
     "10 pictures, all right; no sound",
     {"Avi has no audio stream"}},
    {"other-streams", "text and music streams stand between video and sound", otherStreams,
     "10 pictures, all right; 19200 samples of sound, silent"},
    {"streams-120", "a video and 120 sound streams", streams120,
     "10 pictures, all right; 19200 samples of sound, all right; 120 streams"},
    {"streams-200", "a video and 200 sound streams", streams200,
     "10 pictures, all right; 19200 samples of sound, all right; 200 streams"},
    {"other-handler", "the video's header names another codec", otherHandler,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"compressed-sound", "the sound is compressed", compressedSound,
     "10 pictures, all right; no sound",
     {"Avi unsupported audio stream format: 00000055-0000-0010-8000-00aa00389b71"}},
    {"no-channels", "the sound has no channels", noChannels,
     "10 pictures, all right; 19200 samples of sound in 0 channels, delivered"},
    {"channels-32", "the sound has 32 channels", channels32,
     "10 pictures, all right; 19200 samples of sound in 32 channels, delivered"},
    {"channels-33", "the sound has 33 channels", channels33,
     "10 pictures, all right; no sound",
     {"Avi too many audio channels: 33"}},
    {"channels-65535", "the sound has 65,535 channels", channels65535,
     "10 pictures, all right; no sound",
     {"Avi too many audio channels: 65535"}},
    {"bits-12", "the sound has 12 bits", bits12,
     "10 pictures, all right; no sound",
     {"Avi unsupported audio bits per sample: 12"}},
    {"wrong-block", "the sound's block is 3 bytes instead of 4", wrongBlock,
     "10 pictures, all right; no sound",
     {"Avi audio stream format error: nBlockAlign != nChannels * (wBitsPerSample / 8)"}},
    {"highest-sound-rate", "4,294,967,295 samples a second", highestRateOfSound,
     "10 pictures, all right; 19200 samples of sound at 4294967296 Hz, all right"},
    {"sound-rate-of-zero", "no samples a second", soundRateOfZero,
     "10 pictures, all right; 19200 samples of sound at 0 Hz, all right"},
    {"sound-format-of-15-bytes", "the sound format is one byte short", format15Bytes,
     "10 pictures, all right; no sound",
     {"Avi audio stream format size is too small: 15"}},
    {"sound-format-of-16-bytes", "the sound format is as short as can be", format16Bytes,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"sound-format-claiming-more", "the sound format claims 65,535 further bytes", extrasClaimingMore,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"extensible-cut-short", "an extensible sound format is cut short", extensibleCutShort,
     "10 pictures, all right; no sound",
     {"Avi unsupported audio stream format: 00000001-0000-0000-0000-000000000000"}},
    {"float-called-16-bits", "float sound that says it has 16 bits", floatCalled16Bits,
     "10 pictures, all right; 19200 samples of sound, other sound from 0 on"},
};

}  // namespace

std::span<const DamagedFile> brokenStreams() { return kFiles; }

}  // namespace damage
