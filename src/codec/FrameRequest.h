// One host request for one frame, from its record to the frame buffer.
#pragma once

#include "codec/FrameMemory.h"
#include "fileio/ByteBuffer.h"
#include "sdk/SdkImporter.h"

#include <cstdint>
#include <vector>

// Aligned so that std::atomic<FrameSize> is lock-free and needs no library.
struct alignas(8) FrameSize {
    csSDK_int32 width = 0;    // pixels
    csSDK_int32 height = 0;
};

class FrameRequest {
public:
    // Copies the host's record, which is only valid during the host's call. Throws std::bad_alloc.
    FrameRequest(const imSourceVideoRec& record, const PrSDKPPixSuite* ppixSuite);

    // Disposes of a frame that was not taken; exceptions of the host are only logged.
    ~FrameRequest();

    FrameRequest(const FrameRequest&) = delete;
    FrameRequest& operator=(const FrameRequest&) = delete;

    // Asks the host for a frame buffer in the first of the formats. Returns imNoErr or imOtherErr.
    csSDK_int32 createPPix(const PrSDKPPixCreatorSuite& creator);

    // Passes ownership of the frame to the caller, who hands it to the host.
    PPixHand takePPix();

    // The formats acceptable to the host, best first; and the compressed frame.
    std::vector<imFrameFormat>& frameFormats() { return m_memory.frameFormats(); }
    ByteBuffer& frameBuffer() { return m_memory.frameBuffer(); }

    PrTime frameTime = 0;               // host ticks
    std::uint32_t frameIndex = 0;       // set by LocateFrame
    std::uint32_t compressedSize = 0;   // bytes of the compressed frame, set by ReadFrame
    bool formatChanged = false;         // DecodeFrame ended a session in another pixel format
    std::uint64_t pixels = 0;           // address of the frame buffer's first byte
    std::uint32_t rowBytes = 0;         // of the frame buffer

private:
    FrameMemory m_memory;
    PPixHand m_ppix = nullptr;
    const PrSDKPPixSuite* m_ppixSuite;  // not owned
};
