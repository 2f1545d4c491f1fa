// Headers with extreme values, and invalid structures.
#include "damage/catalogue/Catalogue.h"

namespace damage {

namespace {

using namespace aviwriter;

// --- Structure ------------------------------------------------------------------------------------------------------

Bytes honestHeaders() { return headers({videoList(), soundList()}); }

Bytes listsInsideEachOther() {
    constexpr std::uint32_t kDepth = 100'000;
    Bytes lists;
    lists.reserve(12 * kDepth);
    for (std::uint32_t i = 0; i < kDepth; ++i) {
        const Bytes header = text("LIST") + u32((kDepth - i) * 12 - 8) + text("deep");
        lists.insert(lists.end(), header.begin(), header.end());
    }
    return riff("AVI ", {lists, honestHeaders(), list("movi", mediaChunks()), idx1(mediaEntries())});
}

Bytes claiming(Bytes file, const char* listType, std::uint32_t size) {
    overwrite(file, positionOf(file, listType) - 4, u32(size));
    return file;
}
Bytes headersClaimingTooLittle() { return claiming(honestClip(), "hdrl", 4 + 8 + 56); }
Bytes streamClaimingTheNext() { return claiming(honestClip(), "strl", 1000); }

// A name of odd length, without its pad byte.
Bytes paddingMissing() {
    Bytes name = chunk("strn", text("cam"));
    name.pop_back();
    return clipWith(headers({list("strl", {strh(videoHeader()), name, strf(videoFormat())}), soundList()}));
}

// Pictures of odd size without their pad bytes; the index has their positions.
Bytes mediaPaddingMissing() {
    std::vector<Bytes> chunks;
    std::vector<Idx1Entry> entries;
    std::uint32_t offset = 4;
    for (std::uint32_t number = 0; number < kPictures; ++number) {
        const Bytes odd = pictureFrame(number) + filled(1 - pictureFrame(number).size() % 2);
        chunks.push_back(text("00dc") + u32(static_cast<std::uint32_t>(odd.size())) + odd);
        entries.push_back({.offset = offset, .length = static_cast<std::uint32_t>(pictureFrame(number).size())});
        offset += static_cast<std::uint32_t>(chunks.back().size());
        const Bytes sound = soundChunk(number);
        chunks.push_back(chunk("01wb", sound));
        entries.push_back({.chunkId = "01wb", .offset = offset, .length = static_cast<std::uint32_t>(sound.size())});
        offset += static_cast<std::uint32_t>(chunks.back().size());
    }
    return riff("AVI ", {headers({videoList(), soundList()}), list("movi", chunks), idx1(entries)});
}

Bytes twoHeaderLists() { return clipWith(honestHeaders() + headers({soundList()})); }
Bytes headersBehindTheMedia() {
    return riff("AVI ", {list("movi", mediaChunks()), idx1(mediaEntries()), honestHeaders()});
}
Bytes withoutHeaders() { return riff("AVI ", {list("movi", mediaChunks()), idx1(mediaEntries())}); }
Bytes withoutMainHeader() { return clipWith(list("hdrl", {videoList(), soundList()})); }
Bytes shortMainHeader() { return clipWith(list("hdrl", {chunk("avih", filled(55)), videoList(), soundList()})); }
Bytes emptyMainHeader() { return clipWith(list("hdrl", {chunk("avih", filled(56)), videoList(), soundList()})); }

// --- Stream headers and formats -------------------------------------------------------------------------------------

Bytes clipOfVideo(const StreamHeader& video) {
    return clipWith(headers({streamList(video, videoFormat()), soundList()}));
}

StreamHeader withRate(std::uint32_t rate, std::uint32_t scale) {
    StreamHeader header = videoHeader();
    header.rate = rate;
    header.scale = scale;
    return header;
}

Bytes rateOfZero() { return clipOfVideo(withRate(0, 1)); }
Bytes scaleOfZero() { return clipOfVideo(withRate(25, 0)); }
Bytes rateAndScaleOfZero() { return clipOfVideo(withRate(0, 0)); }
Bytes highestRate() { return clipOfVideo(withRate(0x7FFFFFFF, 1)); }
Bytes negativeRate() { return clipOfVideo(withRate(0xFFFFFFFF, 1)); }
Bytes negativeScale() { return clipOfVideo(withRate(25, 0xFFFFFFFF)); }
Bytes negativeRateAndScale() { return clipOfVideo(withRate(0xFFFFFFE7, 0xFFFFFFFF)); }
Bytes rateInHugeNumbers() { return clipOfVideo(withRate(1'000'000'000, 40'000'000)); }
Bytes highestScale() { return clipOfVideo(withRate(1, 0x7FFFFFFF)); }

// The clip followed by dropped pictures: one more than a host can count.
Bytes tooLongInHugeNumbers() {
    std::vector<Idx1Entry> entries = mediaEntries();
    entries.insert(entries.end(), 54 - kPictures, {.length = 0});
    const StreamHeader header = withRate(1'000'000'000, 40'000'000);
    return riff("AVI ", {headers({streamList(header, videoFormat()), soundList()}), list("movi", mediaChunks()),
                         idx1(entries)});
}

Bytes longestVideo() { return clipOfVideo(videoHeader(0xFFFFFFFF)); }
Bytes videoOfNoLength() { return clipOfVideo(videoHeader(0)); }

Bytes lateStart() {
    StreamHeader header = videoHeader();
    header.start = 0xFFFFFFFF;
    header.initialFrames = 0xFFFFFFFF;
    return clipOfVideo(header);
}

Bytes soundOfLength(std::uint32_t frames) { return clipWith(headers({videoList(), soundList(frames)})); }
Bytes longestSound() { return soundOfLength(0xFFFFFFFF); }
Bytes soundTwiceAsLong() { return soundOfLength(2 * kSoundFrames); }
Bytes soundOfNoLength() { return soundOfLength(0); }

Bytes videoFormatOf(const Bytes& format) {
    return clipWith(headers({streamList(videoHeader(), format), soundList()}));
}
Bytes formatWithoutExtraData() { return videoFormatOf(videoFormat(Bytes{})); }
Bytes formatOfNothing() { return videoFormatOf({}); }
Bytes formatOfOtherExtraData() { return videoFormatOf(videoFormat(filled(28, 0xCD))); }
Bytes formatOfOtherSize() {
    Bytes format = videoFormat();
    overwrite(format, 4, u32(0) + u32(0x80000000));
    return videoFormatOf(format);
}

Bytes shortStreamHeader() {
    return clipWith(headers({list("strl", {chunk("strh", filled(48)), strf(videoFormat())}), soundList()}));
}
Bytes streamWithoutFormat() { return clipWith(headers({list("strl", {strh(videoHeader())}), soundList()})); }
Bytes soundWithoutFormat() { return clipWith(headers({videoList(), list("strl", {strh(soundHeader())})})); }

Bytes damagedPicture() {
    Bytes file = honestClip();
    const std::size_t picture = positionOf(file, "00dc", 5) + 8;
    file[picture + 30] ^= 0xFF;
    return file;
}

Bytes picturesOfAnotherSize() {
    Bytes file = honestClip();
    // The width in the extra data, which differs from that of the pictures.
    overwrite(file, positionOf(file, "QSX1") + 12, u32(16));
    return file;
}

Bytes hugePictures() {
    Bytes file = honestClip();
    overwrite(file, positionOf(file, "QSX1") + 12, u32(0x7FFFFFFF) + u32(0x7FFFFFFF));
    return file;
}

const DamagedFile kBrokenHeaders[] = {
    {"lists-inside-each-other", "100,000 nested lists before the headers", listsInsideEachOther,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"headers-claiming-too-little", "the header list ends before the streams", headersClaimingTooLittle,
     "refused: imBadFile (2)",
     {"Avi has no video stream"}},
    {"stream-claiming-the-next", "the first stream's list includes the second", streamClaimingTheNext,
     "10 pictures, all right; no sound",
     {"Avi has no audio stream"}},
    {"header-padding-missing", "a pad byte is missing in the headers", paddingMissing,
     "refused: imBadFile (2)",
     {"Avi has no video stream"}},
    {"media-padding-missing", "pad bytes are missing between the pictures", mediaPaddingMissing,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"two-header-lists", "a second header list with other streams", twoHeaderLists,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"headers-behind-the-media", "the headers are at the end", headersBehindTheMedia,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"without-headers", "there is no header list", withoutHeaders,
     "refused: imBadFile (2)",
     {"Failed to parse avi: hdrl missing"}},
    {"without-main-header", "there is no main header", withoutMainHeader,
     "refused: imBadFile (2)",
     {"Failed to parse avi: avih missing"}},
    {"short-main-header", "the main header is one byte short", shortMainHeader,
     "refused: imBadFile (2)",
     {"Failed to parse avi: avih data read error"}},
    {"empty-main-header", "the main header is all zero", emptyMainHeader,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"rate-of-zero", "the frame rate is 0/1", rateOfZero,
     "10 pictures at 30/1 a second, all right; 19200 samples of sound, all right",
     {"Invalid FPS: 0/1"}},
    {"scale-of-zero", "the frame rate is 25/0", scaleOfZero,
     "10 pictures at 30/1 a second, all right; 19200 samples of sound, all right",
     {"Invalid FPS: 25/0"}},
    {"rate-and-scale-of-zero", "the frame rate is 0/0", rateAndScaleOfZero,
     "10 pictures at 30/1 a second, all right; 19200 samples of sound, all right",
     {"Invalid FPS: 0/0"}},
    {"highest-rate", "2,147,483,647 frames per second", highestRate,
     "10 pictures at 2147483647/1 a second, all right; 19200 samples of sound, all right"},
    {"negative-rate", "a frame rate that is -1 as a signed number", negativeRate,
     "a rate of -1/1 and a length of 10, ahead 0 right, 1-9 imFrameNotFound (28), back 0-9 right; "
     "19200 samples of sound, all right",
     {"frameIndex out of bounds"}},
    {"negative-scale", "the frame rate is 25/-1 as signed numbers", negativeScale,
     "a rate of 25/-1 and a length of -10, ahead 0 right, 1-9 imFrameNotFound (28), back 0-9 right; "
     "19200 samples of sound, all right",
     {"frameIndex out of bounds"}},
    {"negative-rate-and-scale", "the frame rate is -25/-1 as signed numbers", negativeRateAndScale,
     "a rate of -25/-1 and a length of -10, ahead 0-9 right, back 0 right, 1-9 imFrameNotFound (28); "
     "19200 samples of sound, all right",
     {"frameIndex out of bounds"}},
    {"highest-scale", "one frame in 68 years", highestScale,
     "a rate of 1/2147483647 and a length of -10, ahead 0-1 imFrameNotFound (28), back 0-1 imFrameNotFound (28); "
     "19200 samples of sound, all right",
     {"frameIndex out of bounds"}},
    {"rate-in-huge-numbers", "25 frames per second are written as 1,000,000,000/40,000,000", rateInHugeNumbers,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"too-long-in-huge-numbers", "the same, and 54 pictures, of which only the first ten were not dropped",
     tooLongInHugeNumbers,
     "a rate of 1000000000/40000000 and a length of -2134967296, ahead 0-9 right, "
     "back 0 right, 1-9 imFrameNotFound (28); 19200 samples of sound, all right",
     {"frameIndex out of bounds"}},
    {"longest-video", "the video's header claims 4,294,967,295 pictures", longestVideo,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"video-of-no-length", "the video's header claims no pictures", videoOfNoLength,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"late-start", "the video's header claims a start in the far future", lateStart,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"longest-sound", "the sound's header claims 4,294,967,295 samples", longestSound,
     "10 pictures, all right; 4294967295 samples of sound, all right, silent at the end"},
    {"sound-twice-as-long", "the sound's header claims twice the actual length", soundTwiceAsLong,
     "10 pictures, all right; 38400 samples of sound, all right, silent at the end"},
    {"sound-of-no-length", "the sound's header claims no samples", soundOfNoLength,
     "10 pictures, all right; sound of no length"},
    {"format-without-extra-data", "the codec's part of the video format is missing", formatWithoutExtraData,
     "refused: imBadFile (2)",
     {"Compressed format size is invalid"}},
    {"format-of-nothing", "the video format is empty", formatOfNothing,
     "refused: imBadFile (2)",
     {"Compressed format size is invalid"}},
    {"format-of-other-extra-data", "the codec's part of the video format is other data", formatOfOtherExtraData,
     "refused: imBadFile (2)",
     {"Decompress query failed: Quorvane error (-2147467006): the compressed format is not one of this codec"}},
    {"format-of-another-size", "the video format says 0 x -2147483648; the codec's part is correct", formatOfOtherSize,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"short-stream-header", "the video's stream header is truncated", shortStreamHeader,
     "refused: imBadFile (2)",
     {"Avi has no video stream"}},
    {"stream-without-format", "the video has no format", streamWithoutFormat,
     "refused: imBadFile (2)",
     {"Avi has no video stream"}},
    {"sound-without-format", "the sound has no format", soundWithoutFormat,
     "10 pictures, all right; no sound",
     {"Avi has no audio stream"}},
    {"damaged-picture", "a byte of picture 5 is wrong", damagedPicture,
     "10 pictures: 0-4 right, 5 imBadCompression (8), 6-9 right; 19200 samples of sound, all right",
     {"Decompress failed: Quorvane error (-2147466490): the frame's data is corrupt"}},
    {"pictures-of-another-size", "the format says 16 x 4, the pictures are 8 x 4", picturesOfAnotherSize,
     "10 pictures: 0-9 imBadCompression (8); 19200 samples of sound, all right",
     {"Decompress failed: Quorvane error (-2147466492): the frame has other dimensions than the stream"}},
    {"pictures-of-the-largest-size", "the codec's part of the video format says 2147483647 x 2147483647", hugePictures,
     "refused: imBadFile (2)",
     {"Decompress query failed: Quorvane error (-2147467003): the compressed format's width or height is out of "
      "bounds"}},
};

}  // namespace

std::span<const DamagedFile> brokenHeaders() { return kBrokenHeaders; }

}  // namespace damage
