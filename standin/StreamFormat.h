// The bytes of a stand-in stream: its extra data and the header of its frames (docs/standin-codec.md).
#pragma once

#include "standin/Encoder.h"
#include "standin/Result.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace standin {

constexpr std::size_t kMaxPlanes = 4;

// ---- Extra data: magic, version, type, width, height, colour space, range, each 32 bits
constexpr std::uint32_t kExtraDataMagicNumber = 0x31585351;   // "QSX1"
constexpr std::uint32_t kExtraDataVersionNumber = 1;
constexpr std::size_t kExtraDataBytes = 28;

std::vector<std::uint8_t> writeExtraData(const StreamInfo& info);

// All fields are checked, so this codec can decode the returned stream. Throws Refusal.
StreamInfo readExtraData(std::span<const std::uint8_t> bytes);

// Returns the first error of a stream's description, or kOk.
Result checkStreamInfo(const StreamInfo& info);

// ---- Frame header: magic, total bytes, type and plane count, width and height, compressed bytes of each plane
constexpr std::uint32_t kFrameMagicNumber = 0x31465351;   // "QSF1"

constexpr std::size_t frameHeaderBytes(std::size_t planeCount) {
    return 16 + 4 * planeCount;
}

// The compressed planes of a frame.
struct FramePlanes {
    std::size_t count = 0;
    std::array<std::span<const std::uint8_t>, kMaxPlanes> bytes;
};

std::vector<std::uint8_t> writeFrame(const StreamInfo& info, const FramePlanes& planes);

// Finds the planes in a frame of the stream; they point into `frame`. Throws Refusal.
FramePlanes readFrame(const StreamInfo& info, std::span<const std::uint8_t> frame);

}  // namespace standin
