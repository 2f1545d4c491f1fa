#include "ClipSketch.h"

#include <algorithm>
#include <string>

namespace {

standin::StreamInfo infoOf(const VideoSketch& video) {
    return {video.type, video.width, video.height, video.colorSpace, video.range};
}

std::string chunkIdOf(std::size_t stream, const StreamSketch& sketch) {
    return std::string("0") + std::to_string(stream) + (sketch.header.type == "auds" ? "wb" : "dc");
}

}  // namespace

Bytes frameOf(const VideoSketch& video, std::uint16_t value) {
    standin::Picture picture = standin::makePicture(infoOf(video));
    for (standin::Plane& plane : picture.planes) {
        std::fill(plane.samples.begin(), plane.samples.end(), value);
    }
    return standin::encodeFrame(infoOf(video), picture);
}

std::vector<Bytes> framesOf(const VideoSketch& video, std::uint32_t count) {
    std::vector<Bytes> frames;
    for (std::uint32_t number = 0; number < count; ++number) {
        frames.push_back(frameOf(video, static_cast<std::uint16_t>(kFirstFrameValue + number)));
    }
    return frames;
}

Bytes extraDataOf(const VideoSketch& video) {
    return standin::encodeExtraData(infoOf(video));
}

StreamSketch videoStream(const VideoSketch& video) {
    using namespace aviwriter;
    const BitmapInfo bitmap = {.width = static_cast<std::int32_t>(video.width),
                               .height = static_cast<std::int32_t>(video.height)};
    return {.header = {.type = "vids",
                       .handler = video.handler,
                       .scale = video.scale,
                       .rate = video.rate,
                       .length = static_cast<std::uint32_t>(video.frames.size())},
            .format = bytesOf(bitmap) + (video.extraData ? *video.extraData : extraDataOf(video)),
            .chunks = video.frames};
}

StreamSketch audioStream(const AudioSketch& audio) {
    using namespace aviwriter;
    return {.header = {.type = "auds",
                       .handler = std::string_view("\0\0\0\0", 4),
                       .rate = 48000,
                       .length = audio.length,
                       .sampleSize = 4},
            .format = audio.format.value_or(waveFormatEx({})),
            .chunks = audio.chunks};
}

StreamSketch shortVideo(std::uint32_t frames, VideoSketch video) {
    video.frames = framesOf(video, frames);
    return videoStream(video);
}

Bytes aviFile(const std::vector<StreamSketch>& streams) {
    using namespace aviwriter;
    std::vector<Bytes> headers = {avih({.streams = static_cast<std::uint32_t>(streams.size())})};
    std::vector<Bytes> chunks;
    Bytes index;
    std::uint32_t offset = 4;                   // the first chunk follows the list's type
    for (std::size_t number = 0; number < streams.size(); ++number) {
        const StreamSketch& stream = streams[number];
        headers.push_back(list("strl", {strh(stream.header), strf(stream.format)}));
        const std::string id = chunkIdOf(number, stream);
        for (const Bytes& data : stream.chunks) {
            chunks.push_back(chunk(id, data));
            index = index + bytesOf(Idx1Entry{.chunkId = id,
                                              .offset = offset,
                                              .length = static_cast<std::uint32_t>(data.size())});
            offset += static_cast<std::uint32_t>(chunks.back().size());
        }
    }
    return riff("AVI ", {list("hdrl", headers), list("movi", chunks), chunk("idx1", index)});
}
