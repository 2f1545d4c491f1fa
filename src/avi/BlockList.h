// A list that grows by whole blocks: appending to millions of elements never moves them or doubles the memory.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

template <typename T>
class BlockList {
public:
    std::size_t size() const {
        return m_blocks.empty() ? 0 : (m_blocks.size() - 1) * kBlockLength + m_blocks.back().size();
    }
    bool empty() const { return size() == 0; }

    /// `index` must be below size().
    const T& operator[](std::size_t index) const { return m_blocks[index / kBlockLength][index % kBlockLength]; }
    T& operator[](std::size_t index) { return m_blocks[index / kBlockLength][index % kBlockLength]; }

    /// The list must not be empty.
    const T& back() const { return m_blocks.back().back(); }

    /// References to elements of the last block do not outlive an append.
    void append(const T& element) {
        if (m_blocks.empty() || m_blocks.back().size() == kBlockLength) {
            m_blocks.emplace_back();
        }
        std::vector<T>& last = m_blocks.back();
        if (last.size() == last.capacity()) {
            last.reserve(std::min(kBlockLength, std::max(kFirstLength, 2 * last.size())));
        }
        last.push_back(element);
    }

    /// Gives back the room kept for further elements.
    void shrinkToFit() {
        if (!m_blocks.empty()) {
            m_blocks.back().shrink_to_fit();
        }
        m_blocks.shrink_to_fit();
    }

private:
    static constexpr std::size_t kFirstLength = 16;
    static constexpr std::size_t kBlockLength = std::size_t{1} << 16;

    // Only the last block may be shorter than kBlockLength; none is empty once an append has succeeded.
    std::vector<std::vector<T>> m_blocks;
};
