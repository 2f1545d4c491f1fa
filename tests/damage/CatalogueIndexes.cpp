// Indexes that lead to the wrong place, to nowhere, or too often to the same.
#include "damage/Catalogue.h"

#include <algorithm>

namespace damage {

namespace {

using namespace aviwriter;

// --- "idx1" ---------------------------------------------------------------------------------------------------------

// The clip with every entry changed; `number` counts pictures or sound chunks of their own stream.
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
Bytes pictureOf2GiB() { return pictureOf(0x7FFFFFFF); }
Bytes pictureOf2GiBAnd1() { return pictureOf(0x80000000); }
Bytes pictureOf4GiB() { return pictureOf(0xFFFFFFFF); }
Bytes pictureCutShort() { return pictureOf(20); }
Bytes pictureAtTheHighestOffset() { return withPicture(5, {.offset = 0xFFFFFFFF, .length = 100}); }

Bytes soundOf4GiB() {
    std::vector<Idx1Entry> entries = mediaEntries();
    entries[11].length = 0xFFFFFFFF;
    return clipIndexedBy(entries);
}

Bytes droppedPictures() {
    return changedEntries([](Idx1Entry& entry, std::uint32_t number) {
        entry.length = entry.chunkId == "00dc" && number >= 3 && number < 7 ? 0 : entry.length;
    });
}

Bytes allPicturesDropped() {
    return changedEntries([](Idx1Entry& entry, std::uint32_t) {
        entry.length = entry.chunkId == "00dc" ? 0 : entry.length;
    });
}

Bytes aLongRunOfDroppedPictures() {
    std::vector<Idx1Entry> entries(100'000, {.length = 0});
    const std::vector<Idx1Entry> media = mediaEntries();
    entries.insert(entries.begin(), media[0]);
    entries.push_back(media[2]);
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

Bytes indexClaiming(std::uint32_t size) {
    Bytes file = honestClip();
    overwrite(file, positionOf(file, "idx1") + 4, u32(size));
    return file;
}
Bytes indexClaiming2GiB() { return indexClaiming(0x7FFFFFFF); }
Bytes indexClaiming4GiB() { return indexClaiming(0xFFFFFFFF); }
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

// --- OpenDML --------------------------------------------------------------------------------------------------------

// Changes the super index entries of both streams in a clip of five segments.
template <typename Change>
Bytes changedSuperIndexes(Change change) {
    Bytes file = openDmlClip(5);
    for (std::size_t stream = 0; stream < 2; ++stream) {
        change(file, superEntryAt(file, stream, 0));
    }
    return file;
}

Bytes bytesAt(const Bytes& file, std::size_t at, std::size_t count) {
    const auto begin = file.begin() + static_cast<std::ptrdiff_t>(at);
    return {begin, begin + static_cast<std::ptrdiff_t>(count)};
}

Bytes otherIndexNames() {
    Bytes file = openDmlClip(5);
    for (std::size_t i = 0; i < 5; ++i) {
        overwrite(file, positionOf(file, "ix00"), text("00ix"));
        overwrite(file, positionOf(file, "ix01"), text("01ix"));
    }
    return file;
}

Bytes superIndexInDisorder() {
    return changedSuperIndexes([](Bytes& file, std::size_t first) {
        const Bytes second = bytesAt(file, first + 16, 16);
        overwrite(file, first + 16, bytesAt(file, first + 48, 16));
        overwrite(file, first + 48, second);
    });
}

Bytes superIndexOfOnePlace() {
    return changedSuperIndexes([](Bytes& file, std::size_t first) {
        for (std::size_t i = 1; i < 5; ++i) {
            overwrite(file, first + 16 * i, bytesAt(file, first, 16));
        }
    });
}

Bytes superIndexPastTheEnd() {
    return changedSuperIndexes([](Bytes& file, std::size_t first) {
        overwrite(file, first + 64, u64(std::uint64_t{1} << 40));
    });
}

Bytes superIndexBelowZero() {
    return changedSuperIndexes([](Bytes& file, std::size_t first) { overwrite(file, first, u64(~std::uint64_t{15})); });
}

Bytes superIndexAtItself() {
    return changedSuperIndexes([](Bytes& file, std::size_t first) {
        overwrite(file, first + 32, u64(first - 32) + u32(32 + 5 * 16));
    });
}

Bytes superIndexWithoutSizes() {
    return changedSuperIndexes([](Bytes& file, std::size_t first) { overwrite(file, first + 24, u32(0)); });
}

Bytes superIndexClaimingMore() {
    return changedSuperIndexes([](Bytes& file, std::size_t first) { overwrite(file, first - 20, u32(6)); });
}

Bytes superIndexClaiming2GiB() {
    return changedSuperIndexes([](Bytes& file, std::size_t first) { overwrite(file, first - 28, u32(0x80000018)); });
}

// One standard index of the video differs.
Bytes changedStandardIndex(std::size_t at, const Bytes& with) {
    Bytes file = openDmlClip(5);
    overwrite(file, positionOf(file, "ix00", 2) + at, with);
    return file;
}
Bytes standardIndexOfOtherEntries() { return changedStandardIndex(8, u16(3)); }
Bytes standardIndexClaimingMore() { return changedStandardIndex(8 + 4, u32(1000)); }
Bytes standardIndexOfAnotherBase() { return changedStandardIndex(8 + 12, u64(std::uint64_t{1} << 62)); }
Bytes standardIndexOfNegativeBase() { return changedStandardIndex(8 + 12, u64(~std::uint64_t{0} << 20)); }
Bytes standardIndexOfLargeFrames() { return changedStandardIndex(8 + 24 + 4, u32(0x7FFFFFFF)); }
Bytes standardIndexIsZeros() { return changedStandardIndex(0, filled(8 + 24 + 16)); }

// The OpenDML index is damaged, and an intact "idx1" describes the first segment.
Bytes damagedOpenDmlBesideIdx1() {
    Bytes file = clipWith(headers({videoList(kPictures, {indx({.entries = {{1 << 20, 32 + 8 * kPictures}}})}),
                                   soundList()}));
    return file;
}

const DamagedFile kFiles[] = {
    {"idx1-from-the-file", "`idx1` counts from the start of the file, as one muxer writes it", absoluteOffsets,
     "10 pictures: 0-9 imBadCompression (8); 19200 samples of sound, other sound from 0 on",
     {"importAudio: read error: 7680, read: 7658",
      "Decompress failed: Quorvane error (-2147466494): the frame is not one of this codec"}},
    {"idx1-of-data", "`idx1` leads to the data instead of to the chunk headers", offsetsOfData,
     "10 pictures: 0-9 imBadCompression (8); 19200 samples of sound, other sound from 0 on",
     {"Decompress failed: Quorvane error (-2147466494): the frame is not one of this codec"}},
    {"idx1-past-the-end", "`idx1` leads past the end of the file from picture 4 on", entriesPastTheEnd,
     "10 pictures: 0-3 right, 4-9 imFileReadFailed (33); 19200 samples of sound, silent from 7680 on",
     {"importAudio: read error: 7680, read: 0",
      "Failed to read frame from AVI: Read error: size: 64, read: 0"}},
    {"idx1-backwards", "`idx1` from the last chunk to the first", backwards,
     "10 pictures: 0 shows 9, 1 shows 8, 2 shows 7, 3 shows 6, 4 shows 5, 5 shows 4, 6 shows 3, "
     "7 shows 2, 8 shows 1, 9 shows 0; "
     "19200 samples of sound, other sound from 0 on"},
    {"idx1-of-one-place", "all entries of `idx1` lead to the first chunks", allTheSamePlace,
     "10 pictures: 0 right, 1-9 shows 0; 19200 samples of sound, other sound from 1920 on"},
    {"idx1-overlapping", "pictures reach 4000 bytes into the sound behind them", overlapping,
     "10 pictures: 0-9 imBadCompression (8); 19200 samples of sound, all right",
     {"Decompress failed: Quorvane error (-2147466491): the frame's plane sizes contradict each other"}},
    {"idx1-at-itself", "picture 5 is the index itself", atTheIndexItself,
     "10 pictures: 0-4 right, 5 imBadCompression (8), 6-9 right; 19200 samples of sound, all right",
     {"Decompress failed: Quorvane error (-2147466494): the frame is not one of this codec"}},
    {"picture-of-2-gib", "picture 5 claims 2 GiB less one byte", pictureOf2GiB,
     "10 pictures: 0-4 right, 5 imFileReadFailed (33), 6-9 right; 19200 samples of sound, all right",
     {"Failed to read frame from AVI: Read error: size: 2147483647, read: 39120"}},
    {"picture-of-2-gib-and-1", "picture 5 claims 2 GiB", pictureOf2GiBAnd1,
     "10 pictures: 0-4 right, 5 imFileReadFailed (33), 6-9 right; 19200 samples of sound, all right",
     {"Failed to read frame from AVI: Read error: size: 2147483648, read: 39120"}},
    {"picture-of-4-gib", "picture 5 claims 4 GiB less one byte", pictureOf4GiB,
     "10 pictures: 0-4 right, 5 imFileReadFailed (33), 6-9 right; 19200 samples of sound, all right",
     {"Failed to read frame from AVI: Read error: size: 4294967295, read: 39120"}},
    {"picture-cut-short", "picture 5 has its first 20 bytes", pictureCutShort,
     "10 pictures: 0-4 right, 5 imBadCompression (8), 6-9 right; 19200 samples of sound, all right",
     {"Decompress failed: Quorvane error (-2147466495): the frame is truncated"}},
    {"picture-at-the-highest-offset", "picture 5 lies at the highest offset there is", pictureAtTheHighestOffset,
     "10 pictures: 0-4 right, 5 imFileReadFailed (33), 6-9 right; 19200 samples of sound, all right",
     {"Failed to read frame from AVI: Read error: size: 100, read: 0"}},
    {"sound-of-4-gib", "a sound chunk claims 4 GiB less one byte", soundOf4GiB,
     "10 pictures, all right; 19200 samples of sound, other sound from 11520 on"},
    {"dropped-pictures", "pictures 3 to 6 were dropped while recording", droppedPictures,
     "10 pictures: 0-2 right, 3-6 shows 2, 7-9 right; 19200 samples of sound, all right",
     {"Empty frame: 3, frame read: 2",
      "Empty frame: 4, frame read: 2",
      "Empty frame: 5, frame read: 2",
      "Empty frame: 6, frame read: 2"}},
    {"all-pictures-dropped", "every picture was dropped", allPicturesDropped,
     "10 pictures: 0-9 imFrameNotFound (28); 19200 samples of sound, all right"},
    {"long-run-of-dropped-pictures", "100,000 dropped pictures between two", aLongRunOfDroppedPictures,
     "100002 pictures: 0 right, 1 shows 0, 50001 shows 0, 100000 shows 0, 100001 shows 1; "
     "19200 samples of sound, silent",
     {"Empty frame: 1, frame read: 0",
      "Empty frame: 50001, frame read: 0",
      "Empty frame: 100000, frame read: 0"}},
    {"empty-sound-chunks", "500 empty sound chunks before each full one", emptySoundChunks,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"idx1-ragged", "`idx1` ends within its 13th entry", raggedIndex,
     "7 pictures: 0-5 right, 6 shows 5; 19200 samples of sound, silent from 11520 on",
     {"Empty frame: 6, frame read: 5"}},
    {"idx1-claiming-2-gib", "`idx1` claims 2 GiB less one byte", indexClaiming2GiB,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"idx1-claiming-4-gib", "`idx1` claims 4 GiB less one byte", indexClaiming4GiB,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"idx1-empty", "`idx1` has no entries", emptyIndex,
     "no pictures; 19200 samples of sound, silent"},
    {"idx1-of-other-streams", "`idx1` names streams that the file does not have", indexOfOtherStreams,
     "no pictures; 19200 samples of sound, silent"},
    {"idx1-with-exchanged-streams", "`idx1` has pictures and sound exchanged", indexWithExchangedStreams,
     "10 pictures: 0-9 imBadCompression (8); 19200 samples of sound, other sound from 0 on",
     {"Decompress failed: Quorvane error (-2147466494): the frame is not one of this codec"}},
    {"opendml-other-names", "the OpenDML index chunks are named `##ix` instead of `ix##`", otherIndexNames,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"opendml-in-disorder", "second and fourth segment are exchanged in the index", superIndexInDisorder,
     "10 pictures: 0-1 right, 2 shows 6, 3 shows 7, 4-5 right, 6 shows 2, 7 shows 3, 8-9 right; "
     "19200 samples of sound, other sound from 3840 on"},
    {"opendml-of-one-place", "the index has the first segment five times", superIndexOfOnePlace,
     "10 pictures: 0-1 right, 2 shows 0, 3 shows 1, 4 shows 0, 5 shows 1, 6 shows 0, 7 shows 1, "
     "8 shows 0, 9 shows 1; "
     "19200 samples of sound, other sound from 3840 on"},
    {"opendml-past-the-end", "the last segment's index lies past the end", superIndexPastTheEnd,
     "no pictures; 19200 samples of sound, silent"},
    {"opendml-below-zero", "the first segment's index lies just below 16 EiB", superIndexBelowZero,
     "no pictures; 19200 samples of sound, silent"},
    {"opendml-at-itself", "the third segment's index is the index of indexes", superIndexAtItself,
     "no pictures; 19200 samples of sound, silent"},
    {"opendml-without-a-size", "the second segment's index has size 0", superIndexWithoutSizes,
     "8 pictures: 0-1 right, 2 shows 4, 3 shows 5, 4 shows 6, 5 shows 7, 6 shows 8, 7 shows 9; "
     "19200 samples of sound, other sound from 3840 on"},
    {"opendml-claiming-more", "the index of indexes claims one entry more than it has", superIndexClaimingMore,
     "no pictures; 19200 samples of sound, silent"},
    {"opendml-claiming-2-gib", "the index of indexes claims 2 GiB", superIndexClaiming2GiB,
     "no pictures; 19200 samples of sound, silent"},
    {"opendml-other-entries", "an index has entries of an unknown size", standardIndexOfOtherEntries,
     "no pictures; 19200 samples of sound, all right"},
    {"opendml-more-entries", "an index claims 1000 entries instead of two", standardIndexClaimingMore,
     "no pictures; 19200 samples of sound, all right"},
    {"opendml-far-base", "an index counts from a place that no file has", standardIndexOfAnotherBase,
     "10 pictures: 0-3 right, 4-5 imFileReadFailed (33), 6-9 right; 19200 samples of sound, all right",
     {"Failed to read frame from AVI: Seek error: pos: 4611686018427387924",
      "Failed to read frame from AVI: Seek error: pos: 4611686018427395684"}},
    {"opendml-negative-base", "an index counts from a place before the file", standardIndexOfNegativeBase,
     "10 pictures: 0-3 right, 4-5 imFileReadFailed (33), 6-9 right; 19200 samples of sound, all right",
     {"Failed to read frame from AVI: Seek error: pos: -1048556",
      "Failed to read frame from AVI: Seek error: pos: -1040796"}},
    {"opendml-large-pictures", "a picture in an OpenDML index claims 2 GiB less one byte", standardIndexOfLargeFrames,
     "10 pictures: 0-3 right, 4 imFileReadFailed (33), 5-9 right; 19200 samples of sound, all right",
     {"Failed to read frame from AVI: Read error: size: 2147483647, read: 46888"}},
    {"opendml-zeros", "an index was overwritten with zeros", standardIndexIsZeros,
     "no pictures; 19200 samples of sound, all right"},
    {"opendml-damaged-beside-idx1", "the OpenDML index is unreadable, `idx1` is not", damagedOpenDmlBesideIdx1,
     "10 pictures, all right; 19200 samples of sound, all right"},
};

}  // namespace

std::span<const DamagedFile> brokenIndexes() { return kFiles; }

}  // namespace damage
