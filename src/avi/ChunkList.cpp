#include "avi/ChunkList.h"

AviChunk ChunkList::operator[](std::size_t index) const {
    std::uint64_t startByte = m_groupStarts[index / kGroup];
    for (std::size_t earlier = index / kGroup * kGroup; earlier < index; ++earlier) {
        startByte += m_rows[earlier].size;
    }
    const Row& row = m_rows[index];
    return {row.offset, startByte, row.size, row.keyframe};
}

std::optional<std::size_t> ChunkList::findByBytePosition(std::uint64_t position) const {
    if (position >= m_totalBytes) {
        return std::nullopt;
    }
    // The first group that starts behind the position; past all that start at it, so that empty chunks are left out.
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
    for (std::uint64_t end = m_groupStarts[low - 1] + m_rows[index].size; end <= position; end += m_rows[index].size) {
        ++index;
    }
    return index;
}
