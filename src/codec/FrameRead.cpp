// From a frame time to the compressed frame: the parts of VideoInfo that need no codec.
#include "codec/VideoInfo.h"

#include "fileio/ReadHelpers.h"
#include "host/Vocabulary.h"
#include "log/Log.h"
#include "text/FourCC.h"

#include <algorithm>
#include <limits>
#include <new>
#include <numeric>
#include <stdexcept>
#include <string>

namespace {

// What a time maps to when its frame cannot be told: no stream has as many frames.
constexpr std::uint32_t kNoSuchFrame = std::numeric_limits<std::uint32_t>::max();

// A frame up to this size is read unasked. Beyond it the file is asked first whether the bytes exist, so that a
// damaged index cannot make us allocate what no file backs, many times over for frames announced ahead. One question
// costs nothing beside reading as much.
constexpr std::uint64_t kTrustedFrameBytes = 4u << 20;

// Beyond the above, what a pixel of the picture may add to a compressed frame: twice four channels of 32 bits. A file
// can have gigabytes that take no room on its disk, and hosts announce many frames ahead.
constexpr std::uint64_t kMostBytesPerPixel = 32;

// Products and quotients in 64 bits; false where there is none. A factor has 32 bits.
bool multiply(std::int64_t factor, std::int64_t value, std::int64_t& product) {
    constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
    const std::int64_t magnitude = factor < 0 ? -factor : factor;
    if (magnitude != 0 && (value > kMax / magnitude || value < -(kMax / magnitude))) {
        return false;
    }
    product = factor * value;
    return true;
}

bool divide(std::int64_t value, std::int64_t divisor, std::int64_t& quotient) {
    if (divisor == 0 || (divisor == -1 && value == std::numeric_limits<std::int64_t>::min())) {
        return false;
    }
    quotient = value / divisor;
    return true;
}

// The chunk's bytes that the file holds.
std::uint64_t bytesThatExist(fileio::File& file, const AviChunk& chunk) {
    const auto fileSize = static_cast<std::uint64_t>(std::max<std::int64_t>(file.size(), 0));
    return chunk.offset < fileSize ? std::min<std::uint64_t>(chunk.size, fileSize - chunk.offset) : 0;
}

// Whether a picture of that size can be the reason for a compressed frame of so many bytes.
bool fitsPicture(std::uint32_t bytes, VideoInfo::FrameSize size) {
    const std::uint64_t pixels =
        std::uint64_t{static_cast<std::uint32_t>(size.width)} * static_cast<std::uint32_t>(size.height);
    return bytes <= kTrustedFrameBytes || (bytes - kTrustedFrameBytes - 1) / kMostBytesPerPixel < pixels;
}

void readChunk(fileio::File& file, const AviChunk& chunk, VideoInfo::FrameSize picture, ByteBuffer& buffer) {
    fileio::seekOrThrow(file, static_cast<std::int64_t>(chunk.offset));
    if (chunk.size > kTrustedFrameBytes) {
        const std::uint64_t existing = bytesThatExist(file, chunk);
        if (existing < chunk.size) {
            fileio::throwReadError(chunk.size, existing);
        }
        if (!fitsPicture(chunk.size, picture)) {
            throw std::runtime_error("Frame too large: size: " + std::to_string(chunk.size));
        }
    }
    buffer.growTo(chunk.size);
    fileio::readExact(file, buffer.data(), chunk.size);
}

}  // namespace

PrTime VideoInfo::findTicksPerFrame() const {
    PrTime ticks = 0;
    PrTime ticksPerFrame = 0;
    if (multiply(m_scale, m_ticksPerSecond, ticks)) {
        return divide(ticks, m_rate, ticksPerFrame) ? ticksPerFrame : 0;
    }
    // Both numbers may be multiples of an honest rate's.
    const std::int64_t common = std::gcd(std::int64_t{m_scale}, std::int64_t{m_rate});
    const bool isKnown = multiply(m_scale / common, m_ticksPerSecond, ticks) &&
                         divide(ticks, m_rate / common, ticksPerFrame);
    return isKnown ? ticksPerFrame : 0;
}

std::uint32_t VideoInfo::frameIndexAt(PrTime frameTime) const {
    std::int64_t index = 0;
    if (divide(frameTime, m_ticksPerFrame, index)) {
        return static_cast<std::uint32_t>(index);   // a negative index becomes a huge one: out of bounds
    }
    return kNoSuchFrame;
}

csSDK_int32 VideoInfo::LocateFrame(FrameRequest& request) const {
    const std::uint32_t frameIndex = frameIndexAt(request.frameTime);
    Log("inFrameTime: %lld", static_cast<long long>(request.frameTime));
    Log("frameIndex:  %u (total: %u)", frameIndex, static_cast<unsigned>(m_frameCount));
    if (frameIndex >= m_frameCount) {
        Log("frameIndex out of bounds");
        return imFrameNotFound;
    }
    request.frameIndex = frameIndex;

    Log("inNumFrameFormats: %d", static_cast<int>(request.frameFormats.size()));
    if (LogEnabled()) {
        int position = 0;
        for (const imFrameFormat& format : request.frameFormats) {
            Log("inFrameFormats[%d]: %d %d %s [%s]", position++, format.inFrameWidth, format.inFrameHeight,
                PixelFormatName(format.inPixelFormat), FourCCToString(format.inPixelFormat, false).c_str());
        }
    }
    if (request.frameFormats.empty()) {
        Log("ERROR: frameFormats is empty");
        return imOtherErr;
    }

    // The first format decides: the host was offered only what can be decoded.
    imFrameFormat& format = request.frameFormats.front();
    const FrameSize video = frameSize();
    if (format.inFrameWidth == 0) {
        format.inFrameWidth = video.width;
    }
    if (format.inFrameHeight == 0) {
        format.inFrameHeight = video.height;
    }
    if (format.inFrameWidth != video.width || format.inFrameHeight != video.height) {
        Log("ERROR: frame size mismatch (%d, %d) != (%d, %d)", format.inFrameWidth, format.inFrameHeight, video.width,
            video.height);
        return imOtherErr;
    }
    return imNoErr;
}

// The frame itself, else the nearest earlier one with data, else the nearest later one, else the frame count. Found by
// their bytes, not one by one: a damaged index can list millions of dropped frames.
std::uint64_t VideoInfo::findFrameWithData(std::uint64_t frame) const {
    const AviChunk chunk = m_stream->chunk(frame);
    if (chunk.size != 0) {
        return frame;
    }
    // The byte before a dropped frame is the last one of the nearest earlier frame with data. Where there is none, the
    // stream's first byte is that of the nearest later one.
    const std::uint64_t byte = chunk.startByte != 0 ? chunk.startByte - 1 : 0;
    return m_stream->findChunkByBytePosition(static_cast<std::int64_t>(byte)).value_or(m_frameCount);
}

csSDK_int32 VideoInfo::ReadFrame(FrameRequest& request) {
    const std::uint64_t frame = findFrameWithData(request.frameIndex);
    if (frame >= m_frameCount) {
        return imFrameNotFound;
    }
    if (frame != request.frameIndex) {
        Log("Empty frame: %u, frame read: %u", request.frameIndex, static_cast<unsigned>(frame));
    }
    const AviChunk chunk = m_stream->chunk(frame);
    try {
        readChunk(m_file, chunk, frameSize(), request.frameBuffer);
    } catch (const std::runtime_error& error) {
        Log("Failed to read frame from AVI: %s", error.what());
        return imFileReadFailed;
    } catch (const std::bad_alloc&) {
        Log("Failed to read frame from AVI: out of memory, size: %u", chunk.size);
        return imFileReadFailed;
    }
    request.compressedSize = chunk.size;
    return imNoErr;
}
