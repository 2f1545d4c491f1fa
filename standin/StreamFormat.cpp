#include "standin/StreamFormat.h"

#include "standin/Bytes.h"
#include "standin/CompressedTypes.h"

namespace standin {

Result checkStreamInfo(const StreamInfo& info) {
    if (!findCompressedType(info.type))
        return Result::kExtraDataType;
    if (!areGoodDimensions(info.width, info.height))
        return Result::kExtraDataDimensions;
    if (info.colorSpace != 1 && info.colorSpace != 2)
        return Result::kExtraDataColorSpace;
    if (info.range != 1 && info.range != 2)
        return Result::kExtraDataRange;
    return Result::kOk;
}

std::vector<std::uint8_t> writeExtraData(const StreamInfo& info) {
    const std::uint32_t words[] = {kExtraDataMagicNumber, kExtraDataVersionNumber, info.type,
                                   info.width, info.height, info.colorSpace, info.range};
    std::vector<std::uint8_t> bytes(kExtraDataBytes);
    std::uint8_t* at = bytes.data();
    for (const std::uint32_t word : words) {
        store32(at, word);
        at += 4;
    }
    return bytes;
}

StreamInfo readExtraData(std::span<const std::uint8_t> bytes) {
    require(bytes.size() == kExtraDataBytes, Result::kExtraDataSize);
    const std::uint8_t* at = bytes.data();
    require(load32(at) == kExtraDataMagicNumber, Result::kExtraDataMagic);
    require(load32(at + 4) == kExtraDataVersionNumber, Result::kExtraDataVersion);
    const StreamInfo info = {.type = load32(at + 8), .width = load32(at + 12), .height = load32(at + 16),
                             .colorSpace = load32(at + 20), .range = load32(at + 24)};
    const Result fault = checkStreamInfo(info);
    require(fault == Result::kOk, fault);
    return info;
}

std::vector<std::uint8_t> writeFrame(const StreamInfo& info, const FramePlanes& planes) {
    std::vector<std::uint8_t> frame(frameHeaderBytes(planes.count));
    for (std::size_t i = 0; i < planes.count; ++i) {
        store32(&frame[16 + 4 * i], static_cast<std::uint32_t>(planes.bytes[i].size()));
        frame.insert(frame.end(), planes.bytes[i].begin(), planes.bytes[i].end());
    }
    store32(&frame[0], kFrameMagicNumber);
    store32(&frame[4], static_cast<std::uint32_t>(frame.size()));
    store16(&frame[8], info.type);
    store16(&frame[10], static_cast<std::uint32_t>(planes.count));
    store16(&frame[12], info.width);
    store16(&frame[14], info.height);
    return frame;
}

FramePlanes readFrame(const StreamInfo& info, std::span<const std::uint8_t> frame) {
    FramePlanes planes{.count = findCompressedType(info.type)->layout.planeCount, .bytes = {}};
    const std::size_t headerBytes = frameHeaderBytes(planes.count);
    require(frame.size() >= headerBytes, Result::kFrameTruncated);
    const std::uint8_t* at = frame.data();
    require(load32(at) == kFrameMagicNumber, Result::kFrameMagic);
    require(load32(at + 4) <= frame.size(), Result::kFrameTruncated);
    require(load32(at + 4) == frame.size(), Result::kFrameSizes);
    require(load16(at + 8) == info.type && load16(at + 10) == planes.count, Result::kFrameType);
    require(load16(at + 12) == info.width && load16(at + 14) == info.height, Result::kFrameDimensions);

    std::span<const std::uint8_t> rest = frame.subspan(headerBytes);
    for (std::size_t i = 0; i < planes.count; ++i) {
        const std::size_t size = load32(at + 16 + 4 * i);
        require(size <= rest.size(), Result::kFrameSizes);
        planes.bytes[i] = rest.first(size);
        rest = rest.subspan(size);
    }
    require(rest.empty(), Result::kFrameSizes);
    return planes;
}

}  // namespace standin
