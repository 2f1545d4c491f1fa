#include "damage/hostile/HostileShapes.h"

#include "damage/parser/Pieces.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace damage {

namespace {

using namespace aviwriter;

void put32(Bytes& file, std::size_t at, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i) {
        file[at + i] = static_cast<std::uint8_t>(value >> 8 * i);
    }
}

// Repeats a piece from `begin` on, as often as it fits before `end`.
void fillWith(Bytes& file, std::size_t begin, std::size_t end, const Bytes& piece) {
    for (std::size_t at = begin; at + piece.size() <= end; at += piece.size()) {
        std::copy(piece.begin(), piece.end(), file.begin() + static_cast<std::ptrdiff_t>(at));
    }
}

// A file of `bytes` bytes that repeats `piece` after its head.
Bytes filledUp(Bytes head, std::size_t bytes, const Bytes& piece) {
    const std::size_t begin = head.size();
    head.resize(begin + (bytes - begin) / piece.size() * piece.size());
    fillWith(head, begin, head.size(), piece);
    return head;
}

// Extends a chunk, which has a header and some data in the file, until the file has `bytes` bytes, and fills the new
// part with `piece`. The enclosing chunks grow with it.
void growChunk(Bytes& file, std::size_t chunkAt, std::size_t bytes, const Bytes& piece,
               const std::vector<std::size_t>& around) {
    const std::size_t more = (bytes - file.size()) / piece.size() * piece.size();
    const std::size_t end = chunkAt + 8 + u32At(file, chunkAt + 4);
    file.insert(file.begin() + static_cast<std::ptrdiff_t>(end), more, 0);
    fillWith(file, end, end + more, piece);
    for (const std::size_t grown : around) {
        put32(file, grown + 4, u32At(file, grown + 4) + u32Of(more));
    }
    put32(file, chunkAt + 4, u32At(file, chunkAt + 4) + u32Of(more));
}

Bytes headOf(const std::vector<Bytes>& moreOfStream = {}) {
    return riff("AVI ", {headers({videoList(1, moreOfStream)}), list("movi", {chunk("00dc", pictureFrame(0))})});
}

// The pieces are in a "JUNK" chunk after the file's first RIFF, which the walk skips in one step.
Bytes withJunk(const Bytes& head, std::size_t bytes) {
    Bytes file = head + text("JUNK") + u32(u32Of(bytes - head.size() - 8));
    file.resize(bytes);
    return file;
}

Bytes zeros(std::size_t bytes) {
    Bytes file = headOf();
    file.resize(bytes);
    return file;
}

Bytes listsInsideEachOther(std::size_t bytes) {
    const std::size_t begin = headOf().size();
    Bytes file = filledUp(headOf(), bytes, text("LIST") + u32(0) + text("deep"));
    for (std::size_t at = begin; at + 12 <= file.size(); at += 12) {
        put32(file, at + 4, u32Of(file.size() - at - 8));
    }
    return file;
}

Bytes listsPastTheEnd(std::size_t bytes) {
    return filledUp(headOf(), bytes, text("LIST") + u32(0xFFFFFFF0) + text("past"));
}

// Each outer list ends after the header of its inner one, which includes the rest of the file: at each level the rest
// is walked once inside and once after it.
const Bytes& repeatingLists() {
    static const Bytes lists = listClaiming("LIST", "outr", 4 + 12, {listClaiming("LIST", "innr", 0, {})});
    return lists;
}

void claimTheRest(Bytes& file, std::size_t listsAt) { put32(file, listsAt + 16, u32Of(file.size() - listsAt - 20)); }

Bytes listsThatRepeatThemselves(std::size_t bytes) {
    const std::size_t begin = headOf().size();
    Bytes file = filledUp(headOf(), bytes, repeatingLists());
    for (std::size_t at = begin; at + 24 <= file.size(); at += 24) {
        claimTheRest(file, at);
    }
    return file;
}

// The same only at the start, followed by chunks so far apart that no two share a read.
Bytes listsOverChunksFarApart(std::size_t bytes) {
    constexpr std::size_t kApart = 128 * 1024;
    constexpr std::size_t kLists = 12;   // the chunks are walked 4096 times
    Bytes file = headOf();
    const std::size_t begin = file.size();
    file.resize(bytes);
    std::size_t at = begin + kLists * repeatingLists().size();
    fillWith(file, begin, at, repeatingLists());
    for (std::size_t lists = begin; lists < at; lists += repeatingLists().size()) {
        claimTheRest(file, lists);
    }
    for (; at < bytes; at += kApart) {
        const std::size_t size = bytes - at < 2 * kApart ? bytes - at : kApart;
        overwrite(file, at, text("JUNK") + u32(u32Of(size - 8)));
        at += size - kApart;
    }
    return file;
}

// A super index that fills the file with equal entries.
Bytes superIndexOf(const SuperIndexEntry& entry, std::size_t bytes) {
    Bytes file = headOf({indx({.entriesInUse = 0xFFFFFFFF})});
    const std::size_t index = positionOf(file, "indx");
    growChunk(file, index, bytes, u64(entry.offset) + u32(entry.size) + u32(0), {0, 12, positionOf(file, "strl") - 8});
    put32(file, index + 8 + 4, (u32At(file, index + 4) - 24) / 16);
    return file;
}

Bytes superIndexOfEmptyIndexes(std::size_t bytes) { return superIndexOf({0, 8}, bytes); }
Bytes superIndexOfOneByteIndexes(std::size_t bytes) { return superIndexOf({0, 9}, bytes); }
Bytes superIndexOfSkippedEntries(std::size_t bytes) { return superIndexOf({0, 0}, bytes); }
Bytes superIndexPastTheEnd(std::size_t bytes) { return superIndexOf({std::uint64_t{1} << 40, 1000}, bytes); }
Bytes superIndexOfItself(std::size_t bytes) { return superIndexOf({0, u32Of(bytes)}, bytes); }

// Every entry points at an index of one byte, each in another part of the file.
Bytes superIndexOfScatteredBytes(std::size_t bytes) {
    Bytes file = superIndexOf({0, 9}, bytes);
    const std::size_t first = positionOf(file, "indx") + 8 + 24;
    std::uint64_t place = 0;
    for (std::size_t at = first; at + 16 <= file.size() - 1024; at += 16) {
        place = (place + 7'000'003) % (bytes - 16);
        put32(file, at, u32Of(place));
    }
    return file;
}

// One standard index that fills the file, and a super index that points at it `times` times.
Bytes standardIndex(std::size_t bytes, std::size_t times) {
    Bytes file = headOf({indx({.entries = std::vector<SuperIndexEntry>(times)})});
    const std::size_t at = file.size();
    file = filledUp(file + ix("ix00", {}), bytes, u32(4) + u32(1));
    const std::uint32_t size = u32Of(file.size() - at);
    put32(file, at + 4, size - 8);
    put32(file, at + 8 + 4, (size - 32) / 8);
    for (std::size_t i = 0; i < times; ++i) {
        overwrite(file, positionOf(file, "indx") + 8 + 24 + 16 * i, u64(at) + u32(size));
    }
    return file;
}

Bytes standardIndexOfAllBytes(std::size_t bytes) { return standardIndex(bytes, 1); }
Bytes oneIndexForAllEntries(std::size_t bytes) { return standardIndex(bytes, 1000); }

// An "idx1" that fills the file with equal entries.
Bytes idx1Of(const Idx1Entry& entry, std::size_t bytes) {
    Bytes file = riff("AVI ", {headers({videoList(1)}), list("movi", {chunk("00dc", pictureFrame(0))}), idx1({})});
    growChunk(file, positionOf(file, "idx1"), bytes, bytesOf(entry), {0});
    return file;
}

Bytes idx1OfOnePlace(std::size_t bytes) { return idx1Of({.offset = 4, .length = 0x7FFFFFFF}, bytes); }
Bytes idx1OfDroppedFrames(std::size_t bytes) { return idx1Of({.offset = 4, .length = 0}, bytes); }
Bytes idx1OfNoStream(std::size_t bytes) { return idx1Of({.chunkId = "99zz"}, bytes); }

// As many streams as fit, each with its own index that includes the whole file.
Bytes streamsThatShareAnIndex(std::size_t bytes) {
    const Bytes stream = list("strl", {strh({.type = "auds", .rate = 48000, .sampleSize = 4}), strf(waveFormatEx({})),
                                       indx({.entries = {{0, u32Of(bytes)}}})});
    const Bytes first = videoList(1);
    const std::size_t streams = std::min<std::size_t>(12'000, bytes / 2 / stream.size());
    const Bytes strls = filledUp({}, streams * stream.size(), stream);
    const Bytes main = avih({.streams = u32Of(streams + 1)});
    Bytes file = text("RIFF") + u32(u32Of(bytes - 8)) + text("AVI ") + text("LIST") +
                 u32(u32Of(4 + main.size() + first.size() + strls.size())) + text("hdrl") + main + first + strls;
    return withJunk(file, bytes);
}

// Formats that all reach to the end of the file.
Bytes formatsOverEachOther(std::size_t bytes) {
    Bytes file = text("RIFF") + u32(u32Of(bytes - 8)) + text("AVI ") + text("LIST") + u32(u32Of(bytes - 20)) +
                 text("hdrl") + avih({}) + videoList(1);
    const Bytes header = strh({.type = "auds"});
    for (int i = 0; i < 9'000; ++i) {
        const Bytes stream = text("LIST") + u32(u32Of(4 + header.size() + 8)) + text("strl") + header +
                             text("strf") + u32(900'000);
        file.insert(file.end(), stream.begin(), stream.end());
    }
    return withJunk(file, bytes);
}

constexpr HostileShape kShapes[] = {
    {"zeros", "zeros after the headers", zeros},
    {"lists-inside-each-other", "millions of nested lists", listsInsideEachOther},
    {"lists-past-the-end", "lists that all claim 4 GiB", listsPastTheEnd},
    {"lists-that-repeat-themselves", "lists that each include what follows twice", listsThatRepeatThemselves},
    {"lists-over-chunks-far-apart", "the same over chunks 128 KiB apart", listsOverChunksFarApart},
    {"super-index-of-skipped-entries", "a super index of entries without a size", superIndexOfSkippedEntries},
    {"super-index-of-empty-indexes", "a super index of empty indexes", superIndexOfEmptyIndexes},
    {"super-index-of-one-byte-indexes", "a super index of one-byte indexes in the file's head",
     superIndexOfOneByteIndexes},
    {"super-index-past-the-end", "a super index that leads past the end", superIndexPastTheEnd},
    {"super-index-of-itself", "a super index whose entries are the whole file", superIndexOfItself},
    {"super-index-of-scattered-bytes", "a super index of one-byte indexes all over the file",
     superIndexOfScatteredBytes},
    {"standard-index-of-all-bytes", "one standard index, as long as the file", standardIndexOfAllBytes},
    {"one-index-for-all-entries", "the same, claimed 1000 times", oneIndexForAllEntries},
    {"idx1-of-one-place", "an \"idx1\" as long as the file, every entry of 2 GiB", idx1OfOnePlace},
    {"idx1-of-dropped-frames", "the same with entries without bytes", idx1OfDroppedFrames},
    {"idx1-of-no-stream", "the same with entries of no stream", idx1OfNoStream},
    {"streams-that-share-an-index", "12,000 streams whose indexes are the whole file", streamsThatShareAnIndex},
    {"formats-over-each-other", "9000 formats of 900 KB over each other", formatsOverEachOther},
};

}  // namespace

std::span<const HostileShape> hostileShapes() { return kShapes; }

const HostileShape& hostileShape(const char* name) {
    for (const HostileShape& shape : kShapes) {
        if (std::string_view(shape.name) == name) {
            return shape;
        }
    }
    throw std::out_of_range(name);
}

}  // namespace damage
