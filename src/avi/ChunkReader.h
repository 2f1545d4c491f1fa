// Reads header data and index data for the parser: few and large reads, because files live on network shares,
// with the results that reading each piece by itself would have.
#pragma once

#include "avi/ChunkTree.h"
#include "fileio/ByteBuffer.h"
#include "fileio/File.h"

#include <array>
#include <cstdint>
#include <span>

class ChunkReader {
public:
    /// Takes the file's current position as the start, and its size. The file must outlive the reader.
    explicit ChunkReader(fileio::File& file);

    /// Where parsing begins.
    std::uint64_t start() const { return m_start; }

    /// Size of the file in bytes.
    std::uint64_t fileSize() const { return m_fileSize; }

    /// How many whole blocks, and single pieces where there are none, read() has taken from the file so far.
    std::uint64_t blockCount() const { return m_blockCount; }

    /// How many of `count` bytes from `position` on lie inside the file.
    std::uint64_t existing(std::uint64_t position, std::uint64_t count) const;

    /// Reads `count` bytes at `position` by way of a block that is kept for the next read. Returns the bytes read,
    /// fewer at the end of the file and on failure.
    std::uint64_t read(std::uint64_t position, void* destination, std::uint64_t count);

    /// The same in one read straight into `destination`, for what is large or read once, unless a block has all of it.
    std::uint64_t readDirect(std::uint64_t position, void* destination, std::uint64_t count);

    /// readDirect into room of the reader's own, aligned for any type and valid until the next call. kPadding zeros
    /// follow the bytes, so that a last record cut short can be taken whole. Throws std::bad_alloc.
    static constexpr std::size_t kPadding = 16;
    std::span<const std::uint8_t> readPiece(std::uint64_t position, std::uint64_t count);

    /// Reads the first `count` bytes of a chunk's data. True only when the chunk has them and all were read; what
    /// was read is in `destination` all the same.
    bool readChunkData(const ChunkNode& node, void* destination, std::uint64_t count);

private:
    struct Block {
        std::uint64_t position = 0;
        std::uint64_t length = 0;
        ByteBuffer bytes;

        std::uint64_t end() const { return position + length; }
        bool holds(std::uint64_t where) const { return where >= position && where < end(); }
    };

    const Block* findBlock(std::uint64_t position) const;
    const Block* loadBlock(std::uint64_t position);
    std::uint64_t blockSizeAt(std::uint64_t position) const;
    std::uint64_t readFile(std::uint64_t position, void* destination, std::uint64_t count);

    fileio::File& m_file;
    std::uint64_t m_start;
    std::uint64_t m_fileSize;
    std::uint64_t m_blockCount = 0;
    // The first block holds the headers, which are wanted again when the walk is at the end of the file.
    std::array<Block, 2> m_blocks;
    bool m_isFaulty = false;  // a block could not be read
    ByteBuffer m_piece;
};
