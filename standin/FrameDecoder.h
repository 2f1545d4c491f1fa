// Decompresses one frame to a picture in the stream's own components.
#pragma once

#include "standin/Encoder.h"

#include <cstdint>
#include <span>
#include <vector>

namespace standin {

class FrameDecoder {
public:
    // `info` must have been checked (see readExtraData).
    explicit FrameDecoder(const StreamInfo& info) : m_info(info) {}

    // The picture, valid until the next call. Throws Refusal and std::bad_alloc; later frames are not affected.
    const Picture& decode(std::span<const std::uint8_t> frame);

private:
    void decodePlane(std::span<const std::uint8_t> compressed, std::uint32_t bitDepth, Plane& plane);

    StreamInfo m_info;
    Picture m_picture;
    std::vector<std::uint8_t> m_residuals;
};

}  // namespace standin
