#include "codec/FrameRequest.h"

#include <utility>

FrameRequest::FrameRequest(const imSourceVideoRec& record, const PrSDKPPixSuite* suite)
    : frameTime(record.inFrameTime), ppixSuite(suite) {
    if (record.inFrameFormats != nullptr && record.inNumFrameFormats > 0) {
        frameFormats.assign(record.inFrameFormats, record.inFrameFormats + record.inNumFrameFormats);
    }
}

FrameRequest::~FrameRequest() {
    if (ppix != nullptr) {
        ppixSuite->Dispose(ppix);
    }
}

PPixHand FrameRequest::takePPix() {
    return std::exchange(ppix, nullptr);
}
