#include "codec/FrameRequest.h"

#include "log/Log.h"

#include <exception>
#include <utility>

FrameRequest::FrameRequest(const imSourceVideoRec& record, const PrSDKPPixSuite* suite)
    : frameTime(record.inFrameTime),
      frameFormats(memory.frameFormats()),
      frameBuffer(memory.frameBuffer()),
      ppixSuite(suite) {
    frameFormats.clear();
    if (record.inFrameFormats != nullptr && record.inNumFrameFormats > 0) {
        frameFormats.assign(record.inFrameFormats, record.inFrameFormats + record.inNumFrameFormats);
    }
}

FrameRequest::~FrameRequest() {
    if (ppix == nullptr) {
        return;
    }
    try {
        ppixSuite->Dispose(ppix);
    } catch (const std::exception& error) {
        Log("ERROR: Dispose() failed: %s", error.what());
    } catch (...) {
        Log("ERROR: Dispose() failed");
    }
}

PPixHand FrameRequest::takePPix() {
    return std::exchange(ppix, nullptr);
}
