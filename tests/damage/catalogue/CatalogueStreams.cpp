// Too many streams, and streams in other orders.
#include "damage/catalogue/Catalogue.h"

#include <string>

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

// The first character of a chunk's id counts tens without a limit: after "99", stream 100 is ":0".
std::string pairOf(std::uint32_t streamNumber) {
    return {static_cast<char>('0' + streamNumber / 10), static_cast<char>('0' + streamNumber % 10)};
}

// The clip, and further sound streams of 100 samples, each in one chunk.
Bytes manyStreams(std::uint32_t sounds) {
    constexpr std::uint32_t kFrames = 100;
    std::vector<Bytes> streams(sounds, soundList(kFrames));
    streams.front() = soundList();
    streams.insert(streams.begin(), videoList());
    std::vector<Bytes> chunks = mediaChunks();
    for (std::uint32_t sound = 1; sound < sounds; ++sound) {
        chunks.push_back(chunk(pairOf(1 + sound) + "wb", soundData({.stream = sound}, 0, kFrames)));
    }
    return clipOfChunks(headers(streams), chunks);
}
Bytes streams120() { return manyStreams(120); }
Bytes streams200() { return manyStreams(200); }

// Sound, video and sound, as streams 0 to 2; in the media and in the index stream 2 comes first, stream 0 last.
Bytes numbersOutOfOrder() {
    std::vector<Bytes> chunks;
    for (std::uint32_t number = 0; number < kPictures; ++number) {
        chunks.push_back(chunk("02wb", soundChunk(number, {.stream = 1})));
    }
    for (std::uint32_t number = 0; number < kPictures; ++number) {
        chunks.push_back(chunk("01dc", pictureFrame(number)));
    }
    for (std::uint32_t number = 0; number < kPictures; ++number) {
        chunks.push_back(chunk("00wb", soundChunk(number)));
    }
    return clipOfChunks(headers({soundList(), videoList(), soundList()}), chunks);
}

// The middle stream has no format; later ones keep their numbers.
Bytes damagedInBetween() {
    std::vector<Bytes> chunks = mediaChunks();
    for (Bytes& chunk : chunks) {
        chunk[1] = chunk[1] == '1' ? '2' : chunk[1];
    }
    return clipOfChunks(headers({videoList(), list("strl", {strh(soundHeader())}), soundList()}), chunks);
}

Bytes otherHandler() {
    StreamHeader header = videoHeader();
    header.handler = "XXXX";
    return clipWith(headers({streamList(header, videoFormat()), soundList()}));
}

const DamagedFile kBrokenStreams[] = {
    {"sound-first", "the sound's header comes first, but the chunks are numbered the other way round", soundFirst,
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
    {"other-streams", "text and music streams are between video and sound", otherStreams,
     "10 pictures, all right; 19200 samples of sound, silent"},
    {"streams-120", "a video and 120 sound streams, each with its own sound", streams120,
     "10 pictures, all right; 19200 samples of sound, all right; "
     "streams 1-119 with 100 samples of sound, all right"},
    {"streams-200", "a video and 200 sound streams, each with its own sound", streams200,
     "10 pictures, all right; 19200 samples of sound, all right; "
     "streams 1-199 with 100 samples of sound, all right"},
    {"numbers-out-of-order", "sound, video and sound, which the index lists from the last stream to the first",
     numbersOutOfOrder,
     "10 pictures, all right; 19200 samples of sound, all right; stream 1 with 19200 samples of sound, all right"},
    {"damaged-in-between", "a sound stream without a format is between video and sound", damagedInBetween,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"other-handler", "the video's header names another codec", otherHandler,
     "10 pictures, all right; 19200 samples of sound, all right"},
};

}  // namespace

std::span<const DamagedFile> brokenStreams() { return kBrokenStreams; }

}  // namespace damage
