// From a frame time to the compressed frame: the parts of VideoInfo that need no codec.
#include "codec/VideoInfo.h"

#include "fileio/ReadHelpers.h"
#include "host/Vocabulary.h"
#include "log/Log.h"
#include "text/FourCC.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace {

// What a time maps to when its frame cannot be told: no stream has as many frames.
constexpr std::uint32_t kNoSuchFrame = std::numeric_limits<std::uint32_t>::max();

// A frame up to this size is read unasked. Beyond it the file is asked first whether the bytes exist, so that a
// damaged index cannot make us allocate what no file backs, many times over for frames announced ahead. One question
// costs nothing beside reading as much.
constexpr std::uint64_t kTrustedFrameBytes = 4u << 20;

// Products and quotients in 64 bits; false where there is none.
bool multiply(std::int32_t factor, std::int64_t value, std::int64_t& product) {
    constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
    const std::int64_t magnitude = factor < 0 ? -static_cast<std::int64_t>(factor) : factor;
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

void readChunk(fileio::File& file, const AviChunk& chunk, ByteBuffer& buffer) {
    fileio::seekOrThrow(file, static_cast<std::int64_t>(chunk.offset));
    if (chunk.size > kTrustedFrameBytes) {
        const std::uint64_t existing = bytesThatExist(file, chunk);
        if (existing < chunk.size) {
            fileio::throwReadError(chunk.size, existing);
        }
    }
    buffer.growTo(chunk.size);
    fileio::readExact(file, buffer.data(), chunk.size);
}

}  // namespace

std::uint32_t VideoInfo::frameIndexAt(PrTime frameTime) const {
    std::int64_t ticks = 0;
    std::int64_t ticksPerFrame = 0;
    std::int64_t index = 0;
    if (multiply(m_scale, m_ticksPerSecond, ticks) && divide(ticks, m_rate, ticksPerFrame) &&
        divide(frameTime, ticksPerFrame, index)) {
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
    return hasSize(format, video) ? imNoErr : imOtherErr;
}

bool VideoInfo::hasSize(const imFrameFormat& format, FrameSize video) {
    if (format.inFrameWidth == video.width && format.inFrameHeight == video.height) {
        return true;
    }
    Log("ERROR: frame size mismatch (%d, %d) != (%d, %d)", format.inFrameWidth, format.inFrameHeight, video.width,
        video.height);
    return false;
}

// The nearest earlier frame with data, else the nearest later one, else the frame count.
std::uint64_t VideoInfo::findFrameWithData(std::uint64_t frame) const {
    for (std::uint64_t earlier = frame + 1; earlier-- > 0;) {
        if (m_stream->chunk(earlier).size != 0) {
            return earlier;
        }
    }
    std::uint64_t later = frame + 1;
    while (later < m_frameCount && m_stream->chunk(later).size == 0) {
        ++later;
    }
    return later;
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
        readChunk(m_file, chunk, request.frameBuffer);
    } catch (const std::runtime_error& error) {
        Log("Failed to read frame from AVI: %s", error.what());
        return imFileReadFailed;
    }
    request.compressedSize = chunk.size;
    return imNoErr;
}
