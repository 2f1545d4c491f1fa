#include "support/FaultFile.h"

#include <algorithm>
#include <new>

namespace fileio {

namespace {

bool touches(std::uint64_t position, std::uint64_t count, std::uint64_t from, std::uint64_t fromCount) {
    return position < from ? from - position < count : position - from < fromCount;
}

}  // namespace

void FaultFile::breakByte(std::uint64_t position) {
    m_own.brokenFrom = position;
    m_own.brokenCount = 1;
}

void FaultFile::refuseSeekTo(std::uint64_t position) {
    m_own.refusedFrom = position;
    m_own.refusedCount = 1;
}

void FaultFile::cutAt(std::uint64_t end) {
    m_endOfReads = end;
    m_own.claimedGrowth = static_cast<std::int64_t>(end) - m_inner.size();
}

std::uint64_t FaultFile::bytesRead() const {
    std::uint64_t sum = 0;
    for (const Read& read : m_reads) {
        sum += read.got;
    }
    return sum;
}

// Where the file ends for having been read so often.
std::uint64_t FaultFile::cut() const {
    return m_readCount > m_faults.readsUntilCut ? m_faults.cutAt : FileFaults::kNever;
}

std::int64_t FaultFile::size() {
    const std::uint64_t size = std::min(static_cast<std::uint64_t>(m_inner.size()), cut());
    return std::max<std::int64_t>(static_cast<std::int64_t>(size) + m_faults.claimedGrowth, 0);
}

bool FaultFile::seek(std::int64_t pos) {
    ++m_seekCount;
    const bool isRefused = touches(static_cast<std::uint64_t>(pos), 1, m_faults.refusedFrom, m_faults.refusedCount);
    return !isRefused && m_inner.seek(pos);
}

std::uint64_t FaultFile::read(void* buffer, std::uint64_t count) {
    const std::int64_t position = m_inner.tell();
    const std::uint64_t number = m_readCount++;
    if (&m_faults == &m_own) {
        m_reads.push_back({position, count, 0});
    }
    if (m_throwingRead == number) {
        throw std::bad_alloc();
    }
    const auto begin = static_cast<std::uint64_t>(position);
    const std::uint64_t end = std::min(m_endOfReads, cut());
    if (begin >= end || touches(begin, count, m_faults.brokenFrom, m_faults.brokenCount)) {
        return 0;
    }
    const std::uint64_t got = m_inner.read(buffer, std::min({count, m_faults.largestRead, end - begin}));
    if (!m_reads.empty()) {
        m_reads.back().got = got;
    }
    return got;
}

}  // namespace fileio
