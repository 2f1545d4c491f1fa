// Reads headers and indexes for the parser in few large reads, because files are often on network shares. The results
// are the same as if each piece were read by itself.
#pragma once

#include "avi/ChunkTree.h"
#include "fileio/ByteBuffer.h"
#include "fileio/File.h"

#include <array>
#include <cstdint>
#include <span>

class ChunkReader {
public:
    // Takes the file's current position as the start, and its size. `file` must outlive the reader.
    explicit ChunkReader(fileio::File& file);

    // File position where parsing starts.
    std::uint64_t start() const { return m_start; }

    // Size of the file in bytes.
    std::uint64_t fileSize() const { return m_fileSize; }

    // Number of reads that read() has made so far: whole blocks, and single pieces where no block could be read.
    std::uint64_t blockCount() const { return m_blockCount; }

    // Number of bytes of [position, position + count) that are inside the file.
    std::uint64_t existing(std::uint64_t position, std::uint64_t count) const;

    // Reads `count` bytes at `position` through a block that is kept for the next read. Returns the number of bytes
    // read: fewer at the end of the file and on failure.
    std::uint64_t read(std::uint64_t position, void* destination, std::uint64_t count);

    // Like read(), but straight into `destination`, for large or one-time reads. Uses a block only if it has all the
    // bytes.
    std::uint64_t readDirect(std::uint64_t position, void* destination, std::uint64_t count);

    // readDirect() into the reader's own buffer, aligned for any type and valid until the next call. kPadding zeros
    // follow the bytes, so that an incomplete last record can be read whole. Throws std::bad_alloc.
    static constexpr std::size_t kPadding = 16;
    std::span<const std::uint8_t> readPiece(std::uint64_t position, std::uint64_t count);

    // Reads the first `count` bytes of a chunk's data. Returns true only if the chunk has them and all were read.
    // `destination` receives what was read in either case.
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
    // The first block holds the headers, which are needed again after the walk has reached the end of the file.
    std::array<Block, 2> m_blocks;
    bool m_isFaulty = false;  // a block could not be read
    ByteBuffer m_piece;
};
