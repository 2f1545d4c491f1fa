// From the compressed frame to the host's frame buffer: the codec's session within VideoInfo.
#include "codec/VideoInfo.h"

#include "codec/DecodeFormats.h"
#include "host/Vocabulary.h"
#include "log/Log.h"
#include "text/FourCC.h"

#include <array>
#include <exception>

csSDK_int32 VideoInfo::DecodeFrame(FrameRequest& request) {
    const imFrameFormat& wanted = request.frameFormats.front();
    const FormatInfo& info = GetFormatInfo_by_pixelFormat(wanted.inPixelFormat);
    if (m_sessionActive && m_sessionPixelFormat != wanted.inPixelFormat) {
        endSession(request);
    }
    if (!m_sessionActive) {
        if (const csSDK_int32 result = beginSession(info); result != imNoErr) {
            return result;
        }
    }

    const auto width = static_cast<std::uint32_t>(wanted.inFrameWidth);
    const auto height = static_cast<std::uint32_t>(wanted.inFrameHeight);
    if (m_format.width > width || m_format.height > height) {   // the codec would write past the frame buffer
        Log("ERROR: the codec delivers %u x %u, more than the frame of %u x %u", m_format.width, m_format.height,
            width, height);
        return imOtherErr;
    }

    std::array<QuorvanePlane, 4> planes;
    if (const csSDK_int32 result = createPPix(request, planes[0]); result != imNoErr) {
        return result;
    }
    try {
        m_codec.decompress(request.frameBuffer.data(), request.compressedSize, planes);
    } catch (const std::exception& error) {
        Log("Decompress failed: %s", error.what());
        return imBadCompression;
    }
    return imNoErr;
}

void VideoInfo::endSession(FrameRequest& request) {
    Log("Pixel format changed, ending decompression");
    try {
        m_codec.decompressEnd();
    } catch (const std::exception& error) {
        Log("Internal error: decompressEnd() failed: %s", error.what());
    }
    m_sessionActive = false;
    request.formatChanged = true;
}

csSDK_int32 VideoInfo::beginSession(const FormatInfo& info) {
    Log("Starting decompression: %s [%s]%s -> %s [%s] (pr: %s [%s])%s%s", codecTypeName(m_format.type).c_str(),
        codecColorSpaceName(m_format.colorSpace).c_str(),
        m_format.range == kQuorvaneFullRange ? " [FULL]" : " [LIMITED]", codecTypeName(info.quoType).c_str(),
        codecColorSpaceName(info.colorSpace).c_str(), PixelFormatName(info.pixelFormat),
        FourCCToString(info.pixelFormat, false).c_str(), info.isTopLeft() ? "" : " [flipped]",
        info.isAdobe16u() ? " [0-32768]" : "");
    m_sessionRequest = decodeRequest(info);
    try {
        setFormat(m_codec.decompressBegin(m_formatData, m_sessionRequest));
    } catch (const std::exception& error) {
        Log("Decompress begin failed: %s", error.what());
        return imBadCompression;
    }
    m_sessionActive = true;
    m_sessionPixelFormat = info.pixelFormat;
    return imNoErr;
}

csSDK_int32 VideoInfo::createPPix(FrameRequest& request, QuorvanePlane& plane) {
    const imFrameFormat& wanted = request.frameFormats.front();
    const prRect bounds = {0, 0, wanted.inFrameWidth, wanted.inFrameHeight};
    const prSuiteError created = m_suites.get().ppixCreator.get()->CreatePPix(
        &request.ppix, PrPPixBufferAccess_WriteOnly, static_cast<PrPixelFormat>(wanted.inPixelFormat), &bounds);
    if (created < 0) {
        request.ppix = nullptr;   // whatever a failing host left there is no frame
    }
    if (request.ppix == nullptr) {
        Log("ERROR: CreatePPix() failed: %d", created);
        return imOtherErr;
    }

    char* pixels = nullptr;
    csSDK_int32 rowBytes = 0;
    const prSuiteError pixelsError =
        request.ppixSuite->GetPixels(request.ppix, PrPPixBufferAccess_WriteOnly, &pixels);
    request.ppixSuite->GetRowBytes(request.ppix, &rowBytes);
    if (pixels == nullptr) {
        Log("ERROR: GetPixels() failed: %d", pixelsError);   // the codec would write to nowhere
        return imOtherErr;
    }
    plane.address = reinterpret_cast<std::uintptr_t>(pixels);
    plane.rowBytes = static_cast<std::uint32_t>(rowBytes);
    plane.size = m_format.height * plane.rowBytes;
    return imNoErr;
}
