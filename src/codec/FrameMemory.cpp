#include "codec/FrameMemory.h"

std::unique_ptr<FrameMemory::Block> FrameMemory::take() {
    for (std::atomic<Block*>& place : m_blocks) {
        if (place.load(std::memory_order_relaxed) != nullptr) {
            if (Block* block = place.exchange(nullptr, std::memory_order_acquire)) {
                return std::unique_ptr<Block>(block);
            }
        }
    }
    return std::make_unique<Block>();
}

void FrameMemory::giveBack(std::unique_ptr<Block> block) noexcept {
    for (std::atomic<Block*>& place : m_blocks) {
        Block* none = nullptr;
        if (place.compare_exchange_strong(none, block.get(), std::memory_order_release, std::memory_order_relaxed)) {
            block.release();
            return;
        }
    }
}

void FrameMemory::clear() noexcept {
    for (std::atomic<Block*>& place : m_blocks) {
        delete place.exchange(nullptr, std::memory_order_acquire);
    }
}
