// One request of the host for one frame, from its record to the frame buffer.
#pragma once

#include "codec/FrameMemory.h"
#include "fileio/ByteBuffer.h"
#include "sdk/SdkImporter.h"

#include <cstdint>
#include <vector>

// Aligned as a whole: an atomic one needs no library.
struct alignas(8) FrameSize {
    csSDK_int32 width = 0;    // pixels
    csSDK_int32 height = 0;
};

class FrameRequest {
public:
    // Copies what the host's record says: the record is the host's again when its call returns. Throws std::bad_alloc.
    FrameRequest(const imSourceVideoRec& record, const PrSDKPPixSuite* ppixSuite);

    // Disposes a frame that was not handed over; what the host throws at that is only logged.
    ~FrameRequest();

    FrameRequest(const FrameRequest&) = delete;
    FrameRequest& operator=(const FrameRequest&) = delete;

    // Has the host make a frame buffer in the first of the formats. Gives a host result: imOtherErr.
    csSDK_int32 createPPix(const PrSDKPPixCreatorSuite& creator);

    // Gives the frame to the caller, who hands it to the host.
    PPixHand takePPix();

    // Acceptable to the host, best first; and the compressed frame.
    std::vector<imFrameFormat>& frameFormats() { return m_memory.frameFormats(); }
    ByteBuffer& frameBuffer() { return m_memory.frameBuffer(); }

    PrTime frameTime = 0;               // host ticks
    std::uint32_t frameIndex = 0;       // set by LocateFrame
    std::uint32_t compressedSize = 0;   // bytes of the compressed frame, set by ReadFrame
    bool formatChanged = false;         // DecodeFrame ended a session for another pixel format
    std::uint64_t pixels = 0;           // of the frame buffer: the address of its first byte
    std::uint32_t rowBytes = 0;         // as the host has it

private:
    FrameMemory m_memory;
    PPixHand m_ppix = nullptr;
    const PrSDKPPixSuite* m_ppixSuite;  // not owned
};
