// A list that grows by whole blocks: appending to millions of elements never moves them or doubles the memory, and runs
// of millions that are all the same can take none.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <span>
#include <type_traits>
#include <vector>

/// What becomes of a full block that is the same as the one before it, byte for byte. Elements of shared blocks cannot
/// be changed by themselves.
enum class EqualBlocks { kept, shared };

template <typename T, EqualBlocks kEqualBlocks = EqualBlocks::kept>
class BlockList {
    static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);
    static_assert(kEqualBlocks == EqualBlocks::kept || std::has_unique_object_representations_v<T>);

public:
    /// Elements lie side by side from each multiple of this index to the next.
    static constexpr std::size_t kBlockLength = std::size_t{1} << 14;

    BlockList() = default;
    ~BlockList() { clear(); }
    BlockList(const BlockList&) = delete;
    BlockList& operator=(const BlockList&) = delete;

    std::size_t size() const { return m_blocks.empty() ? 0 : (m_blocks.size() - 1) * kBlockLength + m_used; }
    bool empty() const { return m_blocks.empty(); }

    /// `index` must be below size().
    const T& operator[](std::size_t index) const { return m_blocks[index / kBlockLength][index % kBlockLength]; }
    T& operator[](std::size_t index)
        requires(kEqualBlocks == EqualBlocks::kept)
    {
        return m_blocks[index / kBlockLength][index % kBlockLength];
    }

    /// The list must not be empty.
    const T& back() const { return m_blocks.back()[m_used - 1]; }

    /// References to elements of the last block do not outlive an append. Throws std::bad_alloc; the list is then as
    /// it was.
    void append(T element) {
        if (m_used == m_room) [[unlikely]] {
            makeRoom(1);
        }
        m_blocks.back()[m_used] = element;
        ++m_used;
    }

    /// Appends elements whose values are the caller's to set: as many of `count`, which must not be 0, as get room in
    /// one piece. Room for all of `count` is taken as far as the block reaches, so that a list whose length is known
    /// does not grow in steps. Throws as append does.
    std::span<T> extend(std::size_t count) {
        if (m_used == m_room) {
            makeRoom(count);
        }
        const std::size_t part = std::min(count, m_room - m_used);
        T* first = m_blocks.back() + m_used;
        m_used += part;
        return {first, part};
    }

    /// Throws as append does; a part of the elements may then be in the list.
    void appendAll(std::span<const T> elements) {
        while (!elements.empty()) {
            const std::span<T> room = extend(elements.size());
            std::copy_n(elements.begin(), room.size(), room.begin());
            elements = elements.subspan(room.size());
        }
    }

    /// Gives back the room kept for further elements, if there is memory to move them to.
    void shrinkToFit() {
        if (m_used != m_room) {
            if (T* smaller = new (std::nothrow) T[m_used]) {
                replaceLast(smaller, m_used);
            }
        }
    }

    void clear() {
        for (std::size_t i = 0; i < m_blocks.size(); ++i) {
            if (i == 0 || m_blocks[i] != m_blocks[i - 1]) {
                delete[] m_blocks[i];
            }
        }
        m_blocks.clear();
        m_used = 0;
        m_room = 0;
    }

private:
    static constexpr std::size_t kFirstLength = 16;

    void makeRoom(std::size_t count) {
        if (m_room < kBlockLength) {
            const std::size_t wanted = m_room + std::min(count, kBlockLength);
            growLast(std::min(kBlockLength, std::max({kFirstLength, 2 * m_room, wanted})));
        } else if (lastBlocksAreEqual()) {
            // One memory is enough for both, and that of the second becomes the new block.
            m_blocks.push_back(m_blocks.back());
            m_blocks[m_blocks.size() - 2] = m_blocks[m_blocks.size() - 3];
            m_used = 0;
        } else {
            // A list this long may take a whole block: that is little beside what it has.
            addBlock(kBlockLength);
            m_used = 0;
        }
    }

    /// Makes the last block, if there is one yet, so long.
    void growLast(std::size_t room) {
        if (m_blocks.empty()) {
            addBlock(room);
            m_room = room;
        } else {
            replaceLast(new T[room], room);
        }
    }

    void addBlock(std::size_t length) {
        auto block = std::make_unique_for_overwrite<T[]>(length);
        m_blocks.push_back(block.get());
        block.release();
    }

    bool lastBlocksAreEqual() const {
        if constexpr (kEqualBlocks == EqualBlocks::shared) {
            const std::size_t count = m_blocks.size();
            return count > 1 &&
                   std::memcmp(m_blocks[count - 1], m_blocks[count - 2], kBlockLength * sizeof(T)) == 0;
        } else {
            return false;
        }
    }

    void replaceLast(T* block, std::size_t room) {
        std::copy_n(m_blocks.back(), m_used, block);
        delete[] m_blocks.back();
        m_blocks.back() = block;
        m_room = room;
    }

    // Owned; neighbours that are equal can be one and the same. Only the last block may be shorter than kBlockLength;
    // none is empty once an append has succeeded. The last one is never shared: it still grows.
    std::vector<T*> m_blocks;
    std::size_t m_used = 0;  // of the last block
    std::size_t m_room = 0;  // of the last block
};
