// "idx1" indexes with wrong, invalid or repeated positions.
#include "damage/catalogue/Catalogue.h"

#include <algorithm>

namespace damage {

namespace {

using namespace aviwriter;

// The clip with every entry changed; `number` counts the pictures or sound chunks of a stream.
template <typename Change>
Bytes changedEntries(Change change) {
    std::vector<Idx1Entry> entries = mediaEntries();
    for (std::size_t i = 0; i < entries.size(); ++i) {
        change(entries[i], static_cast<std::uint32_t>(i / 2));
    }
    return clipIndexedBy(entries);
}

Bytes withPicture(std::uint32_t number, const Idx1Entry& entry) {
    std::vector<Idx1Entry> entries = mediaEntries();
    entries[2 * number] = entry;
    return clipIndexedBy(entries);
}

Bytes absoluteOffsets() {
    const auto base = static_cast<std::uint32_t>(positionOf(honestClip(), "movi"));
    return changedEntries([base](Idx1Entry& entry, std::uint32_t) { entry.offset += base; });
}

Bytes offsetsOfData() {
    return changedEntries([](Idx1Entry& entry, std::uint32_t) { entry.offset += 8; });
}

Bytes entriesPastTheEnd() {
    return changedEntries([](Idx1Entry& entry, std::uint32_t number) { entry.offset += number < 4 ? 0 : 0x100000; });
}

Bytes backwards() {
    std::vector<Idx1Entry> entries = mediaEntries();
    std::reverse(entries.begin(), entries.end());
    return clipIndexedBy(entries);
}

Bytes allTheSamePlace() {
    const std::vector<Idx1Entry> entries = mediaEntries();
    return changedEntries([&](Idx1Entry& entry, std::uint32_t) { entry = entries[entry.chunkId == "00dc" ? 0 : 1]; });
}

Bytes overlapping() {
    return changedEntries([](Idx1Entry& entry, std::uint32_t) { entry.length += entry.chunkId == "00dc" ? 4000 : 0; });
}

Bytes atTheIndexItself() {
    const Bytes clip = honestClip();
    const auto index = static_cast<std::uint32_t>(positionOf(clip, "idx1") - positionOf(clip, "movi"));
    return withPicture(5, {.offset = index, .length = 16 * 2 * kPictures});
}

Bytes pictureOf(std::uint32_t length) {
    Idx1Entry entry = mediaEntries()[10];
    entry.length = length;
    return withPicture(5, entry);
}
Bytes pictureOf4GiB() { return pictureOf(0xFFFFFFFF); }
Bytes pictureCutShort() { return pictureOf(20); }
Bytes pictureAtTheHighestOffset() { return withPicture(5, {.offset = 0xFFFFFFFF, .length = 100}); }

// Pictures from `first` on and before `end` are empty.
template <std::uint32_t first, std::uint32_t end>
Bytes droppedPictures() {
    return changedEntries([](Idx1Entry& entry, std::uint32_t number) {
        entry.length = entry.chunkId == "00dc" && number - first < end - first ? 0 : entry.length;
    });
}

// All of the sound, and the first two pictures with a run of dropped ones between them.
Bytes aLongRunOfDroppedPictures() {
    std::vector<Idx1Entry> entries;
    for (const Idx1Entry& entry : mediaEntries()) {
        if (entry.chunkId == "01wb" || entries.empty()) {
            entries.push_back(entry);
        }
    }
    entries.insert(entries.end(), 100'000, {.length = 0});
    entries.push_back(mediaEntries()[2]);
    return clipIndexedBy(entries);
}

Bytes emptySoundChunks() {
    std::vector<Idx1Entry> entries;
    for (const Idx1Entry& entry : mediaEntries()) {
        if (entry.chunkId == "01wb") {
            entries.insert(entries.end(), 500, {.chunkId = "01wb", .length = 0});
        }
        entries.push_back(entry);
    }
    return clipIndexedBy(entries);
}

Bytes raggedIndex() {
    Bytes file = honestClip();
    const std::size_t index = positionOf(file, "idx1");
    overwrite(file, index + 4, u32(16 * 12 + 5));
    return cutTo(file, index + 8 + 16 * 12 + 5);
}

// A picture in the file's hole, which reads as zeros.
Bytes pictureInAHole() { return withPicture(5, {.offset = 2 << 20, .length = 64}); }
constexpr std::uint32_t kHole = 64 << 20;
Bytes indexRunsIntoAHole() {
    Bytes file = honestClip();
    overwrite(file, positionOf(file, "idx1") + 4, u32(16 * 2 * kPictures + kHole));
    return file;
}
Bytes indexInAHole() {
    Bytes file = honestClip();
    const std::size_t index = positionOf(file, "idx1");
    overwrite(file, index + 4, u32(kHole));
    return cutTo(file, index + 8);
}

Bytes emptyIndex() { return clipIndexedBy({}); }

Bytes indexOfOtherStreams() {
    return changedEntries([](Idx1Entry& entry, std::uint32_t) {
        entry.chunkId = entry.chunkId == "00dc" ? "07dc" : "08wb";
    });
}

Bytes indexWithExchangedStreams() {
    return changedEntries([](Idx1Entry& entry, std::uint32_t) {
        entry.chunkId = entry.chunkId == "00dc" ? "01dc" : "00wb";
    });
}

const DamagedFile kBrokenIndexes[] = {
    {"idx1-from-the-file", "`idx1` has absolute offsets, as one muxer writes them", absoluteOffsets,
     "10 pictures: 0-9 imBadCompression (8); 19200 samples of sound, other sound from 0 on",
     {"importAudio: read error: 7680, read: 7658",
      "Decompress failed: Quorvane error (-2147466494): the frame is not one of this codec"}},
    {"idx1-of-data", "`idx1` points at the data instead of the chunk headers", offsetsOfData,
     "10 pictures: 0-9 imBadCompression (8); 19200 samples of sound, other sound from 0 on",
     {"Decompress failed: Quorvane error (-2147466494): the frame is not one of this codec"}},
    {"idx1-past-the-end", "`idx1` points past the end of the file from picture 4 on", entriesPastTheEnd,
     "10 pictures: 0-3 right, 4-9 imFileReadFailed (33); 19200 samples of sound, silent from 7680 on",
     {"importAudio: read error: 7680, read: 0",
      "Failed to read frame from AVI: Read error: size: 64, read: 0"}},
    {"idx1-backwards", "`idx1` lists the chunks from the last to the first", backwards,
     "10 pictures: 0 shows 9, 1 shows 8, 2 shows 7, 3 shows 6, 4 shows 5, 5 shows 4, 6 shows 3, "
     "7 shows 2, 8 shows 1, 9 shows 0; "
     "19200 samples of sound, other sound from 0 on"},
    {"idx1-of-one-place", "all entries of `idx1` point at the first chunks", allTheSamePlace,
     "10 pictures: 0 right, 1-9 shows 0; 19200 samples of sound, other sound from 1920 on"},
    {"idx1-overlapping", "pictures reach 4000 bytes into the sound after them", overlapping,
     "10 pictures: 0-9 imBadCompression (8); 19200 samples of sound, all right",
     {"Decompress failed: Quorvane error (-2147466491): the frame's plane sizes contradict each other"}},
    {"idx1-at-itself", "picture 5 is the index itself", atTheIndexItself,
     "10 pictures: 0-4 right, 5 imBadCompression (8), 6-9 right; 19200 samples of sound, all right",
     {"Decompress failed: Quorvane error (-2147466494): the frame is not one of this codec"}},
    {"picture-cut-short", "picture 5 has only its first 20 bytes", pictureCutShort,
     "10 pictures: 0-4 right, 5 imBadCompression (8), 6-9 right; 19200 samples of sound, all right",
     {"Decompress failed: Quorvane error (-2147466495): the frame is truncated"}},
    {"picture-at-the-highest-offset", "picture 5 has the highest possible offset", pictureAtTheHighestOffset,
     "10 pictures: 0-4 right, 5 imFileReadFailed (33), 6-9 right; 19200 samples of sound, all right",
     {"Failed to read frame from AVI: Read error: size: 100, read: 0"}},
    {"picture-in-a-hole", "picture 5 lies in a hole of the file, which reads as zeros", pictureInAHole,
     "10 pictures: 0-4 right, 5 imBadCompression (8), 6-9 right; 19200 samples of sound, all right",
     {"Decompress failed: Quorvane error (-2147466494): the frame is not one of this codec"}, kHole},
    {"picture-of-a-hole", "picture 5 claims 4 GiB less one byte, all of them in the file, which is one hole",
     pictureOf4GiB,
     "10 pictures: 0-4 right, 5 imFileReadFailed (33), 6-9 right; 19200 samples of sound, all right",
     {"Failed to read frame from AVI: Frame too large: size: 4294967295"}, std::uint64_t{5} << 30},
    {"dropped-pictures", "pictures 3 to 6 were dropped while recording", droppedPictures<3, 7>,
     "10 pictures: 0-2 right, 3-6 shows 2, 7-9 right; 19200 samples of sound, all right",
     {"Empty frame: 3, frame read: 2",
      "Empty frame: 4, frame read: 2",
      "Empty frame: 5, frame read: 2",
      "Empty frame: 6, frame read: 2"}},
    {"dropped-from-the-start", "the first three pictures were dropped while recording", droppedPictures<0, 3>,
     "10 pictures: 0-2 shows 3, 3-9 right; 19200 samples of sound, all right",
     {"Empty frame: 0, frame read: 3",
      "Empty frame: 1, frame read: 3",
      "Empty frame: 2, frame read: 3"}},
    {"all-pictures-dropped", "every picture was dropped", droppedPictures<0, kPictures>,
     "10 pictures: 0-9 imFrameNotFound (28); 19200 samples of sound, all right"},
    {"long-run-of-dropped-pictures", "100,000 dropped pictures between two", aLongRunOfDroppedPictures,
     "100002 pictures: 0 right, 1 shows 0, 50001 shows 0, 100000 shows 0, 100001 shows 1; "
     "19200 samples of sound, all right",
     {"Empty frame: 1, frame read: 0",
      "Empty frame: 50001, frame read: 0",
      "Empty frame: 100000, frame read: 0"}},
    {"empty-sound-chunks", "500 empty sound chunks before each full one", emptySoundChunks,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"idx1-ragged", "`idx1` ends within its 13th entry", raggedIndex,
     "7 pictures: 0-5 right, 6 shows 5; 19200 samples of sound, silent from 11520 on",
     {"Empty frame: 6, frame read: 5"}},
    {"idx1-empty", "`idx1` has no entries", emptyIndex,
     "no pictures; 19200 samples of sound, silent"},
    {"idx1-in-a-hole", "`idx1` lies in a hole of the file, which reads as zeros", indexInAHole,
     "no pictures; 19200 samples of sound, silent", {}, kHole},
    {"idx1-runs-into-a-hole", "`idx1` continues for four million entries in a hole of the file", indexRunsIntoAHole,
     "10 pictures, all right; 19200 samples of sound, all right", {}, kHole},
    {"idx1-of-other-streams", "`idx1` names streams that the file does not have", indexOfOtherStreams,
     "no pictures; 19200 samples of sound, silent"},
    {"idx1-with-exchanged-streams", "`idx1` has pictures and sound exchanged", indexWithExchangedStreams,
     "10 pictures: 0-9 imBadCompression (8); 19200 samples of sound, other sound from 0 on",
     {"Decompress failed: Quorvane error (-2147466494): the frame is not one of this codec"}},
};

}  // namespace

std::span<const DamagedFile> brokenIndexes() { return kBrokenIndexes; }

}  // namespace damage
