#include "avi/ChunkWalk.h"

#include "avi/AviRecords.h"
#include "avi/ParserLimits.h"

#include <algorithm>

namespace {

// Size of header and data, plus one pad byte if the data size is odd.
std::uint64_t stepOf(const ChunkNode& node) {
    return (std::uint64_t{node.size} + 9) & ~std::uint64_t{1};
}

bool isZero(const ChunkNode& node) { return node.id == 0 && node.size == 0; }

// One list on the path to the current chunk. The file decides how deep lists nest, so the path is kept here and not on
// the call stack.
struct Level {
    std::uint64_t position;  // file position of the next chunk header
    std::uint64_t remaining;
    std::uint32_t parent = ChunkNode::kNone;
    std::uint32_t lastChild = ChunkNode::kNone;
    bool failed = false;

    void pass(std::uint64_t step) {
        position += step;
        remaining -= std::min(step, remaining);
    }
};

class Walk {
public:
    Walk(ChunkReader& reader, const std::vector<std::uint32_t>& closedTypes, ChunkTree& tree)
        : m_reader(reader),
          m_closedTypes(closedTypes),
          m_tree(tree),
          m_maxBlocks(avi::maxWalkBlocks(reader.fileSize())) {}

    bool run() {
        m_levels.push_back({m_reader.start(), m_reader.fileSize()});
        while (true) {
            if (m_levels.back().remaining == 0) {
                const bool failed = m_levels.back().failed;
                m_levels.pop_back();
                if (m_levels.empty()) {
                    return !failed;
                }
                m_levels.back().failed |= failed;
            } else if (m_tree.size() == avi::kMaxNodes || m_skippedZeros == avi::kMaxSkippedZeros ||
                       m_reader.blockCount() >= m_maxBlocks) {
                return false;
            } else {
                visitNext();
            }
        }
    }

private:
    void visitNext() {
        Level& level = m_levels.back();
        ChunkNode node;
        node.position = level.position;
        if (!readHeader(node)) {
            level.failed = true;
            level.remaining = 0;
            return;
        }
        level.pass(stepOf(node));
        // Zeros read as empty chunks of 8 bytes. One node stands for a whole run of them.
        if (isZero(node) && level.lastChild != ChunkNode::kNone && isZero(m_tree[level.lastChild])) {
            ++m_skippedZeros;
            return;
        }
        const std::uint32_t number = m_tree.add(node, level.parent, level.lastChild);
        level.lastChild = number;
        // After a list that failed, its siblings are recorded but not entered: their contents are probably noise.
        if (node.isList() && !isClosed(node) && !level.failed && node.dataSize() > 0) {
            m_levels.push_back({node.dataPosition(), static_cast<std::uint64_t>(node.dataSize()), number});
        }
    }

    bool readHeader(ChunkNode& node) {
        std::uint32_t idAndSize[2];
        if (m_reader.read(node.position, idAndSize, sizeof idAndSize) != sizeof idAndSize) {
            return false;
        }
        node.id = idAndSize[0];
        node.size = idAndSize[1];
        if (!node.isList()) {
            return true;
        }
        return m_reader.read(node.position + avi::kChunkHeaderSize, &node.listType, avi::kListTypeSize) ==
               avi::kListTypeSize;
    }

    bool isClosed(const ChunkNode& list) const {
        return std::find(m_closedTypes.begin(), m_closedTypes.end(), list.listType) != m_closedTypes.end();
    }

    ChunkReader& m_reader;
    const std::vector<std::uint32_t>& m_closedTypes;
    ChunkTree& m_tree;
    std::uint64_t m_maxBlocks;
    std::uint32_t m_skippedZeros = 0;
    std::vector<Level> m_levels;
};

}  // namespace

bool walkChunks(ChunkReader& reader, const std::vector<std::uint32_t>& closedTypes, ChunkTree& tree) {
    return Walk(reader, closedTypes, tree).run();
}
