#include "codec/FrameMemory.h"

#include <array>
#include <atomic>
#include <cstddef>

class FrameMemory::Pool {
public:
    constexpr Pool() = default;
    ~Pool() { clear(); }

    // Null where nothing was left.
    std::unique_ptr<Block> take() noexcept {
        for (std::atomic<Block*>& place : m_blocks) {
            // Looked at before it is written: a write would take the place away from every other thread's cache.
            if (place.load(std::memory_order_relaxed) != nullptr) {
                if (Block* block = place.exchange(nullptr, std::memory_order_acquire)) {
                    m_bytes.fetch_sub(bytesOf(*block), std::memory_order_relaxed);
                    return std::unique_ptr<Block>(block);
                }
            }
        }
        return nullptr;
    }

    void leave(std::unique_ptr<Block> block) noexcept {
        // Counted before it can be seen, so that whoever takes it out again has something to take away.
        const std::size_t bytes = bytesOf(*block);
        const std::size_t before = m_bytes.fetch_add(bytes, std::memory_order_relaxed);
        if (bytes > kLargestFrame || before + bytes > kMostBytes || !findPlaceFor(block.get())) {
            m_bytes.fetch_sub(bytes, std::memory_order_relaxed);
            return;
        }
        block.release();
    }

    void clear() noexcept {
        while (take()) {
        }
    }

private:
    static std::size_t bytesOf(const Block& block) {
        return block.frameBuffer.size() + block.frameFormats.capacity() * sizeof(imFrameFormat);
    }

    // Whether there was a place left: the block is in it then.
    bool findPlaceFor(Block* block) noexcept {
        for (std::atomic<Block*>& place : m_blocks) {
            Block* none = nullptr;
            if (place.compare_exchange_strong(none, block, std::memory_order_release, std::memory_order_relaxed)) {
                return true;
            }
        }
        return false;
    }

    // More than a host announces ahead of one clip. What a burst of announcements leaves beyond them is freed.
    static constexpr std::size_t kMostBlocks = 16;

    // Bytes of a frame whose memory is kept. Beside the decode of a larger one, new memory costs nothing.
    static constexpr std::size_t kLargestFrame = std::size_t{16} << 20;

    // Bytes that may lie idle in the host's process until it stops playing: some frames of the largest kind.
    static constexpr std::size_t kMostBytes = std::size_t{64} << 20;

    std::array<std::atomic<Block*>, kMostBlocks> m_blocks{};   // owned; null where there is none
    std::atomic<std::size_t> m_bytes{0};                       // of what they hold
};

constinit FrameMemory::Pool FrameMemory::pool;

FrameMemory::FrameMemory() : m_block(pool.take()) {
    if (!m_block) {
        m_block = std::make_unique<Block>();
    }
}

FrameMemory::~FrameMemory() {
    pool.leave(std::move(m_block));
}

void FrameMemory::freeUnused() noexcept {
    pool.clear();
}
