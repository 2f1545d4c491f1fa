// The memory that one frame request works in, taken from what earlier requests left, so that a frame allocates nothing
// but the first time. All clips share what is left: a project has hundreds of them open and plays few at a time.
#pragma once

#include "fileio/ByteBuffer.h"
#include "sdk/SdkImporter.h"

#include <memory>
#include <vector>

class FrameMemory {
public:
    // Takes what an earlier request left; new memory without room where there is nothing. Throws std::bad_alloc. This
    // and all other functions of the class may run on any number of threads at once.
    FrameMemory();

    // Leaves it to a later request, unless it has room for more than 16 MiB, or more than 64 MiB or 16 frames would be
    // left: such frames get new memory each time.
    ~FrameMemory();

    FrameMemory(const FrameMemory&) = delete;
    FrameMemory& operator=(const FrameMemory&) = delete;

    // What they hold is left over from another request; the room that they have is what counts.
    std::vector<imFrameFormat>& frameFormats() { return m_block->frameFormats; }
    ByteBuffer& frameBuffer() { return m_block->frameBuffer; }

    // Frees all that was left: the host stops playing, or closes a clip.
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
