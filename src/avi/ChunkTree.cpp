#include "avi/ChunkTree.h"

#include "avi/AviRecords.h"
#include "text/FourCC.h"

bool ChunkNode::isList() const {
    return id == fourCC("RIFF") || id == fourCC("LIST");
}

std::uint64_t ChunkNode::dataPosition() const {
    return position + avi::kChunkHeaderSize + (isList() ? avi::kListTypeSize : 0);
}

std::int64_t ChunkNode::dataSize() const {
    const std::int64_t listTypeSize = isList() ? std::int64_t{avi::kListTypeSize} : 0;
    return std::int64_t{size} - listTypeSize;
}

std::uint32_t ChunkTree::add(const ChunkNode& node, std::uint32_t parent, std::uint32_t previousSibling) {
    const auto number = static_cast<std::uint32_t>(m_nodes.size());
    m_nodes.append(node);
    if (previousSibling != ChunkNode::kNone) {
        m_nodes[previousSibling].nextSibling = number;
    } else if (parent != ChunkNode::kNone) {
        m_nodes[parent].firstChild = number;
    }
    return number;
}

ChunkTree::Range ChunkTree::topLevel() const {
    return {Iterator(*this, m_nodes.empty() ? ChunkNode::kNone : 0), Iterator()};
}

ChunkTree::Range ChunkTree::children(const ChunkNode& parent) const {
    return {Iterator(*this, parent.firstChild), Iterator()};
}

const ChunkNode* ChunkTree::child(const ChunkNode& parent, std::uint32_t id) const {
    for (const ChunkNode& node : children(parent)) {
        if (node.id == id) {
            return &node;
        }
    }
    return nullptr;
}

const ChunkNode* ChunkTree::childList(const ChunkNode& parent, std::uint32_t listType) const {
    for (const ChunkNode& node : children(parent)) {
        if (node.isList() && node.listType == listType) {
            return &node;
        }
    }
    return nullptr;
}
