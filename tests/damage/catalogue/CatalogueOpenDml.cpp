// OpenDML indexes: super indexes that point at the wrong indexes, and indexes with wrong positions.
#include "damage/catalogue/Catalogue.h"

namespace damage {

namespace {

using namespace aviwriter;

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

std::uint32_t u32At(const Bytes& file, std::size_t at) {
    return file[at] | std::uint32_t{file[at + 1]} << 8 | std::uint32_t{file[at + 2]} << 16 |
           std::uint32_t{file[at + 3]} << 24;
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

// Overwrites part of the video's third standard index.
Bytes changedStandardIndex(std::size_t at, const Bytes& with) {
    Bytes file = openDmlClip(5);
    overwrite(file, positionOf(file, "ix00", 2) + at, with);
    return file;
}
Bytes standardIndexOfOtherEntries() { return changedStandardIndex(8, u16(3)); }
Bytes standardIndexClaimingMore() { return changedStandardIndex(8 + 4, u32(1000)); }
Bytes standardIndexOfAnotherBase() { return changedStandardIndex(8 + 12, u64(std::uint64_t{1} << 62)); }
Bytes standardIndexOfNegativeBase() { return changedStandardIndex(8 + 12, u64(~std::uint64_t{0} << 20)); }
Bytes standardIndexIsZeros() { return changedStandardIndex(0, filled(8 + 24 + 16)); }

// Each of the video's standard indexes has headers of 8 and 24 bytes, then two entries of 8.
constexpr std::size_t kEntries = 8 + 24;
std::size_t videoIndexAt(const Bytes& file, std::size_t number) { return positionOf(file, "ix00", number); }

Bytes entriesBackwards() {
    Bytes file = openDmlClip(5);
    for (const char* name : {"ix00", "ix01"}) {
        for (std::size_t i = 0; i < 5; ++i) {
            const std::size_t first = positionOf(file, name, i) + kEntries;
            const Bytes second = bytesAt(file, first + 8, 8);
            overwrite(file, first + 8, bytesAt(file, first, 8));
            overwrite(file, first, second);
        }
    }
    return file;
}

// Picture 4 lies at `at` in its own index, the video's third.
Bytes pictureInItsIndex(std::size_t at, std::uint32_t size) {
    Bytes file = openDmlClip(5);
    const std::size_t index = videoIndexAt(file, 2);
    const std::size_t base = u32At(file, index + 8 + 12);
    overwrite(file, index + kEntries, u32(static_cast<std::uint32_t>(index + at - base)) + u32(size));
    return file;
}
Bytes entryAtItsIndex() { return pictureInItsIndex(0, 8 + 24 + 16); }
Bytes entryAtItself() { return pictureInItsIndex(kEntries, 16); }

Bytes entriesIntoTheSound() {
    Bytes file = openDmlClip(5);
    const std::size_t first = videoIndexAt(file, 2) + kEntries;
    overwrite(file, first + 4, u32(64 + 4000));
    overwrite(file, first + 8 + 4, u32(64 + 4000));
    return file;
}

// Picture 5 begins 30 bytes into picture 4.
Bytes entriesIntoEachOther() {
    Bytes file = openDmlClip(5);
    const std::size_t first = videoIndexAt(file, 2) + kEntries;
    overwrite(file, first + 8, u32(u32At(file, first) + 30));
    return file;
}

Bytes indexesIntoEachOther() {
    Bytes file = openDmlClip(5);
    overwrite(file, superEntryAt(file, 0, 1), u64(videoIndexAt(file, 1) + 4));
    return file;
}

Bytes superIndexesExchanged() {
    Bytes file = openDmlClip(5);
    const Bytes video = bytesAt(file, superEntryAt(file, 0, 0), 16 * 5);
    overwrite(file, superEntryAt(file, 0, 0), bytesAt(file, superEntryAt(file, 1, 0), 16 * 5));
    overwrite(file, superEntryAt(file, 1, 0), video);
    return file;
}

Bytes superIndexOfManyWithoutASize() {
    constexpr std::uint32_t kEmpty = 1000;
    Bytes file = openDmlClip(5, kEmpty);
    for (std::size_t stream = 0; stream < 2; ++stream) {
        const std::size_t first = superEntryAt(file, stream, 0);
        overwrite(file, first + 16 * kEmpty, bytesAt(file, first, 16 * 5));
        overwrite(file, first, filled(16 * kEmpty));
        overwrite(file, first - 20, u32(kEmpty + 5));
    }
    return file;
}

// --- In files with holes --------------------------------------------------------------------------------------------

constexpr std::uint64_t kMebibyte = std::uint64_t{1} << 20;

Bytes thirdIndexInAHole() {
    Bytes file = openDmlClip(5);
    overwrite(file, superEntryAt(file, 0, 2), u64(file.size() + 2 * kMebibyte));
    return file;
}

// The video's last index is at the end, and states a million more pictures than it has entries.
constexpr std::uint32_t kInHole = 1'000'000;
Bytes thirdIndexRunsIntoAHole() {
    Bytes file = openDmlClip(5);
    Bytes index = bytesAt(file, videoIndexAt(file, 4), kEntries + 16);
    overwrite(index, 4, u32(24 + 8 * (2 + kInHole)));
    overwrite(index, 8 + 4, u32(2 + kInHole));
    overwrite(file, superEntryAt(file, 0, 4), u64(file.size()) + u32(kEntries + 8 * (2 + kInHole)));
    return file + index;
}

// The OpenDML index is damaged, and an intact "idx1" describes the first segment.
Bytes damagedOpenDmlBesideIdx1() {
    Bytes file = clipWith(headers({videoList(kPictures, {indx({.entries = {{1 << 20, 32 + 8 * kPictures}}})}),
                                   soundList()}));
    return file;
}

const DamagedFile kBrokenOpenDml[] = {
    {"opendml-other-names", "the OpenDML index chunks are named `##ix` instead of `ix##`", otherIndexNames,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"opendml-in-disorder", "second and fourth segment are exchanged in the index", superIndexInDisorder,
     "10 pictures: 0-1 right, 2 shows 6, 3 shows 7, 4-5 right, 6 shows 2, 7 shows 3, 8-9 right; "
     "19200 samples of sound, other sound from 3840 on"},
    {"opendml-of-one-place", "the index lists the first segment five times", superIndexOfOnePlace,
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
    {"opendml-many-without-a-size", "a thousand indexes of size 0 before those of the segments",
     superIndexOfManyWithoutASize,
     "10 pictures, all right; 19200 samples of sound, all right"},
    {"opendml-into-each-other", "the video's second index begins four bytes into itself", indexesIntoEachOther,
     "no pictures; 19200 samples of sound, all right"},
    {"opendml-exchanged", "the video has the sound's indexes, and the sound the video's", superIndexesExchanged,
     "10 pictures: 0-9 imBadCompression (8); 19200 samples of sound, other sound from 0 on",
     {"Decompress failed: Quorvane error (-2147466494): the frame is not one of this codec"}},
    {"opendml-claiming-more", "the index of indexes claims one entry more than it has", superIndexClaimingMore,
     "no pictures; 19200 samples of sound, silent"},
    {"opendml-other-entries", "an index has entries of an unknown size", standardIndexOfOtherEntries,
     "no pictures; 19200 samples of sound, all right"},
    {"opendml-more-entries", "an index claims 1000 entries instead of two", standardIndexClaimingMore,
     "no pictures; 19200 samples of sound, all right"},
    {"opendml-far-base", "an index has an impossible base offset", standardIndexOfAnotherBase,
     "10 pictures: 0-3 right, 4-5 imFileReadFailed (33), 6-9 right; 19200 samples of sound, all right",
     {"Failed to read frame from AVI: Seek error: pos: 4611686018427387924",
      "Failed to read frame from AVI: Seek error: pos: 4611686018427395684"}},
    {"opendml-negative-base", "an index has a negative base offset", standardIndexOfNegativeBase,
     "10 pictures: 0-3 right, 4-5 imFileReadFailed (33), 6-9 right; 19200 samples of sound, all right",
     {"Failed to read frame from AVI: Seek error: pos: -1048556",
      "Failed to read frame from AVI: Seek error: pos: -1040796"}},
    {"opendml-entries-backwards", "each index has its entries from the last to the first", entriesBackwards,
     "10 pictures: 0 shows 1, 1 shows 0, 2 shows 3, 3 shows 2, 4 shows 5, 5 shows 4, 6 shows 7, 7 shows 6, "
     "8 shows 9, 9 shows 8; "
     "19200 samples of sound, other sound from 0 on"},
    {"opendml-entries-into-the-sound", "pictures 4 and 5 reach 4000 bytes into the sound after them",
     entriesIntoTheSound,
     "10 pictures: 0-3 right, 4-5 imBadCompression (8), 6-9 right; 19200 samples of sound, all right",
     {"Decompress failed: Quorvane error (-2147466491): the frame's plane sizes contradict each other"}},
    {"opendml-entries-into-each-other", "picture 5 begins in the middle of picture 4", entriesIntoEachOther,
     "10 pictures: 0-4 right, 5 imBadCompression (8), 6-9 right; 19200 samples of sound, all right",
     {"Decompress failed: Quorvane error (-2147466494): the frame is not one of this codec"}},
    {"opendml-entry-at-its-index", "picture 4 is the index that lists it", entryAtItsIndex,
     "10 pictures: 0-3 right, 4 imBadCompression (8), 5-9 right; 19200 samples of sound, all right",
     {"Decompress failed: Quorvane error (-2147466494): the frame is not one of this codec"}},
    {"opendml-entry-at-itself", "picture 4 is the entry that lists it and the next one", entryAtItself,
     "10 pictures: 0-3 right, 4 imBadCompression (8), 5-9 right; 19200 samples of sound, all right",
     {"Decompress failed: Quorvane error (-2147466495): the frame is truncated"}},
    {"opendml-in-a-hole", "the video's third index lies in a hole of the file, which reads as zeros", thirdIndexInAHole,
     "no pictures; 19200 samples of sound, all right", {}, 8 * kMebibyte},
    {"opendml-runs-into-a-hole", "the video's last index continues for a million entries in a hole of the file",
     thirdIndexRunsIntoAHole,
     "1000010 pictures: 0-1 right, 500005 shows 9, 1000008-1000009 shows 9; 19200 samples of sound, all right",
     {"Empty frame: 500005, frame read: 9",
      "Empty frame: 1000008, frame read: 9",
      "Empty frame: 1000009, frame read: 9"},
     8 * kInHole},
    {"opendml-zeros", "an index was overwritten with zeros", standardIndexIsZeros,
     "no pictures; 19200 samples of sound, all right"},
    {"opendml-damaged-beside-idx1", "the OpenDML index is unreadable, but `idx1` is not", damagedOpenDmlBesideIdx1,
     "10 pictures, all right; 19200 samples of sound, all right"},
};

}  // namespace

std::span<const DamagedFile> brokenOpenDml() { return kBrokenOpenDml; }

}  // namespace damage
