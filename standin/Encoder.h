// The stand-in codec's encoder: creates the compressed streams that the stand-in quorvane_common64 library decodes. For
// the sample writer and the tests; the codec library does not export it.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace standin {

// Describes a stream. `type` is a compressed type number (101 ... 118, see docs/standin-codec.md).
struct StreamInfo {
    std::uint32_t type = 0;
    std::uint32_t width = 0;        // pixels
    std::uint32_t height = 0;       // pixels
    std::uint32_t colorSpace = 0;   // 1 Rec.601, 2 Rec.709
    std::uint32_t range = 0;        // 1 limited, 2 full
};

// Samples of one component, top row first, without gaps between rows.
struct Plane {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::vector<std::uint16_t> samples;   // width * height values at the type's bit depth
};

// One picture in a compressed type's own components: R G B [A], Y U V [A], or Y alone.
// Subsampled planes are (width + 1) / 2 wide and, for 4:2:0, (height + 1) / 2 high.
struct Picture {
    std::vector<Plane> planes;
};

// Components, bit depth and subsampling of a compressed type; throws std::invalid_argument for an unknown one.
struct TypeLayout {
    std::uint32_t planeCount = 0;
    std::uint32_t bitDepth = 0;
    std::uint32_t xSubsampling = 1;   // of planes 1 and 2 of YUV types
    std::uint32_t ySubsampling = 1;
    bool rgb = false;
    bool alpha = false;
};
TypeLayout typeLayout(std::uint32_t type);

// The functions below throw std::invalid_argument for an invalid description, and encodeFrame also for a picture of the
// wrong shape or with samples that exceed the bit depth.

// A picture of the right shape for the stream, all samples 0.
Picture makePicture(const StreamInfo& info);

// The stream's format extra data: the bytes after the BITMAPINFOHEADER in "strf".
std::vector<std::uint8_t> encodeExtraData(const StreamInfo& info);

// One compressed frame, lossless; `picture` must have the shape that makePicture returns. Thread-safe.
std::vector<std::uint8_t> encodeFrame(const StreamInfo& info, const Picture& picture);

}  // namespace standin
