#include "standin/FrameDecoder.h"

#include "standin/CompressedTypes.h"
#include "standin/Residuals.h"
#include "standin/StreamFormat.h"

#include <zlib.h>

namespace standin {
namespace {

// Deflate expands data at most 1032 times. A frame that claims more is refused before memory is allocated.
constexpr std::size_t kMaxExpansion = 1040;

void inflateExactly(std::span<const std::uint8_t> compressed, std::vector<std::uint8_t>& bytes) {
    uLongf written = static_cast<uLongf>(bytes.size());
    uLong read = static_cast<uLong>(compressed.size());
    const int status = uncompress2(bytes.data(), &written, compressed.data(), &read);
    if (status == Z_MEM_ERROR)
        throw Refusal(Result::kOutOfMemory);
    require(status == Z_OK && written == bytes.size() && read == compressed.size(), Result::kFrameData);
}

}  // namespace

const Picture& FrameDecoder::decode(std::span<const std::uint8_t> frame) {
    const TypeLayout& layout = findCompressedType(m_info.type)->layout;
    const FramePlanes planes = readFrame(m_info, frame);
    m_picture.planes.resize(planes.count);
    for (std::uint32_t i = 0; i < planes.count; ++i) {
        Plane& plane = m_picture.planes[i];
        const Plane shape = planeShape(layout, m_info.width, m_info.height, i);
        plane.width = shape.width;
        plane.height = shape.height;
        decodePlane(planes.bytes[i], layout.bitDepth, plane);
    }
    return m_picture;
}

void FrameDecoder::decodePlane(std::span<const std::uint8_t> compressed, std::uint32_t bitDepth, Plane& plane) {
    const std::size_t size = residualBytes(plane, bitDepth);
    require(size <= compressed.size() * kMaxExpansion, Result::kFrameTooSmall);
    m_residuals.resize(size);
    inflateExactly(compressed, m_residuals);
    fromResiduals(m_residuals, bitDepth, plane);
}

}  // namespace standin
