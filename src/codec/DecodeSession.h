// The decoder of one stream: a codec instance, and the session that runs on it from the first frame on.
#pragma once

#include "codec/CodecInstance.h"
#include "codec/FrameRequest.h"
#include "codec/PixelFormatTables.h"
#include "sdk/SdkImporter.h"

#include <atomic>
#include <cstdint>
#include <vector>

// frameSize() may be called on any thread; of the other functions one at a time. All but these give a host result.
class DecodeSession {
public:
    // Asks the codec what the stream is: imBadFile when it does not know.
    csSDK_int32 open(std::vector<std::uint8_t> compressedFormat);

    // The stream's, until a session begins; then what the session delivers.
    const QuorvaneFormat& format() const { return m_format; }
    FrameSize frameSize() const { return m_frameSize.load(std::memory_order_relaxed); }

    // Has a session run that delivers what the request wants, ending one in another pixel format: imBadCompression,
    // or imOtherErr when its pictures have no room in the request's. Throws std::runtime_error for a pixel format that
    // is not in the tables.
    csSDK_int32 begin(FrameRequest& request);

    // Decodes the request's bytes into its frame buffer: imBadCompression.
    csSDK_int32 decode(FrameRequest& request);

private:
    csSDK_int32 beginIn(const FormatInfo& info);
    void end();
    void setFormat(const QuorvaneFormat& format);

    CodecInstance m_codec;
    std::vector<std::uint8_t> m_compressedFormat;
    QuorvaneFormat m_format;
    std::atomic<FrameSize> m_frameSize;   // of m_format
    bool m_isActive = false;
    std::uint32_t m_pixelFormat = PrPixelFormat_Invalid;
};
