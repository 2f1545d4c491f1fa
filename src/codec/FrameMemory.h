// Memory that finished frame requests leave to later ones, so that a frame allocates nothing but the first time.
#pragma once

#include "fileio/ByteBuffer.h"
#include "sdk/SdkImporter.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <memory>
#include <vector>

class FrameMemory {
public:
    // What one request needs. The room that it has is what counts, not what it holds.
    struct Block {
        std::vector<imFrameFormat> frameFormats;
        ByteBuffer frameBuffer;
    };

    FrameMemory() = default;
    ~FrameMemory() { clear(); }
    FrameMemory(const FrameMemory&) = delete;
    FrameMemory& operator=(const FrameMemory&) = delete;

    // A block that was given back; without any a new one without room. Throws std::bad_alloc. This and the next two may
    // be called on any threads.
    std::unique_ptr<Block> take();
    void giveBack(std::unique_ptr<Block> block) noexcept;

    // Frees what was given back: the host needs no more frames for now.
    void clear() noexcept;

private:
    // More than a host announces ahead. What a burst of announcements leaves beyond them is freed.
    static constexpr std::size_t kMostBlocks = 16;

    std::array<std::atomic<Block*>, kMostBlocks> m_blocks{};   // owned; null where there is none
};
