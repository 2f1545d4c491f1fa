// The memory that one frame request works in. It is reused by later requests, so that only the first frames allocate.
// All clips share the pool: a project has hundreds of clips open and plays few at a time.
#pragma once

#include "fileio/ByteBuffer.h"
#include "sdk/SdkImporter.h"

#include <memory>
#include <vector>

class FrameMemory {
public:
    // Takes a block from the pool, or a new empty one. Throws std::bad_alloc. All functions of the class are
    // thread-safe.
    FrameMemory();

    // Returns the block to the pool, unless it is larger than 16 MiB or the pool would exceed 64 MiB or 16 blocks: such
    // frames allocate each time.
    ~FrameMemory();

    FrameMemory(const FrameMemory&) = delete;
    FrameMemory& operator=(const FrameMemory&) = delete;

    // The contents are left over from an earlier request; only the capacity is of use.
    std::vector<imFrameFormat>& frameFormats() { return m_block->frameFormats; }
    ByteBuffer& frameBuffer() { return m_block->frameBuffer; }

    // Frees the pool: the host stops playing, or closes a clip.
    static void freeUnused() noexcept;

private:
    struct Block {
        std::vector<imFrameFormat> frameFormats;
        ByteBuffer frameBuffer;
    };
    class Pool;
    static Pool pool;

    std::unique_ptr<Block> m_block;
};
