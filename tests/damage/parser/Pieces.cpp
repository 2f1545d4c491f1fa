#include "damage/parser/Pieces.h"

#include "aviwriter/AviFileWriter.h"
#include "standin/Encoder.h"

#include <algorithm>
#include <string_view>

namespace damage {

using namespace aviwriter;

namespace {

// 4:4:4, whose samples come out of the decoder unchanged.
const standin::StreamInfo kStream = {103, 8, 4, 1, 1};

// The size in the chunk's header.
std::uint32_t sizeIn(const Bytes& chunk) {
    std::uint32_t size = 0;
    for (std::uint32_t i = 0; i < 4; ++i) {
        size |= std::uint32_t{chunk[4 + i]} << (8 * i);
    }
    return size;
}

}  // namespace

Bytes pictureFrame(std::uint32_t number) {
    standin::Picture picture = standin::makePicture(kStream);
    for (standin::Plane& plane : picture.planes) {
        std::fill(plane.samples.begin(), plane.samples.end(), static_cast<std::uint16_t>(kFirstPictureValue + number));
    }
    return standin::encodeFrame(kStream, picture);
}

Bytes soundChunk(std::uint32_t number, const SoundShape& shape) {
    return soundData(shape, number * kSoundPerPicture, kSoundPerPicture);
}

Bytes videoFormat(const Bytes& extraData) { return bytesOf(BitmapInfo{.width = 8, .height = 4}) + extraData; }

Bytes videoFormat() { return videoFormat(standin::encodeExtraData(kStream)); }

StreamHeader videoHeader(std::uint32_t frames) { return {.type = "vids", .length = frames}; }

StreamHeader soundHeader(std::uint32_t sampleFrames) {
    return {.type = "auds", .rate = 48000, .length = sampleFrames, .sampleSize = 4};
}

Bytes streamList(const StreamHeader& header, const Bytes& format, const std::vector<Bytes>& more) {
    std::vector<Bytes> children = {strh(header), strf(format)};
    children.insert(children.end(), more.begin(), more.end());
    return list("strl", children);
}

Bytes videoList(std::uint32_t frames, const std::vector<Bytes>& more) {
    return streamList(videoHeader(frames), videoFormat(), more);
}

Bytes soundList(std::uint32_t sampleFrames, const std::vector<Bytes>& more) {
    return streamList(soundHeader(sampleFrames), waveFormatEx({}), more);
}

Bytes headers(const std::vector<Bytes>& streams) {
    std::vector<Bytes> children = {avih({.streams = static_cast<std::uint32_t>(streams.size())})};
    children.insert(children.end(), streams.begin(), streams.end());
    return list("hdrl", children);
}

std::vector<Bytes> mediaChunks(const SoundShape& shape) {
    std::vector<Bytes> chunks;
    for (std::uint32_t number = 0; number < kPictures; ++number) {
        chunks.push_back(chunk("00dc", pictureFrame(number)));
        chunks.push_back(chunk("01wb", soundChunk(number, shape)));
    }
    return chunks;
}

std::vector<Idx1Entry> entriesOf(const std::vector<Bytes>& chunks) {
    std::vector<Idx1Entry> entries;
    std::uint32_t offset = 4;
    for (const Bytes& chunk : chunks) {
        const std::string_view id(reinterpret_cast<const char*>(chunk.data()), 4);
        entries.push_back({.chunkId = id, .offset = offset, .length = sizeIn(chunk)});
        offset += static_cast<std::uint32_t>(chunk.size());
    }
    return entries;
}

std::vector<Idx1Entry> mediaEntries() {
    static const std::vector<Bytes> chunks = mediaChunks();
    return entriesOf(chunks);
}

Bytes clipOfChunks(const Bytes& hdrl, const std::vector<Bytes>& chunks) {
    return riff("AVI ", {hdrl, list("movi", chunks), idx1(entriesOf(chunks))});
}

Bytes clipWith(const Bytes& hdrl, const std::vector<Bytes>& between) {
    std::vector<Bytes> children = {hdrl};
    children.insert(children.end(), between.begin(), between.end());
    children.push_back(list("movi", mediaChunks()));
    children.push_back(idx1(mediaEntries()));
    return riff("AVI ", children);
}

Bytes clipIndexedBy(const std::vector<Idx1Entry>& entries) {
    return riff("AVI ", {headers({videoList(), soundList()}), list("movi", mediaChunks()), idx1(entries)});
}

Bytes openDmlClip(std::uint32_t segments, std::uint32_t moreRoom) {
    MemorySink sink;
    AviFileWriter writer(sink, {.index = IndexKind::openDml, .superIndexRoom = segments + moreRoom},
                         VideoTrack{.width = 8, .height = 4, .extraData = standin::encodeExtraData(kStream)},
                         {AudioTrack{}});
    for (std::uint32_t number = 0; number < kPictures; ++number) {
        if (number > 0 && number % (kPictures / segments) == 0) {
            writer.startSegment(0);
        }
        writer.writeVideo(pictureFrame(number));
        writer.writeAudio(0, soundChunk(number));
    }
    writer.finish();
    return sink.bytes();
}

std::size_t idx1EntryAt(const Bytes& file, std::size_t entry) { return positionOf(file, "idx1") + 8 + 16 * entry; }

std::size_t superEntryAt(const Bytes& file, std::size_t stream, std::size_t entry) {
    return positionOf(file, "indx", stream) + 8 + 24 + 16 * entry;
}

Bytes cutTo(Bytes file, std::size_t bytes) {
    file.resize(std::min(bytes, file.size()));
    return file;
}

}  // namespace damage
