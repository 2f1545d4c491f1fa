#include "codec/FrameRequest.h"

#include "log/Log.h"

#include <exception>
#include <utility>

FrameRequest::FrameRequest(const imSourceVideoRec& record, const PrSDKPPixSuite* suite, FrameMemory& memory)
    : m_memory(memory),
      m_block(memory.take()),
      frameTime(record.inFrameTime),
      frameFormats(m_block->frameFormats),
      frameBuffer(m_block->frameBuffer),
      ppixSuite(suite) {
    frameFormats.clear();
    if (record.inFrameFormats != nullptr && record.inNumFrameFormats > 0) {
        frameFormats.assign(record.inFrameFormats, record.inFrameFormats + record.inNumFrameFormats);
    }
}

FrameRequest::~FrameRequest() {
    if (ppix != nullptr) {
        disposePPix();
    }
    m_memory.giveBack(std::move(m_block));
}

void FrameRequest::disposePPix() {
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
