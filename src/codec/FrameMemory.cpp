#include "codec/FrameMemory.h"

#include <array>
#include <atomic>
#include <cstddef>

class FrameMemory::Pool {
public:
    constexpr Pool() = default;
    ~Pool() { clear(); }

    // Returns null if the pool is empty.
    std::unique_ptr<Block> take() noexcept {
        for (std::atomic<Block*>& place : m_blocks) {
            // Look before writing: a write would take the cache line away from every other thread.
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
        // Count before publishing, so that whoever takes the block can subtract its size.
        const std::size_t bytes = bytesOf(*block);
        const std::size_t before = m_bytes.fetch_add(bytes, std::memory_order_relaxed);
        if (bytes > kLargestFrame || before + bytes > kMostBytes || !findPlaceFor(block.get())) {
            m_bytes.fetch_sub(bytes, std::memory_order_relaxed);
            return;
        }
        static_cast<void>(block.release());   // the place owns it
    }

    void clear() noexcept {
        while (take()) {
        }
    }

private:
    static std::size_t bytesOf(const Block& block) {
        return block.frameBuffer.size() + block.frameFormats.capacity() * sizeof(imFrameFormat);
    }

    // Returns true if a place was free; the block is then stored there.
    bool findPlaceFor(Block* block) noexcept {
        for (std::atomic<Block*>& place : m_blocks) {
            Block* none = nullptr;
            if (place.compare_exchange_strong(none, block, std::memory_order_release, std::memory_order_relaxed)) {
                return true;
            }
        }
        return false;
    }

    // More than a host announces for one clip. Blocks of a larger burst are freed.
    static constexpr std::size_t kMostBlocks = 16;

    // Largest frame whose memory is kept, in bytes. Next to decoding a larger one, allocating is cheap.
    static constexpr std::size_t kLargestFrame = std::size_t{16} << 20;

    // Bytes that may stay unused in the host's process until it stops playing: several of the largest frames.
    static constexpr std::size_t kMostBytes = std::size_t{64} << 20;

    std::array<std::atomic<Block*>, kMostBlocks> m_blocks{};   // owned; null if free
    std::atomic<std::size_t> m_bytes{0};                       // size of all blocks
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
