// The decoder of one stream: a codec instance and, from the first frame on, the session that runs on it.
#pragma once

#include "codec/CodecInstance.h"
#include "codec/FrameRequest.h"
#include "codec/PixelFormatTables.h"
#include "sdk/SdkImporter.h"

#include <atomic>
#include <cstdint>
#include <vector>

// frameSize() may be called on any thread; calls of the other functions must not overlap. The others return host
// results.
class DecodeSession {
public:
    // Asks the codec to describe the stream. Returns imBadFile if it cannot.
    csSDK_int32 open(std::vector<std::uint8_t> compressedFormat);

    // The stream's format until a session begins, then what the session delivers.
    const QuorvaneFormat& format() const { return m_format; }
    FrameSize frameSize() const { return m_frameSize.load(std::memory_order_relaxed); }

    // Ensures that a session runs that delivers what the request wants, ending one in another pixel format. Returns
    // imBadCompression, or imOtherErr if its pictures are larger than the request's. Throws std::runtime_error for a
    // pixel format that is not in the tables.
    csSDK_int32 begin(FrameRequest& request);

    // Decodes the request's bytes into its frame buffer. Returns imBadCompression if the codec fails.
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
