#include "avi/ChunkList.h"

std::uint64_t ChunkList::totalBytes() const {
    return empty() ? 0 : startOf((size() - 1) / kGroup * kGroup, size());
}

AviChunk ChunkList::operator[](std::size_t index) const {
    const Row& row = m_rows[index];
    return {row.offset(), startOf(index / kGroup * kGroup, index), row.size(), row.keyframe()};
}

std::optional<std::size_t> ChunkList::findByBytePosition(std::uint64_t position) const {
    if (position >= totalBytes()) {
        return std::nullopt;
    }
    // Find the first group that starts after the position, skipping all that start at it, and so empty chunks.
    std::size_t low = 0;
    std::size_t high = m_groupStarts.size();
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        if (m_groupStarts[middle] > position) {
            high = middle;
        } else {
            low = middle + 1;
        }
    }
    std::size_t index = (low - 1) * kGroup;
    std::uint64_t end = m_groupStarts[low - 1] + m_rows[index].size();
    while (end <= position) {
        end += m_rows[++index].size();
    }
    return index;
}

std::uint64_t ChunkList::startOf(std::size_t first, std::size_t index) const {
    std::uint64_t startByte = m_groupStarts[first / kGroup];
    const Row* group = &m_rows[first];
    for (std::size_t i = 0; i < index - first; ++i) {
        startByte += group[i].size();
    }
    return startByte;
}
