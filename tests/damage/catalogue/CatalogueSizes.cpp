// Sizes at the limits of 31 and 32 bits, of chunks and lists and in indexes.
#include "damage/catalogue/Catalogue.h"

namespace damage {

namespace {

using namespace aviwriter;

constexpr std::uint32_t k2GiBLess1 = 0x7FFFFFFF;
constexpr std::uint32_t k2GiB = 0x80000000;
constexpr std::uint32_t k4GiBLess1 = 0xFFFFFFFF;

// --- Chunks and lists -----------------------------------------------------------------------------------------------

// The size precedes a list's type and follows a chunk's id.
Bytes withListSize(Bytes file, const char* type, std::uint32_t size) {
    overwrite(file, positionOf(file, type) - 4, u32(size));
    return file;
}
Bytes withChunkSize(Bytes file, const char* id, std::uint32_t size) {
    overwrite(file, positionOf(file, id) + 4, u32(size));
    return file;
}

template <std::uint32_t size>
Bytes riffClaiming() { return withListSize(honestClip(), "AVI ", size); }

template <std::uint32_t size>
Bytes headersClaiming() { return withListSize(honestClip(), "hdrl", size); }

template <std::uint32_t size>
Bytes mainHeaderClaiming() { return withChunkSize(honestClip(), "avih", size); }

template <std::uint32_t size>
Bytes streamClaiming() { return withListSize(honestClip(), "strl", size); }

template <std::uint32_t size>
Bytes streamHeaderClaiming() { return withChunkSize(honestClip(), "strh", size); }

template <std::uint32_t size>
Bytes formatClaiming() { return withChunkSize(honestClip(), "strf", size); }

template <std::uint32_t size>
Bytes superIndexClaiming() { return withChunkSize(openDmlClip(5), "indx", size); }

template <std::uint32_t size>
Bytes standardIndexClaiming() {
    Bytes file = openDmlClip(5);
    overwrite(file, positionOf(file, "ix00", 2) + 4, u32(size));
    overwrite(file, superEntryAt(file, 0, 2) + 8, u32(size));
    return file;
}

template <std::uint32_t size>
Bytes mediaClaiming() { return withListSize(honestClip(), "movi", size); }

template <std::uint32_t size>
Bytes idx1Claiming() { return withChunkSize(honestClip(), "idx1", size); }

template <std::uint32_t size>
Bytes mediaChunksClaiming() {
    std::vector<Bytes> chunks = mediaChunks();
    for (Bytes& chunk : chunks) {
        overwrite(chunk, 4, u32(size));
    }
    return riff("AVI ", {headers({videoList(), soundList()}), list("movi", chunks), idx1(mediaEntries())});
}

// --- Media in the indexes -------------------------------------------------------------------------------------------

Bytes withEntrySize(std::size_t entry, std::uint32_t size) {
    std::vector<Idx1Entry> entries = mediaEntries();
    entries[entry].length = size;
    return clipIndexedBy(entries);
}

template <std::uint32_t size>
Bytes pictureClaiming() { return withEntrySize(10, size); }

template <std::uint32_t size>
Bytes soundClaiming() { return withEntrySize(11, size); }

// The highest bit says that the picture is not a key frame, and is not part of its size.
template <std::uint32_t size>
Bytes openDmlPictureClaiming() {
    Bytes file = openDmlClip(5);
    overwrite(file, positionOf(file, "ix00", 2) + 8 + 24 + 4, u32(size));
    return file;
}

const DamagedFile kExtremeSizes[] = {
    {"riff-claiming-2-gib-less-1", "the RIFF claims 2 GiB less one byte", riffClaiming<k2GiBLess1>,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"riff-claiming-2-gib", "the RIFF claims 2 GiB", riffClaiming<k2GiB>,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"riff-claiming-4-gib-less-1", "the RIFF claims 4 GiB less one byte", riffClaiming<k4GiBLess1>,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"headers-claiming-2-gib-less-1", "the header list claims 2 GiB less one byte", headersClaiming<k2GiBLess1>,
     "no pictures; 19200 samples of sound, silent"},
    {"headers-claiming-2-gib", "the header list claims 2 GiB", headersClaiming<k2GiB>,
     "no pictures; 19200 samples of sound, silent"},
    {"headers-claiming-4-gib-less-1", "the header list claims 4 GiB less one byte", headersClaiming<k4GiBLess1>,
     "no pictures; 19200 samples of sound, silent"},
    {"main-header-claiming-2-gib-less-1", "the main header claims 2 GiB less one byte", mainHeaderClaiming<k2GiBLess1>,
     "refused: imBadFile (2)",
     {"Avi has no video stream"}},
    {"main-header-claiming-2-gib", "the main header claims 2 GiB", mainHeaderClaiming<k2GiB>,
     "refused: imBadFile (2)",
     {"Avi has no video stream"}},
    {"main-header-claiming-4-gib-less-1", "the main header claims 4 GiB less one byte", mainHeaderClaiming<k4GiBLess1>,
     "refused: imBadFile (2)",
     {"Avi has no video stream"}},
    {"stream-claiming-2-gib-less-1", "the video's stream list claims 2 GiB less one byte", streamClaiming<k2GiBLess1>,
     "10 pictures, all right; no sound",
     {"Avi has no audio stream"}},
    {"stream-claiming-2-gib", "the video's stream list claims 2 GiB", streamClaiming<k2GiB>,
     "10 pictures, all right; no sound",
     {"Avi has no audio stream"}},
    {"stream-claiming-4-gib-less-1", "the video's stream list claims 4 GiB less one byte", streamClaiming<k4GiBLess1>,
     "10 pictures, all right; no sound",
     {"Avi has no audio stream"}},
    {"stream-header-claiming-2-gib-less-1", "the video's stream header claims 2 GiB less one byte",
     streamHeaderClaiming<k2GiBLess1>,
     "refused: imBadFile (2)",
     {"Avi has no video stream"}},
    {"stream-header-claiming-2-gib", "the video's stream header claims 2 GiB", streamHeaderClaiming<k2GiB>,
     "refused: imBadFile (2)",
     {"Avi has no video stream"}},
    {"stream-header-claiming-4-gib-less-1", "the video's stream header claims 4 GiB less one byte",
     streamHeaderClaiming<k4GiBLess1>,
     "refused: imBadFile (2)",
     {"Avi has no video stream"}},
    {"format-claiming-2-gib-less-1", "the video's format claims 2 GiB less one byte", formatClaiming<k2GiBLess1>,
     "refused: imBadFile (2)",
     {"Avi has no video stream"}},
    {"format-claiming-2-gib", "the video's format claims 2 GiB", formatClaiming<k2GiB>,
     "refused: imBadFile (2)",
     {"Avi has no video stream"}},
    {"format-claiming-4-gib-less-1", "the video's format claims 4 GiB less one byte", formatClaiming<k4GiBLess1>,
     "refused: imBadFile (2)",
     {"Avi has no video stream"}},
    {"super-index-claiming-2-gib-less-1", "the video's index of indexes claims 2 GiB less one byte",
     superIndexClaiming<k2GiBLess1>,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"super-index-claiming-2-gib", "the video's index of indexes claims 2 GiB", superIndexClaiming<k2GiB>,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"super-index-claiming-2-gib-and-24", "the same claims 2 GiB and 24 bytes; from that size on it has no entries",
     superIndexClaiming<k2GiB + 24>,
     "no pictures; 19200 samples of sound, all right"},
    {"super-index-claiming-4-gib-less-1", "the video's index of indexes claims 4 GiB less one byte",
     superIndexClaiming<k4GiBLess1>,
     "no pictures; 19200 samples of sound, all right"},
    {"index-claiming-2-gib-less-1",
     "the video's third index claims 2 GiB less one byte, there and in the index of indexes",
     standardIndexClaiming<k2GiBLess1>,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"index-claiming-2-gib",
     "the video's third index claims 2 GiB, there and in the index of indexes",
     standardIndexClaiming<k2GiB>,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"index-claiming-4-gib-less-1",
     "the video's third index claims 4 GiB less one byte, there and in the index of indexes",
     standardIndexClaiming<k4GiBLess1>,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"media-claiming-2-gib-less-1", "the media list claims 2 GiB less one byte", mediaClaiming<k2GiBLess1>,
     "no pictures; 19200 samples of sound, silent"},
    {"media-claiming-2-gib", "the media list claims 2 GiB", mediaClaiming<k2GiB>,
     "no pictures; 19200 samples of sound, silent"},
    {"media-claiming-4-gib-less-1", "the media list claims 4 GiB less one byte", mediaClaiming<k4GiBLess1>,
     "no pictures; 19200 samples of sound, silent"},
    {"idx1-claiming-2-gib-less-1", "`idx1` claims 2 GiB less one byte", idx1Claiming<k2GiBLess1>,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"idx1-claiming-2-gib", "`idx1` claims 2 GiB", idx1Claiming<k2GiB>,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"idx1-claiming-4-gib-less-1", "`idx1` claims 4 GiB less one byte", idx1Claiming<k4GiBLess1>,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"media-chunk-claiming-2-gib-less-1", "each chunk of the media claims 2 GiB less one byte",
     mediaChunksClaiming<k2GiBLess1>,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"media-chunk-claiming-2-gib", "each chunk of the media claims 2 GiB", mediaChunksClaiming<k2GiB>,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"media-chunk-claiming-4-gib-less-1", "each chunk of the media claims 4 GiB less one byte",
     mediaChunksClaiming<k4GiBLess1>,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"picture-claiming-2-gib-less-1", "picture 5 in `idx1` claims 2 GiB less one byte", pictureClaiming<k2GiBLess1>,
     "10 pictures: 0-4 right, 5 imFileReadFailed (33), 6-9 right; 19200 samples of sound, all right",
     {"Failed to read frame from AVI: Read error: size: 2147483647, read: 39120"}},
    {"picture-claiming-2-gib", "picture 5 in `idx1` claims 2 GiB", pictureClaiming<k2GiB>,
     "10 pictures: 0-4 right, 5 imFileReadFailed (33), 6-9 right; 19200 samples of sound, all right",
     {"Failed to read frame from AVI: Read error: size: 2147483648, read: 39120"}},
    {"picture-claiming-4-gib-less-1", "picture 5 in `idx1` claims 4 GiB less one byte", pictureClaiming<k4GiBLess1>,
     "10 pictures: 0-4 right, 5 imFileReadFailed (33), 6-9 right; 19200 samples of sound, all right",
     {"Failed to read frame from AVI: Read error: size: 4294967295, read: 39120"}},
    {"sound-claiming-2-gib-less-1", "a sound chunk in `idx1` claims 2 GiB less one byte", soundClaiming<k2GiBLess1>,
     "10 pictures, all right; 19200 samples of sound, other sound from 11520 on"},
    {"sound-claiming-2-gib", "a sound chunk in `idx1` claims 2 GiB", soundClaiming<k2GiB>,
     "10 pictures, all right; 19200 samples of sound, other sound from 11520 on"},
    {"sound-claiming-4-gib-less-1", "a sound chunk in `idx1` claims 4 GiB less one byte", soundClaiming<k4GiBLess1>,
     "10 pictures, all right; 19200 samples of sound, other sound from 11520 on"},
    {"opendml-picture-claiming-2-gib-less-1", "picture 4 in an OpenDML index claims 2 GiB less one byte",
     openDmlPictureClaiming<k2GiBLess1>,
     "10 pictures: 0-3 right, 4 imFileReadFailed (33), 5-9 right; 19200 samples of sound, all right",
     {"Failed to read frame from AVI: Read error: size: 2147483647, read: 46888"}},
    {"opendml-picture-claiming-2-gib", "picture 4 in an OpenDML index claims 2 GiB", openDmlPictureClaiming<k2GiB>,
     "10 pictures: 0-3 right, 4 shows 3, 5-9 right; 19200 samples of sound, all right",
     {"Empty frame: 4, frame read: 3"}},
    {"opendml-picture-claiming-4-gib-less-1", "picture 4 in an OpenDML index claims 4 GiB less one byte",
     openDmlPictureClaiming<k4GiBLess1>,
     "10 pictures: 0-3 right, 4 imFileReadFailed (33), 5-9 right; 19200 samples of sound, all right",
     {"Failed to read frame from AVI: Read error: size: 2147483647, read: 46888"}},
};

}  // namespace

std::span<const DamagedFile> extremeSizes() { return kExtremeSizes; }

}  // namespace damage
