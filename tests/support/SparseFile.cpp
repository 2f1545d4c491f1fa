#include "support/SparseFile.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace fileio {

void SparseFile::put(std::uint64_t position, std::vector<std::uint8_t> bytes) {
    m_extents.push_back({position, std::move(bytes)});
}

bool SparseFile::seek(std::int64_t pos) {
    if (pos < 0) {
        return false;
    }
    m_position = pos;
    return true;
}

std::uint64_t SparseFile::read(void* buffer, std::uint64_t count) {
    if (m_position >= m_size) {
        return 0;
    }
    const auto begin = static_cast<std::uint64_t>(m_position);
    const std::uint64_t part =
        std::min<std::uint64_t>(static_cast<std::uint32_t>(count), static_cast<std::uint64_t>(m_size) - begin);
    auto* bytes = static_cast<std::uint8_t*>(buffer);
    std::memset(bytes, 0, static_cast<std::size_t>(part));
    for (const Extent& extent : m_extents) {
        const std::uint64_t first = std::max(begin, extent.position);
        const std::uint64_t last = std::min(begin + part, extent.position + extent.bytes.size());
        if (first < last) {
            std::memcpy(bytes + (first - begin), extent.bytes.data() + (first - extent.position),
                        static_cast<std::size_t>(last - first));
        }
    }
    m_position += static_cast<std::int64_t>(part);
    return part;
}

}  // namespace fileio
