// Reads header data and index data for the parser: few and large reads, because files live on network shares,
// with the results that reading each piece by itself would have.
#pragma once

#include "avi/ChunkTree.h"
#include "fileio/ByteBuffer.h"
#include "fileio/File.h"

#include <array>
#include <cstdint>
#include <vector>

class ChunkReader {
public:
    /// Takes the file's current position as the start, and its size. The file must outlive the reader.
    explicit ChunkReader(fileio::File& file);

    /// Where parsing begins.
    std::uint64_t start() const { return m_start; }

    /// Size of the file in bytes.
    std::uint64_t fileSize() const { return m_fileSize; }

    /// How many of `count` bytes from `position` on lie inside the file.
    std::uint64_t existing(std::uint64_t position, std::uint64_t count) const;

    /// Reads `count` bytes at `position` by way of a block that is kept for the next read. Gives the bytes read,
    /// fewer at the end of the file, on failure and when too much was read already.
    std::uint64_t read(std::uint64_t position, void* destination, std::uint64_t count);

    /// The same in one read straight into `destination`, for what is large or read once. Gives nothing where
    /// mayReadDirect says no.
    std::uint64_t readDirect(std::uint64_t position, void* destination, std::uint64_t count);

    /// Whether readDirect would read so much yet: indexes that lie over each other end somewhere.
    bool mayReadDirect(std::uint64_t position, std::uint64_t count) const;

    /// Keeps back what it takes to read these bytes once with readDirect, until giveBackWhatIsSetAside(): what a file
    /// falls back to must be there when all else has used up its share.
    void setAside(std::uint64_t position, std::uint64_t count);
    void giveBackWhatIsSetAside();

    /// Reads the first `count` bytes of a chunk's data. True only when the chunk has them and all were read; what
    /// was read is in `destination` all the same.
    bool readChunkData(const ChunkNode& node, void* destination, std::uint64_t count);

    /// Whether all data of a chunk lies inside the file.
    bool hasWholeChunk(const ChunkNode& node) const;

    /// Reads all data of a chunk, of which the file must have all, into `data`. True only when all of it was read. How
    /// much is read this way is for the caller to bound.
    bool readWholeChunk(const ChunkNode& node, std::vector<std::uint8_t>& data);

    /// Room for a piece of so many bytes, aligned for any type; the same for every piece, so that thousands of indexes
    /// share it. Throws std::bad_alloc.
    std::uint8_t* pieceRoom(std::size_t size);

private:
    struct Block {
        std::uint64_t position = 0;
        std::uint64_t length = 0;
        std::vector<std::uint8_t> bytes;

        bool holds(std::uint64_t where) const { return where >= position && where - position < length; }
    };

    const Block* findBlock(std::uint64_t position) const;
    bool isLoaded(std::uint64_t position, std::uint64_t count) const;
    std::uint64_t costOf(std::uint64_t position, std::uint64_t count) const;
    bool isInFault(std::uint64_t position) const;
    bool liesFar(std::uint64_t position) const;
    const Block* loadBlock(std::uint64_t position);
    std::uint64_t readPreferringBlocks(std::uint64_t position, void* destination, std::uint64_t count);
    std::uint64_t readFile(std::uint64_t position, void* destination, std::uint64_t count);

    fileio::File& m_file;
    std::uint64_t m_start;
    std::uint64_t m_fileSize;
    std::uint64_t m_directBudget;   // bytes that readDirect may still read
    std::uint64_t m_setAside = 0;   // bytes of it that are kept back, no longer counted there
    std::uint64_t m_blockBudget;    // bytes that may still be read into blocks; a short block counts as a long one
    // The first block holds the headers, which are wanted again when the walk is at the end of the file.
    std::array<Block, 2> m_blocks;
    // Where a block could not be read. Each try can take a failing disk half a minute, and there may be dozens of
    // headers around the place: they are then read by themselves.
    std::uint64_t m_faultPosition = 0;
    std::uint64_t m_faultLength = 0;
    ByteBuffer m_piece;
};
