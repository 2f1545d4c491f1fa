// What the indexes of a file say, compared with the media that was found.
#pragma once

#include "avirepair/Scanner.h"

namespace avirepair {

struct IndexEntry {
    std::uint64_t data = 0;         // position
    std::uint32_t size = 0;
    std::uint16_t number = 0;       // of the stream
    bool isSound = false;           // by its id: "wb"
    bool isKey = false;
};

// The entries of one index chunk are neighbours; `begin` is the first.
struct IndexPart {
    std::size_t begin = 0;
    std::size_t end = 0;
    bool isOfOneStream = false;
};

// A place where an index has an entry and the media has no chunk.
struct MissingChunk {
    std::size_t after = 0;          // chunks of the scan that come before it
    std::uint16_t number = 0;       // of the stream
    bool isSound = false;
    std::uint32_t size = 0;         // 0: dropped while recording; else lost
};

struct IndexMatch {
    std::size_t entries = 0;
    std::size_t wrong = 0;                      // entries that the media contradicts
    bool isSound = false;                       // nothing contradicts the media, and the order is the media's
    std::vector<MissingChunk> missing{};        // by `after`
    std::vector<bool> leftOut{};                // for each chunk: the sound index has its neighbours, not itself
    std::vector<std::uint64_t> covered{};       // where the gaps begin whose chunks the index lists, in order
};

// Reads the file's indexes, marks the chunks that they list, and corrects sizes that count a pad byte. An "idx1" is
// taken in whichever of its four ways of counting leads to chunks: from the media list or from the start of the file,
// to headers or to data. Where there are OpenDML indexes, "idx1" is not used.
IndexMatch matchIndex(fileio::File& file, Scan& scan);

// The entries as hints for another scan.
std::vector<Hint> hintsOf(fileio::File& file, const Scan& scan);

}  // namespace avirepair
