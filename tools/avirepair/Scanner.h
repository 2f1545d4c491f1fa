// What a file holds, found by reading its chunks one after another. Lists are entered and their sizes not trusted, so
// files whose sizes were never written, or are wrong, read like any other.
//
// Where a chunk's size does not lead to another header, the next position is searched from which several headers
// follow each other. Frames are never looked into otherwise: bytes in them that look like a header do not matter.
//
// What is found after such a break may be the remains of an older file on the same disk. It is trusted where the
// break lies inside a list that its writer has completed, or where most of the lost bytes are zeros; else its chunks
// are marked as doubtful. A second "RIFF AVI " is another file: there the scan ends.
#pragma once

#include "avirepair/Window.h"

#include <cstdint>
#include <string>
#include <vector>

namespace avirepair {

using Bytes = std::vector<std::uint8_t>;

enum class ChunkType : std::uint8_t { dc, db, pc, wb, tx, sb };
std::string_view textOf(ChunkType type);         // "dc"

struct FoundChunk {
    enum Flag : std::uint8_t {
        kCut = 1,            // its end is missing; `size` bytes are there
        kResized = 2,        // its header's size is wrong
        kUnpadded = 4,       // no pad byte follows its odd size
        kDoubtful = 8,
        kBeforeGap = 16,     // the chain breaks after it
        kListed = 32,        // in the index; kKey is set where that says so
        kKey = 64,
        kInZeros = 128,      // it ends in the zeros of a gap
    };
    std::uint64_t position = 0;     // of its header
    std::uint32_t size = 0;         // of its data in the file
    std::uint16_t number = 0;       // of the stream in its id
    ChunkType type = ChunkType::dc;
    std::uint8_t flags = 0;

    std::uint64_t data() const { return position + 8; }
    bool is(Flag flag) const { return (flags & flag) != 0; }
    std::string id() const;         // "00dc"
};
static_assert(sizeof(FoundChunk) == 16);

struct FoundStream {
    Bytes header{};          // "strh", 56 bytes; empty when it is lost
    bool hasFormat = false;
    Bytes format{};          // "strf"
    Bytes more{};            // whole chunks: names, further data
    std::uint32_t type() const { return header.empty() ? 0 : u32In(header, 0); }
    bool isUsable() const { return !header.empty() && hasFormat; }
};

struct Gap {
    std::uint64_t begin = 0;        // lost bytes
    std::uint64_t end = 0;
    bool isTrailing = false;        // nothing of the clip follows
};

struct FoundIndex {
    std::uint64_t data = 0;         // position
    std::uint64_t size = 0;
    bool isLegacy = false;          // "idx1"
};

struct Scan {
    std::uint64_t fileSize = 0;
    Bytes mainHeader{};                      // "avih", 56 bytes; empty when it is lost
    std::vector<FoundStream> streams{};
    std::vector<FoundChunk> chunks{};        // by position
    std::vector<Gap> gaps{};                 // by position
    std::vector<FoundIndex> indexes{};
    std::uint64_t media = 0;                 // position of the first "movi" list; 0 for none
    std::uint64_t mediaEnd = 0;              // as the last such list claims
    std::uint64_t nextClip = 0;              // position of a second "RIFF AVI "; 0 for none
    bool isOpen = false;                     // the last media list was never completed
};

// A chunk that an index lists: position of its data, and its size.
struct Hint {
    std::uint64_t data = 0;
    std::uint32_t size = 0;
};

// `hints`, by position, make up for sizes in the media that lead nowhere. Throws what Window throws.
Scan scanFile(fileio::File& file, const std::vector<Hint>& hints = {});

}  // namespace avirepair
