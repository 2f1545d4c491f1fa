// One request of the host for one frame, from its record to the frame buffer.
#pragma once

#include "codec/FrameMemory.h"
#include "fileio/ByteBuffer.h"
#include "sdk/SdkImporter.h"

#include <cstdint>
#include <vector>

struct FrameRequest {
    // Copies what the host's record says: the record is the host's again when its call returns. Throws std::bad_alloc.
    FrameRequest(const imSourceVideoRec& record, const PrSDKPPixSuite* ppixSuite);

    // Disposes a frame that was not handed over; what the host throws at that is only logged.
    ~FrameRequest();

    FrameRequest(const FrameRequest&) = delete;
    FrameRequest& operator=(const FrameRequest&) = delete;

    // Gives the frame to the caller, who hands it to the host.
    PPixHand takePPix();

    FrameMemory memory;                         // of the two below that refer to it
    PrTime frameTime = 0;                       // host ticks
    std::vector<imFrameFormat>& frameFormats;   // acceptable to the host, best first
    std::uint32_t frameIndex = 0;               // set by LocateFrame
    std::uint32_t compressedSize = 0;           // bytes of the compressed frame, set by ReadFrame
    ByteBuffer& frameBuffer;                    // the compressed frame
    PPixHand ppix = nullptr;                    // set by DecodeFrame
    const PrSDKPPixSuite* ppixSuite = nullptr;  // not owned
    bool formatChanged = false;                 // DecodeFrame ended a session for another pixel format
};
