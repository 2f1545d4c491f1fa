#include "avi/ChunkReader.h"

#include <algorithm>
#include <cstring>

namespace {

// The headers of an ordinary file fit into one block.
constexpr std::uint64_t kBlockSize = 64 * 1024;

// After gigabytes of media there are two or three headers. More follow only near the end of the file: the index of a
// short clip.
constexpr std::uint64_t kFarBlockSize = 4 * 1024;

std::uint64_t notNegative(std::int64_t value) {
    return static_cast<std::uint64_t>(std::max<std::int64_t>(value, 0));
}

}  // namespace

ChunkReader::ChunkReader(fileio::File& file)
    : m_file(file), m_start(notNegative(file.tell())), m_fileSize(notNegative(file.size())) {}

std::uint64_t ChunkReader::existing(std::uint64_t position, std::uint64_t count) const {
    return position < m_fileSize ? std::min(count, m_fileSize - position) : 0;
}

std::uint64_t ChunkReader::read(std::uint64_t position, void* destination, std::uint64_t count) {
    auto* bytes = static_cast<std::uint8_t*>(destination);
    const std::uint64_t wanted = existing(position, count);
    std::uint64_t done = 0;
    while (done < wanted) {
        const std::uint64_t where = position + done;
        const Block* block = findBlock(where);
        if (!block) {
            block = loadBlock(where);
        }
        if (!block) {
            ++m_blockCount;
            return done + readFile(where, bytes + done, wanted - done);
        }
        const std::uint64_t part = std::min(wanted - done, block->end() - where);
        std::memcpy(bytes + done, block->bytes.data() + (where - block->position), part);
        done += part;
    }
    return done;
}

std::uint64_t ChunkReader::readDirect(std::uint64_t position, void* destination, std::uint64_t count) {
    const std::uint64_t wanted = existing(position, count);
    if (wanted == 0) {
        return 0;
    }
    const Block* block = findBlock(position);
    return block && block->holds(position + wanted - 1) ? read(position, destination, wanted)
                                                        : readFile(position, destination, wanted);
}

std::span<const std::uint8_t> ChunkReader::readPiece(std::uint64_t position, std::uint64_t count) {
    const auto wanted = static_cast<std::size_t>(existing(position, count));
    m_piece.growTo(wanted + kPadding);
    const auto got = static_cast<std::size_t>(readDirect(position, m_piece.data(), wanted));
    std::fill_n(m_piece.data() + got, kPadding, std::uint8_t{0});
    return {m_piece.data(), got};
}

bool ChunkReader::readChunkData(const ChunkNode& node, void* destination, std::uint64_t count) {
    if (node.dataSize() < static_cast<std::int64_t>(count)) {
        return false;
    }
    return read(node.dataPosition(), destination, count) == count;
}

const ChunkReader::Block* ChunkReader::findBlock(std::uint64_t position) const {
    for (const Block& block : m_blocks) {
        if (block.holds(position)) {
            return &block;
        }
    }
    return nullptr;
}

// Returns null if nothing could be read. A read error must not lose the bytes around it, and each retry can cost a
// failing disk half a minute: from then on every piece is read by itself.
const ChunkReader::Block* ChunkReader::loadBlock(std::uint64_t position) {
    if (m_isFaulty) {
        return nullptr;
    }
    const std::uint64_t size = existing(position, blockSizeAt(position));
    Block& block = m_blocks[0].length == 0 ? m_blocks[0] : m_blocks[1];
    block.bytes.growTo(kBlockSize);
    block.position = position;
    block.length = readFile(position, block.bytes.data(), size);
    m_blockCount += block.length == size ? 1 : 0;
    m_isFaulty = block.length == 0;
    return m_isFaulty ? nullptr : &block;
}

std::uint64_t ChunkReader::blockSizeAt(std::uint64_t position) const {
    // True just after a block, where the next of many small chunks is. The first block of all counts too.
    const auto follows = [position](const Block& block) { return position - block.end() < kBlockSize; };
    const bool isNear = std::any_of(m_blocks.begin(), m_blocks.end(), follows);
    return isNear || m_fileSize - position <= kBlockSize ? kBlockSize : kFarBlockSize;
}

std::uint64_t ChunkReader::readFile(std::uint64_t position, void* destination, std::uint64_t count) {
    if (!m_file.seek(static_cast<std::int64_t>(position))) {
        return 0;
    }
    return std::min(m_file.read(destination, count), count);
}
