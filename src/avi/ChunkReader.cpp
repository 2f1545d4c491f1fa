#include "avi/ChunkReader.h"

#include "avi/ParserLimits.h"

#include <algorithm>
#include <cstring>

namespace {

// Headers of an ordinary file fit into one block; the walk over zeros costs a read per 8192 chunks.
constexpr std::uint64_t kBlockSize = 64 * 1024;

// Far from what was read before, behind gigabytes of media, are two or three headers. Only at the end of the file are
// there more: the index of a short clip.
constexpr std::uint64_t kFarBlockSize = 4 * 1024;

// What a header read by itself counts as.
constexpr std::uint64_t kSingleReadCost = 512;

std::uint64_t notNegative(std::int64_t value) {
    return static_cast<std::uint64_t>(std::max<std::int64_t>(value, 0));
}

}  // namespace

ChunkReader::ChunkReader(fileio::File& file)
    : m_file(file),
      m_start(notNegative(file.tell())),
      m_fileSize(notNegative(file.size())),
      m_directBudget(std::min(m_fileSize + avi::kOverlapAllowance, avi::kMaxIndexBytes)),
      m_blockBudget(std::min(avi::kHeaderPasses * std::min(m_fileSize, avi::kMaxHeaderBytes) + avi::kOverlapAllowance,
                             avi::kMaxHeaderBytes)) {}

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
        if (!block && m_blockBudget < kBlockSize) {
            return done;
        }
        if (!block && !isInFault(where)) {
            block = loadBlock(where);
        }
        if (!block) {
            // A fault somewhere in the block must not take away the bytes before it.
            m_blockBudget -= kSingleReadCost;
            return done + readFile(where, bytes + done, wanted - done);
        }
        const std::uint64_t skip = where - block->position;
        const std::uint64_t part = std::min(wanted - done, block->length - skip);
        std::memcpy(bytes + done, block->bytes.data() + skip, part);
        done += part;
    }
    return done;
}

std::uint64_t ChunkReader::readDirect(std::uint64_t position, void* destination, std::uint64_t count) {
    const std::uint64_t wanted = existing(position, count);
    const std::uint64_t cost = costOf(position, wanted);
    if (wanted == 0 || cost > m_directBudget) {
        return 0;
    }
    m_directBudget -= cost;
    return readPreferringBlocks(position, destination, wanted);
}

void ChunkReader::setAside(std::uint64_t position, std::uint64_t count) {
    // A last piece shorter than kLeastReadCost costs that much.
    if (const std::uint64_t bytes = existing(position, count)) {
        m_setAside = std::min(bytes + avi::kLeastReadCost, m_directBudget);
        m_directBudget -= m_setAside;
    }
}

void ChunkReader::giveBackWhatIsSetAside() {
    m_directBudget += m_setAside;
    m_setAside = 0;
}

bool ChunkReader::readChunkData(const ChunkNode& node, void* destination, std::uint64_t count) {
    if (node.dataSize() < static_cast<std::int64_t>(count)) {
        return false;
    }
    return read(node.dataPosition(), destination, count) == count;
}

bool ChunkReader::hasWholeChunk(const ChunkNode& node) const {
    const std::uint64_t size = notNegative(node.dataSize());
    return existing(node.dataPosition(), size) == size;
}

bool ChunkReader::readWholeChunk(const ChunkNode& node, std::vector<std::uint8_t>& data) {
    const std::uint64_t size = notNegative(node.dataSize());
    data.resize(static_cast<std::size_t>(size));
    return size == 0 || readPreferringBlocks(node.dataPosition(), data.data(), size) == size;
}

std::uint8_t* ChunkReader::pieceRoom(std::size_t size) {
    m_piece.growTo(size);
    return m_piece.data();
}

bool ChunkReader::isInFault(std::uint64_t position) const {
    return position >= m_faultPosition && position - m_faultPosition < m_faultLength;
}

const ChunkReader::Block* ChunkReader::findBlock(std::uint64_t position) const {
    const auto found = std::find_if(m_blocks.begin(), m_blocks.end(),
                                    [position](const Block& block) { return block.holds(position); });
    return found == m_blocks.end() ? nullptr : &*found;
}

bool ChunkReader::isLoaded(std::uint64_t position, std::uint64_t count) const {
    const Block* block = findBlock(position);
    return block && block->holds(position + count - 1);
}

/// What an index's bytes, of which the file has all, take away from the budget.
std::uint64_t ChunkReader::costOf(std::uint64_t position, std::uint64_t count) const {
    return count == 0 || isLoaded(position, count) ? count : std::max(count, avi::kLeastReadCost);
}

/// Whether the place is neither just behind a block, as the next of many small chunks is, nor at the end of the file.
bool ChunkReader::liesFar(std::uint64_t position) const {
    const auto isJustBehind = [position](const Block& block) {
        const std::uint64_t end = block.position + block.length;
        return block.length != 0 && position >= end && position - end < kBlockSize;
    };
    return m_blocks[0].length != 0 && m_fileSize - position > kBlockSize &&
           std::none_of(m_blocks.begin(), m_blocks.end(), isJustBehind);
}

/// Null where nothing could be read.
const ChunkReader::Block* ChunkReader::loadBlock(std::uint64_t position) {
    const std::uint64_t size = liesFar(position) ? kFarBlockSize : kBlockSize;
    Block& block = m_blocks[0].length == 0 ? m_blocks[0] : m_blocks[1];
    block.bytes.resize(kBlockSize);
    block.position = position;
    block.length = readFile(position, block.bytes.data(), size);
    m_blockBudget -= block.length == kFarBlockSize ? kBlockSize : block.length;
    if (block.length == 0) {
        m_faultPosition = position;
        m_faultLength = size;
        return nullptr;
    }
    return &block;
}

/// In one read, unless a block has all of it.
std::uint64_t ChunkReader::readPreferringBlocks(std::uint64_t position, void* destination, std::uint64_t count) {
    return isLoaded(position, count) ? read(position, destination, count) : readFile(position, destination, count);
}

std::uint64_t ChunkReader::readFile(std::uint64_t position, void* destination, std::uint64_t count) {
    if (!m_file.seek(static_cast<std::int64_t>(position))) {
        return 0;
    }
    return std::min(m_file.read(destination, count), count);
}
