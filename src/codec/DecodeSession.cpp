#include "codec/DecodeSession.h"

#include "codec/DecodeFormats.h"
#include "host/Vocabulary.h"
#include "log/Log.h"
#include "text/FourCC.h"

#include <array>
#include <exception>
#include <utility>

csSDK_int32 DecodeSession::open(std::vector<std::uint8_t> compressedFormat) {
    m_compressedFormat = std::move(compressedFormat);
    if (m_compressedFormat.empty()) {
        Log("Compressed format size is invalid");
        return imBadFile;
    }
    QuorvaneFormat format;
    if (const csSDK_int32 result = queryStream(m_codec, m_compressedFormat, format); result != imNoErr) {
        return result;
    }
    setFormat(format);
    Log("Compressed format info: %d x %d, %s (%d), %s (%d), range: %d", static_cast<int>(format.width),
        static_cast<int>(format.height), codecTypeName(format.type).c_str(), static_cast<int>(format.type),
        codecColorSpaceName(format.colorSpace).c_str(), static_cast<int>(format.colorSpace),
        static_cast<int>(format.range));
    return imNoErr;
}

csSDK_int32 DecodeSession::begin(FrameRequest& request) {
    const imFrameFormat& wanted = request.frameFormats().front();
    const FormatInfo& info = GetFormatInfo_by_pixelFormat(wanted.inPixelFormat);
    if (m_isActive && m_pixelFormat != info.pixelFormat) {
        end();
        request.formatChanged = true;
    }
    if (!m_isActive) {
        if (const csSDK_int32 result = beginIn(info); result != imNoErr) {
            return result;
        }
    }
    const std::int64_t width = wanted.inFrameWidth;
    const std::int64_t height = wanted.inFrameHeight;
    if (m_format.width > width || m_format.height > height) {   // the codec would write past the frame buffer
        Log("ERROR: the codec delivers %u x %u, more than the frame of %d x %d", m_format.width, m_format.height,
            wanted.inFrameWidth, wanted.inFrameHeight);
        return imOtherErr;
    }
    return imNoErr;
}

csSDK_int32 DecodeSession::beginIn(const FormatInfo& info) {
    Log("Starting decompression: %s [%s]%s -> %s [%s] (pr: %s [%s])%s%s", codecTypeName(m_format.type).c_str(),
        codecColorSpaceName(m_format.colorSpace).c_str(),
        m_format.range == kQuorvaneFullRange ? " [FULL]" : " [LIMITED]", codecTypeName(info.quoType).c_str(),
        codecColorSpaceName(info.colorSpace).c_str(), PixelFormatName(info.pixelFormat),
        FourCCToString(info.pixelFormat, false).c_str(), info.isTopLeft() ? "" : " [flipped]",
        info.isAdobe16u() ? " [0-32768]" : "");
    try {
        setFormat(m_codec.decompressBegin(m_compressedFormat, decodeRequest(info)));
    } catch (const std::exception& error) {
        Log("Decompress begin failed: %s", error.what());
        return imBadCompression;
    }
    m_isActive = true;
    m_pixelFormat = info.pixelFormat;
    return imNoErr;
}

void DecodeSession::end() {
    Log("Pixel format changed, ending decompression");
    try {
        m_codec.decompressEnd();
    } catch (const std::exception& error) {
        Log("Internal error: decompressEnd() failed: %s", error.what());
    }
    m_isActive = false;
}

csSDK_int32 DecodeSession::decode(FrameRequest& request) {
    std::array<QuorvanePlane, 4> planes;
    planes[0] = {request.pixels, request.rowBytes, m_format.height * request.rowBytes};
    try {
        m_codec.decompress(request.frameBuffer().data(), request.compressedSize, planes);
        return imNoErr;
    } catch (const std::exception& error) {
        Log("Decompress failed: %s", error.what());
        return imBadCompression;
    }
}

void DecodeSession::setFormat(const QuorvaneFormat& format) {
    m_format = format;
    m_frameSize.store({static_cast<csSDK_int32>(format.width), static_cast<csSDK_int32>(format.height)},
                      std::memory_order_relaxed);
}
