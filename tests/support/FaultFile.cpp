#include "support/FaultFile.h"

#include <algorithm>
#include <new>

namespace fileio {

std::uint64_t FaultFile::bytesRead() const {
    std::uint64_t sum = 0;
    for (const Read& read : m_reads) {
        sum += read.got;
    }
    return sum;
}

bool FaultFile::seek(std::int64_t pos) {
    ++m_seekCount;
    if (std::find(m_refusedSeeks.begin(), m_refusedSeeks.end(), pos) != m_refusedSeeks.end()) {
        return false;
    }
    return m_inner.seek(pos);
}

std::uint64_t FaultFile::read(void* buffer, std::uint64_t count) {
    const std::int64_t position = m_inner.tell();
    m_reads.push_back({position, count, 0});
    if (m_throwingRead == m_reads.size() - 1) {
        throw std::bad_alloc();
    }
    if (touchesBrokenByte(static_cast<std::uint64_t>(position), count)) {
        return 0;
    }
    m_reads.back().got = m_inner.read(buffer, std::min(count, m_readLimit));
    return m_reads.back().got;
}

bool FaultFile::touchesBrokenByte(std::uint64_t position, std::uint64_t count) const {
    return std::any_of(m_brokenBytes.begin(), m_brokenBytes.end(),
                       [&](std::uint64_t byte) { return byte >= position && byte - position < count; });
}

}  // namespace fileio
