// A list that grows in whole blocks: appending to millions of elements never moves them or doubles the memory.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <span>
#include <type_traits>
#include <vector>

template <typename T>
class BlockList {
    static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);

public:
    // Elements are contiguous from each multiple of this index to the next.
    static constexpr std::size_t kBlockLength = std::size_t{1} << 14;

    BlockList() = default;
    BlockList(const BlockList&) = delete;
    BlockList& operator=(const BlockList&) = delete;

    std::size_t size() const { return m_blocks.empty() ? 0 : (m_blocks.size() - 1) * kBlockLength + m_used; }
    bool empty() const { return m_blocks.empty(); }

    // `index` must be below size().
    const T& operator[](std::size_t index) const { return m_blocks[index / kBlockLength][index % kBlockLength]; }
    T& operator[](std::size_t index) { return m_blocks[index / kBlockLength][index % kBlockLength]; }

    // An append invalidates references to elements of the last block. Throws std::bad_alloc and then leaves the list
    // unchanged.
    void append(T element) {
        if (m_used == m_room) [[unlikely]] {
            makeRoom(1);
        }
        m_blocks.back()[m_used] = element;
        ++m_used;
    }

    // Appends uninitialised elements for the caller to set: as many of `count` (not 0) as fit contiguously. Reserves
    // room for all of `count` up to the end of the block, so that a list of known length does not grow in steps.
    // Throws like append.
    std::span<T> extend(std::size_t count) {
        if (m_used == m_room) {
            makeRoom(count);
        }
        const std::size_t part = std::min(count, m_room - m_used);
        T* first = m_blocks.back().get() + m_used;
        m_used += part;
        return {first, part};
    }

    // Frees unused room, if there is memory to move the elements.
    void shrinkToFit() {
        if (m_used != m_room) {
            if (T* smaller = new (std::nothrow) T[m_used]) {
                replaceLast(smaller, m_used);
            }
        }
    }

    void clear() {
        m_blocks.clear();
        m_used = 0;
        m_room = 0;
    }

private:
    static constexpr std::size_t kFirstLength = 16;

    // Enlarges the last block, or adds another if it has its full length.
    void makeRoom(std::size_t count) {
        if (m_room % kBlockLength != 0) {
            const std::size_t room = std::min(kBlockLength, std::max(2 * m_room, m_room + count));
            replaceLast(new T[room], room);
            return;
        }
        // For a list this long, a whole block is a small overhead.
        const std::size_t room = empty() ? std::clamp(count, kFirstLength, kBlockLength) : kBlockLength;
        m_blocks.push_back(std::make_unique_for_overwrite<T[]>(room));
        m_used = 0;
        m_room = room;
    }

    void replaceLast(T* block, std::size_t room) {
        std::copy_n(m_blocks.back().get(), m_used, block);
        m_blocks.back().reset(block);
        m_room = room;
    }

    // Only the last block may be shorter than kBlockLength; none is empty after a successful append.
    std::vector<std::unique_ptr<T[]>> m_blocks;
    std::size_t m_used = 0;  // of the last block
    std::size_t m_room = 0;  // of the last block
};
