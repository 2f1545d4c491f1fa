#include "damage/parser/ShortFile.h"

#include <algorithm>
#include <cstring>

namespace damage {

ShortFile::ShortFile(const aviwriter::Bytes& bytes, std::uint64_t zerosAfter)
    : m_bytes(bytes), m_size(bytes.size() + zerosAfter), m_end(m_size) {}

bool ShortFile::seek(std::int64_t pos) {
    if (pos < 0) {
        return false;
    }
    m_position = pos;
    return true;
}

std::uint64_t ShortFile::read(void* buffer, std::uint64_t count) {
    const auto begin = static_cast<std::uint64_t>(m_position);
    if (begin >= m_end || count == 0) {
        return 0;
    }
    const auto part = static_cast<std::size_t>(std::min({count, m_mostOfARead, m_end - begin}));
    const auto stored = static_cast<std::size_t>(
        begin < m_bytes.size() ? std::min<std::uint64_t>(part, m_bytes.size() - begin) : 0);
    if (stored > 0) {
        std::memcpy(buffer, m_bytes.data() + begin, stored);
    }
    std::memset(static_cast<std::uint8_t*>(buffer) + stored, 0, part - stored);
    m_position += static_cast<std::int64_t>(part);
    return part;
}

}  // namespace damage
