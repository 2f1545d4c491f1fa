// Memory that finished frame requests leave to later ones, so that a frame allocates nothing but the first time.
#pragma once

#include "fileio/ByteBuffer.h"
#include "sdk/SdkImporter.h"

#include <array>
#include <cstddef>
#include <mutex>
#include <vector>

class FrameMemory {
public:
    // What one request needs; the room that it has is what counts, not what it holds.
    struct Block {
        std::vector<imFrameFormat> frameFormats;
        ByteBuffer frameBuffer;
    };

    FrameMemory() = default;
    FrameMemory(const FrameMemory&) = delete;
    FrameMemory& operator=(const FrameMemory&) = delete;

    // The block given back last, which the processor's cache may still hold; without any a new one without room.
    // These three may be called on any threads.
    Block take() noexcept;
    void giveBack(Block&& block) noexcept;

    // Frees what is kept: the host needs no more frames for now.
    void clear() noexcept;

private:
    // More than a host announces ahead. What a burst of announcements leaves beyond them is freed.
    static constexpr std::size_t kMostBlocks = 16;

    std::mutex m_mutex;
    std::array<Block, kMostBlocks> m_blocks;
    std::size_t m_count = 0;
};
