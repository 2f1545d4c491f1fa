#include "damage/Pieces.h"

#include "standin/Encoder.h"

#include <algorithm>

namespace damage {

using namespace aviwriter;

namespace {

// 4:4:4: a sample comes out of the decoder as it went in.
const standin::StreamInfo kStream = {103, 8, 4, 1, 1};

}  // namespace

Bytes pictureFrame(std::uint32_t number) {
    standin::Picture picture = standin::makePicture(kStream);
    for (standin::Plane& plane : picture.planes) {
        std::fill(plane.samples.begin(), plane.samples.end(), static_cast<std::uint16_t>(kFirstPictureValue + number));
    }
    return standin::encodeFrame(kStream, picture);
}

Bytes videoFormat() { return bytesOf(BitmapInfo{.width = 8, .height = 4}) + standin::encodeExtraData(kStream); }

Bytes videoList(std::uint32_t frames, const std::vector<Bytes>& more) {
    std::vector<Bytes> children = {strh({.type = "vids", .length = frames}), strf(videoFormat())};
    children.insert(children.end(), more.begin(), more.end());
    return list("strl", children);
}

Bytes soundList(std::uint32_t sampleFrames, const std::vector<Bytes>& more) {
    std::vector<Bytes> children = {strh({.type = "auds", .rate = 48000, .length = sampleFrames, .sampleSize = 4}),
                                   strf(waveFormatEx({}))};
    children.insert(children.end(), more.begin(), more.end());
    return list("strl", children);
}

Bytes headers(const std::vector<Bytes>& streams) {
    std::vector<Bytes> children = {avih({.streams = static_cast<std::uint32_t>(streams.size())})};
    children.insert(children.end(), streams.begin(), streams.end());
    return list("hdrl", children);
}

}  // namespace damage
