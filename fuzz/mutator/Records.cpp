#include "mutator/Records.h"

#include "avi/AviRecords.h"
#include "text/FourCC.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>

namespace fuzz {

namespace {

struct Field {
    std::size_t offset;
    std::size_t width;   // bytes
};

// A record's fields: those of its head, and those of each entry after it.
struct Layout {
    std::span<const Field> head;
    std::size_t entriesAt = 0;
    std::size_t entrySize = 0;
    std::span<const Field> entry = {};
};

constexpr Field kMainHeader[] = {{0, 4}, {12, 4}, {16, 4}, {24, 4}, {28, 4}, {32, 4}, {36, 4}};
constexpr Field kStreamHeader[] = {{0, 4}, {4, 4}, {16, 4}, {20, 4}, {24, 4}, {28, 4}, {32, 4}, {36, 4}, {44, 4}};
constexpr Field kFormat[] = {{0, 2}, {2, 2}, {4, 4}, {8, 4}, {12, 2}, {14, 2}, {16, 2}, {18, 2}, {20, 4}, {24, 4},
                             {40, 4}, {44, 4}, {48, 4}, {52, 4}, {56, 4}, {60, 4}, {64, 4}};
constexpr Field kExtendedHeader[] = {{0, 4}};
constexpr Field kSuperIndex[] = {{0, 2}, {2, 1}, {3, 1}, {4, 4}, {8, 4}};
constexpr Field kSuperEntry[] = {{0, 8}, {0, 4}, {8, 4}, {12, 4}};
constexpr Field kStdIndex[] = {{0, 2}, {2, 1}, {3, 1}, {4, 4}, {8, 4}, {12, 8}, {12, 4}};
constexpr Field kStdEntry[] = {{0, 4}, {4, 4}};
constexpr Field kLegacyEntry[] = {{0, 4}, {0, 1}, {1, 1}, {4, 4}, {8, 4}, {12, 4}};
constexpr Field kFrameHeader[] = {{0, 4}, {4, 4}, {8, 2}, {10, 2}, {12, 2}, {14, 2}, {16, 4}, {20, 4}, {24, 4}};

bool isStdIndex(const Chunk& chunk) {
    return (chunk.id & 0xFFFF) == (fourCC("ix00") & 0xFFFF);
}

Layout layoutOf(const Chunk& chunk) {
    if (isStdIndex(chunk)) {
        return {kStdIndex, sizeof(avi::StdIndexHeader), sizeof(avi::StdIndexEntry), kStdEntry};
    }
    switch (chunk.id) {
    case fourCC("avih"): return {kMainHeader};
    case fourCC("strh"): return {kStreamHeader};
    case fourCC("strf"): return {kFormat};
    case fourCC("dmlh"): return {kExtendedHeader};
    case fourCC("indx"):
        return {kSuperIndex, sizeof(avi::SuperIndexHeader), sizeof(avi::SuperIndexEntry), kSuperEntry};
    case fourCC("idx1"): return {{}, 0, sizeof(avi::LegacyIndexEntry), kLegacyEntry};
    default: return {kFrameHeader};
    }
}

std::uint64_t numberAt(const Bytes& data, Field field) {
    std::uint64_t value = 0;
    std::memcpy(&value, data.data() + field.offset, field.width);
    return value;
}

void setNumber(Bytes& data, Field field, std::uint64_t value) {
    std::memcpy(data.data() + field.offset, &value, field.width);
}

// Values around limits and overflows, sizes of the records, and the codes that type fields hold.
constexpr std::uint64_t kEdges[] = {
    0, 1, 2, 3, 4, 7, 8, 9, 12, 15, 16, 17, 18, 20, 22, 23, 24, 25, 28, 30, 31, 32, 33, 39, 40, 41, 55, 56, 57, 64, 99,
    100, 127, 128, 248, 255, 256, 257, 512, 1000, 1001, 2559, 2560, 4096, 30000, 0x7FFF, 0x8000, 0xFFFE, 0xFFFF,
    0x10000, 0xFFFFF, 1000000, 0x1000000, 0x3FFFFFF, 0x4000000, 0x4000001, 0x7FFFFFFE, 0x7FFFFFFF, 0x80000000,
    0x80000001, 0x80000017, 0x80000018, 0xFFFFFFF0, 0xFFFFFFF8, 0xFFFFFFFE, 0xFFFFFFFF, 0x100000000,
    0x7FFFFFFFFFFFFFFF, 0x8000000000000000, 0xFFFFFFFFFFFFFFF8, 0xFFFFFFFFFFFFFFFF,
    fourCC("vids"), fourCC("auds"), fourCC("txts"), fourCC("QVAN"), fourCC("00dc"), fourCC("01wb"), fourCC("02wb"),
};

// The position of something in the file: a chunk, its data, or the end.
std::uint64_t placeInFile(RiffTree& tree, Random& random) {
    const std::size_t fileSize = writeTree(tree).size();
    const std::vector<Place> places = placesOf(tree);
    switch (random.below(5)) {
    case 0: return fileSize;
    case 1: return fileSize - std::min(fileSize, random.below(40));
    case 2: return random.below(fileSize + 64);
    default: return places[random.below(places.size())].chunk().position + (random.once(2) ? 0 : 8);
    }
}

std::uint64_t numberFor(RiffTree& tree, std::uint64_t present, Random& random) {
    switch (random.below(8)) {
    case 0: return present + 1 + random.below(4);
    case 1: return present - 1 - random.below(4);
    case 2: return present << 1;
    case 3: return random.next();
    case 4:
    case 5: return placeInFile(tree, random);
    default: return random.anyOf(kEdges);
    }
}

bool editOneOf(RiffTree& tree, Chunk& chunk, std::span<const Field> fields, std::size_t base, Random& random) {
    if (fields.empty()) {
        return false;
    }
    Field field = fields[random.below(fields.size())];
    field.offset += base;
    if (field.offset + field.width > chunk.data.size()) {
        return false;
    }
    setNumber(chunk.data, field, numberFor(tree, numberAt(chunk.data, field), random));
    return true;
}

std::size_t entryCount(const Chunk& chunk, const Layout& layout) {
    return chunk.data.size() < layout.entriesAt ? 0 : (chunk.data.size() - layout.entriesAt) / layout.entrySize;
}

std::uint8_t* entryAt(Chunk& chunk, const Layout& layout, std::size_t index) {
    return chunk.data.data() + layout.entriesAt + index * layout.entrySize;
}

void changeOrder(Chunk& chunk, const Layout& layout, std::size_t count, Random& random) {
    std::uint8_t* one = entryAt(chunk, layout, random.below(count));
    std::uint8_t* other = entryAt(chunk, layout, random.below(count));
    if (one != other && random.once(2)) {
        std::swap_ranges(one, one + layout.entrySize, other);
    } else {
        std::memmove(one, other, layout.entrySize);   // the same place twice
    }
}

// Adds or removes entries, or leaves part of one at the end.
void changeCount(Chunk& chunk, const Layout& layout, std::size_t count, Random& random) {
    const std::size_t end = layout.entriesAt + count * layout.entrySize;
    switch (random.below(4)) {
    case 0: chunk.data.resize(end + random.below(layout.entrySize)); break;
    case 1: chunk.data.resize(layout.entriesAt + random.below(count + 1) * layout.entrySize); break;
    case 2: chunk.data.resize(end + random.below(32) * layout.entrySize); break;
    default: {
        const Bytes entry(entryAt(chunk, layout, 0), entryAt(chunk, layout, 0) + layout.entrySize);
        for (std::size_t times = 1 + random.below(64); times > 0; --times) {
            chunk.data.insert(chunk.data.end(), entry.begin(), entry.end());
        }
    }
    }
}

// Makes a super index point at any chunk: the index of another stream, the headers, itself.
void leadElsewhere(RiffTree& tree, Chunk& indx, const Layout& layout, std::size_t count, Random& random) {
    writeTree(tree);
    const std::vector<Place> places = placesOf(tree);
    const Chunk& target = random.once(4) ? indx : places[random.below(places.size())].chunk();
    const std::size_t at = layout.entriesAt + random.below(count) * layout.entrySize;
    setNumber(indx.data, {at, 8}, target.position);
    if (random.once(2)) {
        setNumber(indx.data, {at + 8, 4}, contentSize(target) + 8);
    }
}

}  // namespace

bool editField(RiffTree& tree, Chunk& chunk, Random& random) {
    const Layout layout = layoutOf(chunk);
    const std::size_t count = layout.entrySize != 0 ? entryCount(chunk, layout) : 0;
    if (count != 0 && !random.once(3)) {
        return editOneOf(tree, chunk, layout.entry, layout.entriesAt + random.below(count) * layout.entrySize, random);
    }
    return editOneOf(tree, chunk, layout.head, 0, random);
}

bool editIndex(RiffTree& tree, Chunk& chunk, Random& random) {
    const Layout layout = layoutOf(chunk);
    const std::size_t count = layout.entrySize != 0 ? entryCount(chunk, layout) : 0;
    if (count == 0) {
        return false;
    }
    switch (random.below(6)) {
    case 0: changeOrder(chunk, layout, count, random); return true;
    case 1: changeCount(chunk, layout, count, random); return true;
    case 2:
        if (chunk.id != fourCC("idx1")) {
            setNumber(chunk.data, {4, 4}, entryCount(chunk, layout) + random.below(3) - 1);
            return true;
        }
        break;
    case 3:
        if (chunk.id == fourCC("indx")) {
            leadElsewhere(tree, chunk, layout, count, random);
            return true;
        }
        break;
    default: break;
    }
    return editField(tree, chunk, random);
}

}  // namespace fuzz
