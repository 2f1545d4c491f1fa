#include "codec/FrameMemory.h"

#include <utility>

FrameMemory::Block FrameMemory::take() noexcept {
    const std::lock_guard lock(m_mutex);
    return m_count != 0 ? std::move(m_blocks[--m_count]) : Block{};
}

void FrameMemory::giveBack(Block&& block) noexcept {
    const std::lock_guard lock(m_mutex);
    if (m_count < kMostBlocks) {
        m_blocks[m_count++] = std::move(block);
    }
}

void FrameMemory::clear() noexcept {
    const std::lock_guard lock(m_mutex);
    while (m_count != 0) {
        m_blocks[--m_count] = Block{};
    }
}
