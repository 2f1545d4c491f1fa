#include "codec/FrameRead.h"

#include "fileio/ReadHelpers.h"
#include "log/Log.h"

#include <algorithm>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>

namespace {

// Frames up to this size are read without asking the file whether the bytes exist. Larger ones are checked first, so
// that a damaged index cannot make us allocate memory for bytes that do not exist, once for each frame announced ahead
// of time. The check costs nothing compared with the read.
constexpr std::uint64_t kTrustedFrameBytes = 4u << 20;

// Above that size, the largest number of compressed bytes per pixel: twice four channels of 32 bits. A sparse file can
// hold gigabytes that take no disk space, and hosts announce many frames.
constexpr std::uint64_t kMostBytesPerPixel = 32;

// Number of the chunk's bytes that the file holds.
std::uint64_t bytesThatExist(fileio::File& file, const AviChunk& chunk) {
    const auto fileSize = static_cast<std::uint64_t>(std::max<std::int64_t>(file.size(), 0));
    return chunk.offset < fileSize ? std::min<std::uint64_t>(chunk.size, fileSize - chunk.offset) : 0;
}

void readChunk(fileio::File& file, const AviChunk& chunk, FrameSize picture, ByteBuffer& buffer) {
    const std::uint64_t pixels =
        std::uint64_t{static_cast<std::uint32_t>(picture.width)} * static_cast<std::uint32_t>(picture.height);
    fileio::seekOrThrow(file, static_cast<std::int64_t>(chunk.offset));
    if (chunk.size > kTrustedFrameBytes) {
        const std::uint64_t existing = bytesThatExist(file, chunk);
        if (existing < chunk.size) {
            fileio::throwReadError(chunk.size, existing);
        }
        if ((chunk.size - kTrustedFrameBytes - 1) / kMostBytesPerPixel >= pixels) {
            throw std::runtime_error("Frame too large: size: " + std::to_string(chunk.size));
        }
    }
    buffer.growTo(chunk.size);
    fileio::readExact(file, buffer.data(), chunk.size);
}

// Returns the frame itself, else the nearest earlier one with data, else the nearest later one. Searches by byte
// position instead of frame by frame: a damaged index can list millions of dropped frames.
std::optional<AviChunk> findFrameWithData(const AviStream& stream, std::uint32_t frame) {
    const AviChunk chunk = stream.chunk(frame);
    if (chunk.size != 0) {
        return chunk;
    }
    // The byte before a dropped frame is the last byte of the nearest earlier frame with data. If there is none, byte 0
    // of the stream belongs to the nearest later one.
    const std::uint64_t byte = chunk.startByte != 0 ? chunk.startByte - 1 : 0;
    const std::optional<std::size_t> other = stream.findChunkByBytePosition(static_cast<std::int64_t>(byte));
    if (!other) {
        return std::nullopt;
    }
    Log("Empty frame: %u, frame read: %u", frame, static_cast<unsigned>(*other));
    return stream.chunk(*other);
}

}  // namespace

csSDK_int32 readFrame(fileio::File& file, const AviStream& stream, FrameSize picture, FrameRequest& request) {
    const std::optional<AviChunk> chunk = findFrameWithData(stream, request.frameIndex);
    if (!chunk) {
        return imFrameNotFound;
    }
    try {
        readChunk(file, *chunk, picture, request.frameBuffer());
    } catch (const std::runtime_error& error) {
        Log("Failed to read frame from AVI: %s", error.what());
        return imFileReadFailed;
    } catch (const std::bad_alloc&) {
        Log("Failed to read frame from AVI: out of memory, size: %u", chunk->size);
        return imFileReadFailed;
    }
    request.compressedSize = chunk->size;
    return imNoErr;
}
