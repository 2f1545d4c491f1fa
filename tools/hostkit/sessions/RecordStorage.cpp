#include "hostkit/sessions/RecordStorage.h"

namespace hostkit {

std::string describe(const std::vector<ByteRange>& ranges) {
    std::string text;
    for (const ByteRange& range : ranges) {
        text.append(text.empty() ? "" : " ").append(std::to_string(range.offset));
        if (range.size > 1) {
            text.append("-").append(std::to_string(range.offset + range.size - 1));
        }
    }
    return text.empty() ? "nothing" : text;
}

void RecordStorage::remember() { m_before.assign(m_block.data(), m_block.data() + m_block.size()); }

std::vector<ByteRange> RecordStorage::changes() const {
    std::vector<ByteRange> ranges;
    for (std::size_t i = 0; i < m_before.size(); ++i) {
        if (m_block.data()[i] == m_before[i]) {
            continue;
        }
        if (!ranges.empty() && ranges.back().offset + ranges.back().size == i) {
            ++ranges.back().size;
        } else {
            ranges.push_back({i, 1});
        }
    }
    return ranges;
}

}  // namespace hostkit
