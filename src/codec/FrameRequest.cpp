#include "codec/FrameRequest.h"

#include "log/Log.h"

#include <exception>
#include <utility>

FrameRequest::FrameRequest(const imSourceVideoRec& record, const PrSDKPPixSuite* ppixSuite)
    : frameTime(record.inFrameTime), m_ppixSuite(ppixSuite) {
    frameFormats().clear();
    if (record.inFrameFormats != nullptr && record.inNumFrameFormats > 0) {
        frameFormats().assign(record.inFrameFormats, record.inFrameFormats + record.inNumFrameFormats);
    }
}

FrameRequest::~FrameRequest() {
    if (m_ppix == nullptr) {
        return;
    }
    try {
        m_ppixSuite->Dispose(m_ppix);
    } catch (const std::exception& error) {
        Log("ERROR: Dispose() failed: %s", error.what());
    } catch (...) {
        Log("ERROR: Dispose() failed");
    }
}

csSDK_int32 FrameRequest::createPPix(const PrSDKPPixCreatorSuite& creator) {
    const imFrameFormat& wanted = frameFormats().front();
    const prRect bounds = {0, 0, wanted.inFrameWidth, wanted.inFrameHeight};
    const prSuiteError created = creator.CreatePPix(&m_ppix, PrPPixBufferAccess_WriteOnly,
                                                    static_cast<PrPixelFormat>(wanted.inPixelFormat), &bounds);
    if (created < 0) {
        m_ppix = nullptr;   // ignore whatever a failing host left there
    }
    if (m_ppix == nullptr) {
        Log("ERROR: CreatePPix() failed: %d", created);
        return imOtherErr;
    }

    char* address = nullptr;
    csSDK_int32 bytes = 0;
    const prSuiteError pixelsError = m_ppixSuite->GetPixels(m_ppix, PrPPixBufferAccess_WriteOnly, &address);
    m_ppixSuite->GetRowBytes(m_ppix, &bytes);
    if (address == nullptr) {
        Log("ERROR: GetPixels() failed: %d", pixelsError);   // the codec would have nowhere to write
        return imOtherErr;
    }
    pixels = reinterpret_cast<std::uintptr_t>(address);
    rowBytes = static_cast<std::uint32_t>(bytes);
    return imNoErr;
}

PPixHand FrameRequest::takePPix() {
    return std::exchange(m_ppix, nullptr);
}
