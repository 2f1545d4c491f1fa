#include "standin/Encoder.h"

#include "standin/CompressedTypes.h"
#include "standin/Residuals.h"
#include "standin/StreamFormat.h"

#include <zlib.h>

#include <algorithm>
#include <stdexcept>
#include <string>

namespace standin {
namespace {

// Speed matters more than size: samples are written and read far more often than stored.
constexpr int kCompressionLevel = 1;

void checkInfo(const StreamInfo& info) {
    const Result fault = checkStreamInfo(info);
    if (fault != Result::kOk)
        throw std::invalid_argument(std::string("encoder: ") + resultText(static_cast<std::uint32_t>(fault)));
}

void checkPlane(const Plane& plane, const Plane& shape, std::uint32_t bitDepth) {
    if (plane.width != shape.width || plane.height != shape.height
        || plane.samples.size() != std::size_t{plane.width} * plane.height)
        throw std::invalid_argument("encoder: a plane has not the shape of its component");
    const auto isTooLarge = [bitDepth](std::uint16_t sample) { return sample >> bitDepth != 0; };
    if (std::any_of(plane.samples.begin(), plane.samples.end(), isTooLarge))
        throw std::invalid_argument("encoder: a sample has more bits than the type");
}

void checkPicture(const StreamInfo& info, const TypeLayout& layout, const Picture& picture) {
    if (picture.planes.size() != layout.planeCount)
        throw std::invalid_argument("encoder: the picture has not the type's number of planes");
    for (std::uint32_t i = 0; i < layout.planeCount; ++i)
        checkPlane(picture.planes[i], planeShape(layout, info.width, info.height, i), layout.bitDepth);
}

std::vector<std::uint8_t> compressed(const std::vector<std::uint8_t>& bytes) {
    uLongf size = compressBound(static_cast<uLong>(bytes.size()));
    std::vector<std::uint8_t> result(size);
    if (compress2(result.data(), &size, bytes.data(), static_cast<uLong>(bytes.size()), kCompressionLevel) != Z_OK)
        throw std::runtime_error("encoder: compression failed");
    result.resize(size);
    return result;
}

}  // namespace

Picture makePicture(const StreamInfo& info) {
    checkInfo(info);
    const TypeLayout layout = typeLayout(info.type);
    Picture picture;
    for (std::uint32_t i = 0; i < layout.planeCount; ++i) {
        Plane plane = planeShape(layout, info.width, info.height, i);
        plane.samples.resize(std::size_t{plane.width} * plane.height);
        picture.planes.push_back(std::move(plane));
    }
    return picture;
}

std::vector<std::uint8_t> encodeExtraData(const StreamInfo& info) {
    checkInfo(info);
    return writeExtraData(info);
}

std::vector<std::uint8_t> encodeFrame(const StreamInfo& info, const Picture& picture) {
    checkInfo(info);
    const TypeLayout layout = typeLayout(info.type);
    checkPicture(info, layout, picture);
    std::array<std::vector<std::uint8_t>, kMaxPlanes> bytes;
    FramePlanes planes{.count = layout.planeCount, .bytes = {}};
    for (std::size_t i = 0; i < planes.count; ++i) {
        bytes[i] = compressed(toResiduals(picture.planes[i], layout.bitDepth));
        planes.bytes[i] = bytes[i];
    }
    return writeFrame(info, planes);
}

}  // namespace standin
