// The RIFF chunk tree of a file, flat: nodes in file order, linked by their numbers.
#pragma once

#include "avi/BlockList.h"

#include <cstddef>
#include <cstdint>
#include <iterator>

// One chunk. A list has children only if the walk entered it.
struct ChunkNode {
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    std::uint64_t position = 0;         // file position of the chunk header
    std::uint32_t id = 0;               // four-character code
    std::uint32_t size = 0;             // data bytes according to the header, including a list's type
    std::uint32_t listType = 0;         // four-character code; 0 for a chunk that is no list
    std::uint32_t firstChild = kNone;   // number in the tree
    std::uint32_t nextSibling = kNone;  // number in the tree

    // True for "RIFF" and "LIST", which are treated alike everywhere.
    bool isList() const;

    // File position and size of the payload: after the header and, for a list, its type. A list too short for its type
    // has a negative size.
    std::uint64_t dataPosition() const;
    std::int64_t dataSize() const;
};
static_assert(sizeof(ChunkNode) == 32);

class ChunkTree {
public:
    class Iterator;
    struct Range;

    std::size_t size() const { return m_nodes.size(); }
    const ChunkNode& operator[](std::uint32_t number) const { return m_nodes[number]; }

    // Adds a node after `previousSibling`, or as first child of `parent`, or (both kNone) as the very first node.
    // Returns its number.
    std::uint32_t add(const ChunkNode& node, std::uint32_t parent, std::uint32_t previousSibling);

    void clear() { m_nodes.clear(); }

    // In file order.
    Range topLevel() const;
    Range children(const ChunkNode& parent) const;

    // The first child with this id, or null if there is none.
    const ChunkNode* child(const ChunkNode& parent, std::uint32_t id) const;

    // The first child that is a list of this type, or null if there is none.
    const ChunkNode* childList(const ChunkNode& parent, std::uint32_t listType) const;

private:
    BlockList<ChunkNode> m_nodes;
};

class ChunkTree::Iterator {
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = ChunkNode;
    using difference_type = std::ptrdiff_t;
    using pointer = const ChunkNode*;
    using reference = const ChunkNode&;

    Iterator() = default;
    Iterator(const ChunkTree& tree, std::uint32_t number) : m_tree(&tree), m_number(number) {}

    reference operator*() const { return (*m_tree)[m_number]; }
    pointer operator->() const { return &**this; }
    Iterator& operator++() {
        m_number = (**this).nextSibling;
        return *this;
    }
    Iterator operator++(int) {
        const Iterator before = *this;
        ++*this;
        return before;
    }
    bool operator==(const Iterator& other) const { return m_number == other.m_number; }

private:
    const ChunkTree* m_tree = nullptr;
    std::uint32_t m_number = ChunkNode::kNone;
};

struct ChunkTree::Range {
    Iterator first;
    Iterator last;
    Iterator begin() const { return first; }
    Iterator end() const { return last; }
    bool empty() const { return first == last; }
};
