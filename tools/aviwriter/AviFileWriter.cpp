#include "aviwriter/AviFileWriter.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace aviwriter {

namespace {

constexpr std::uint64_t kLargestRiff = 0xFFFFFFFFU;      // sizes and offsets inside a RIFF have 32 bits
constexpr std::uint64_t kLargestJunk = 0x40000000U;      // a hole is split into chunks that any reader can skip
constexpr std::uint64_t kChunkHeader = 8;
constexpr std::uint64_t kIdx1Entry = 16;
constexpr std::uint64_t kSuperIndexEntry = 16;
constexpr std::uint64_t kIndexHeader = 24;
constexpr std::uint64_t kStandardIndexEntry = 8;
constexpr std::size_t kStreamHeader = 56;                // the main header has the same size
constexpr std::size_t kBufferSizeAt = 36;                // in a stream header
constexpr std::uint32_t kFlagHasIndex = 0x10;
constexpr std::uint32_t kFlagInterleaved = 0x100;
constexpr std::uint32_t kFlagKeyFrame = 0x10;

std::uint64_t paddedToEven(std::uint64_t size) {
    return size + size % 2;
}

std::uint32_t clampedTo32(std::uint64_t value) {
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(value, std::numeric_limits<std::uint32_t>::max()));
}

std::string digits(std::size_t stream) {
    return {static_cast<char>('0' + stream / 10), static_cast<char>('0' + stream % 10)};
}

Bytes waveRecord(const AudioTrack& track) {
    switch (track.record) {
        case WaveRecord::pcm16: return pcmWaveFormat(track.format);
        case WaveRecord::ex18: return waveFormatEx(track.format);
        case WaveRecord::extensible40: return waveFormatExtensible(track.format);
    }
    throw std::invalid_argument("no such sound format record");
}

}  // namespace

AviFileWriter::AviFileWriter(ByteSink& sink, const FileLayout& layout, const std::optional<VideoTrack>& video,
                             const std::vector<AudioTrack>& audio)
    : m_sink(sink), m_layout(layout), m_video(video) {
    const std::size_t count = audio.size() + (video ? 1 : 0);
    if (count == 0 || count > 100) {   // stream numbers in chunk ids have two digits
        throw std::invalid_argument("an AVI file has 1 to 100 streams");
    }
    if (video) {
        addVideo(*video);
    }
    for (const AudioTrack& track : audio) {
        addAudio(track);
    }
    append(headers());
    openMovi();
}

AviFileWriter::AviFileWriter(ByteSink& sink, const FileLayout& layout, const Bytes& mainHeader,
                             const std::vector<CopiedTrack>& tracks)
    : m_sink(sink), m_layout(layout), m_copiedMainHeader(mainHeader) {
    if (tracks.empty() || mainHeader.size() != kStreamHeader) {
        throw std::invalid_argument("no streams, or a main header of another size");
    }
    for (const CopiedTrack& track : tracks) {
        if (track.header.size() != kStreamHeader) {
            throw std::invalid_argument("a stream header of another size");
        }
        Stream stream;
        stream.header.suggestedBufferSize = u32At(track.header, kBufferSizeAt);
        stream.format = track.format;
        stream.chunkId = digits(m_streams.size()) + track.type;
        stream.indexId = "ix" + digits(m_streams.size());
        stream.copiedHeader = track.header;
        stream.more = track.more;
        stream.isVideo = track.isVideo;
        m_streams.push_back(std::move(stream));
    }
    append(headers());
    openMovi();
}

void AviFileWriter::addVideo(const VideoTrack& video) {
    if (video.rate == 0 || video.scale == 0) {
        throw std::invalid_argument("the frame rate is zero");
    }
    Stream stream;
    stream.header = {.scale = video.scale, .rate = video.rate, .right = static_cast<std::int16_t>(video.width),
                     .bottom = static_cast<std::int16_t>(video.height)};
    stream.handler = video.handler;
    stream.format = bytesOf(BitmapInfo{.width = static_cast<std::int32_t>(video.width),
                                       .height = static_cast<std::int32_t>(video.height),
                                       .compression = video.handler,
                                       .sizeImage = video.width * video.height * 3}) + video.extraData;
    stream.isVideo = true;
    stream.chunkId = digits(m_streams.size()) + "dc";
    stream.indexId = "ix" + digits(m_streams.size());
    m_streams.push_back(std::move(stream));
}

void AviFileWriter::addAudio(const AudioTrack& audio) {
    const std::uint32_t blockAlign = audio.format.blockAlign.value_or(
        static_cast<std::uint16_t>(audio.format.channels * (audio.format.bitsPerSample / 8)));
    if (blockAlign == 0) {
        throw std::invalid_argument("a sample frame of sound has no bytes");
    }
    Stream stream;
    stream.header = {.type = "auds", .rate = audio.format.samplesPerSec, .sampleSize = blockAlign, .right = 0,
                     .bottom = 0};
    stream.handler = std::string(4, '\0');
    stream.format = waveRecord(audio);
    stream.chunkId = digits(m_streams.size()) + "wb";
    stream.indexId = "ix" + digits(m_streams.size());
    stream.bytesPerSecond = std::uint64_t{blockAlign} * audio.format.samplesPerSec;
    m_streams.push_back(std::move(stream));
}

void AviFileWriter::writeVideo(const Bytes& frame) {
    if (!m_video) {
        throw std::logic_error("the file has no video stream");
    }
    writeChunk(m_streams.front(), frame, 1);
}

void AviFileWriter::writeAudio(std::size_t track, const Bytes& samples) {
    Stream& stream = m_streams.at(track + (m_video ? 1 : 0));
    writeChunk(stream, samples, clampedTo32(samples.size() / stream.header.sampleSize));
}

void AviFileWriter::writeChunk(Stream& stream, const Bytes& data, std::uint32_t length) {
    const auto size = static_cast<std::uint32_t>(data.size());
    m_sink.write(enterChunk(stream, stream.chunkId, size, size > 0, length), chunk(stream.chunkId, data));
}

std::uint64_t AviFileWriter::addChunk(std::size_t stream, const std::string& id, std::uint32_t size, bool isKey,
                                      std::uint32_t length) {
    return enterChunk(m_streams.at(stream), id, size, isKey, length);
}

std::uint64_t AviFileWriter::enterChunk(Stream& stream, const std::string& id, std::uint32_t size, bool isKey,
                                        std::uint32_t length) {
    const bool segmentHasData = m_end > m_movi + 12;
    const std::uint64_t segmentLimit = std::min(m_layout.segmentBytes, kLargestRiff);
    if (hasOpenDml() && segmentHasData && segmentSizeWith(size) > segmentLimit) {
        startSegment(0);
    }
    if (segmentSizeWith(size) > kLargestRiff) {
        throw std::length_error("the segment would outgrow 4 GiB");
    }

    const std::uint64_t position = m_end;
    const auto offset = static_cast<std::uint32_t>(position - m_movi);
    m_end += kChunkHeader + paddedToEven(size);
    if (hasIdx1() && m_firstRiffSize == 0) {
        m_idx1 = std::move(m_idx1) + bytesOf(Idx1Entry{.chunkId = id,
                                                       .flags = isKey ? kFlagKeyFrame : 0,
                                                       .offset = offset - 8,   // relative to the list's type
                                                       .length = size});
    }
    if (hasOpenDml()) {
        stream.segmentEntries.push_back({offset + 8, isKey ? size : size | kNotKeyFrame});
    }
    stream.segmentLength += length;
    stream.header.length += length;
    stream.header.suggestedBufferSize = std::max(stream.header.suggestedBufferSize, size);
    return position;
}

// The final size of the current RIFF if a chunk of `chunkBytes` data bytes is added.
std::uint64_t AviFileWriter::segmentSizeWith(std::size_t chunkBytes) const {
    std::uint64_t size = m_end - m_riff + kChunkHeader + paddedToEven(chunkBytes);
    if (hasIdx1() && m_firstRiffSize == 0) {
        size += kChunkHeader + m_idx1.size() + kIdx1Entry;
    }
    if (hasOpenDml()) {
        for (const Stream& stream : m_streams) {
            size += kChunkHeader + kIndexHeader + kStandardIndexEntry * (stream.segmentEntries.size() + 1);
        }
    }
    return size;
}

void AviFileWriter::startSegment(std::uint64_t hole) {
    if (!hasOpenDml()) {
        writeHole(hole);
        return;
    }
    endSegment();
    writeHole(hole);
    m_riff = m_end;
    append(text("RIFF") + u32(0) + text("AVIX"));
    openMovi();
}

void AviFileWriter::openMovi() {
    m_movi = m_end;
    append(text("LIST") + u32(0) + text("movi"));
}

void AviFileWriter::endSegment() {
    if (hasOpenDml()) {
        writeStandardIndexes();
    }
    patchSize(m_movi);
    const bool first = m_firstRiffSize == 0;
    if (first && hasIdx1()) {
        append(chunk("idx1", m_idx1));
    }
    patchSize(m_riff);
    if (first) {
        m_firstRiffSize = m_end - m_riff - kChunkHeader;
        m_firstRiffFrames = videoLength();
    }
}

void AviFileWriter::writeHole(std::uint64_t hole) {
    if (hole > 0 && hole < kChunkHeader) {
        throw std::invalid_argument("a hole is 0 or at least 8 bytes");
    }
    for (std::uint64_t left = paddedToEven(hole); left > 0;) {
        std::uint64_t piece = std::min(left, kLargestJunk);
        if (left > piece && left - piece < kChunkHeader) {
            piece -= kChunkHeader;   // the rest must be large enough for a chunk header
        }
        m_sink.write(m_end, text("JUNK") + u32(static_cast<std::uint32_t>(piece - kChunkHeader)));
        m_end += piece;
        left -= piece;
    }
}

void AviFileWriter::writeStandardIndexes() {
    for (Stream& stream : m_streams) {
        if (stream.segmentEntries.empty()) {
            continue;
        }
        if (stream.superEntries.size() >= m_layout.superIndexRoom) {
            throw std::length_error("more segments than the super index has room for");
        }
        const Bytes index = ix(stream.indexId, {.chunkId = stream.chunkId, .baseOffset = m_movi,
                                                .entries = std::move(stream.segmentEntries)});
        stream.superEntries.push_back({m_end, static_cast<std::uint32_t>(index.size()), stream.segmentLength});
        stream.segmentEntries = {};
        stream.segmentLength = 0;
        append(index);
    }
}

void AviFileWriter::finish() {
    endSegment();
    m_sink.write(0, headers());
}

// Everything before the first "movi" list; its length does not depend on the counts.
Bytes AviFileWriter::headers() const {
    std::vector<Bytes> children = {m_copiedMainHeader.empty() ? avih(mainHeader())
                                                              : chunk("avih", copiedMainHeader())};
    for (const Stream& stream : m_streams) {
        children.push_back(streamList(stream));
    }
    if (hasOpenDml()) {
        children.push_back(odml(videoLength()));
    }
    return join({text("RIFF"), u32(static_cast<std::uint32_t>(m_firstRiffSize)), text("AVI "), list("hdrl", children)});
}

// Of the first video stream.
std::uint32_t AviFileWriter::videoLength() const {
    const auto video = std::find_if(m_streams.begin(), m_streams.end(),
                                    [](const Stream& stream) { return stream.isVideo; });
    return video != m_streams.end() ? video->header.length : 0;
}

// What this writer decides, in the other file's header.
Bytes AviFileWriter::copiedMainHeader() const {
    const MainHeader own = mainHeader();
    Bytes header = m_copiedMainHeader;
    overwrite(header, 12, u32(u32At(header, 12) | own.flags));
    overwrite(header, 16, u32(own.totalFrames));
    overwrite(header, 24, u32(own.streams));
    overwrite(header, 28, u32(std::max(u32At(header, 28), own.suggestedBufferSize)));
    return header;
}

MainHeader AviFileWriter::mainHeader() const {
    MainHeader header = {.flags = kFlagInterleaved | (hasIdx1() ? kFlagHasIndex : 0),
                         .totalFrames = m_firstRiffFrames,
                         .streams = static_cast<std::uint32_t>(m_streams.size()), .width = 0, .height = 0};
    std::uint64_t bytesPerSecond = 0;
    for (const Stream& stream : m_streams) {
        header.suggestedBufferSize = std::max(header.suggestedBufferSize, stream.header.suggestedBufferSize);
        bytesPerSecond += stream.bytesPerSecond;
    }
    if (m_video) {
        const std::uint64_t rate = m_video->rate;
        const std::uint64_t scale = m_video->scale;
        header.microSecPerFrame = clampedTo32(1000000 * scale / rate);
        header.width = m_video->width;
        header.height = m_video->height;
        bytesPerSecond += m_streams.front().header.suggestedBufferSize * rate / scale;
    }
    header.maxBytesPerSec = clampedTo32(bytesPerSecond);
    return header;
}

Bytes AviFileWriter::streamHeader(const Stream& stream) const {
    if (!stream.copiedHeader.empty()) {
        Bytes header = stream.copiedHeader;
        overwrite(header, kBufferSizeAt, u32(stream.header.suggestedBufferSize));
        return chunk("strh", header);
    }
    StreamHeader header = stream.header;
    header.handler = stream.handler;
    return strh(header);
}

Bytes AviFileWriter::streamList(const Stream& stream) const {
    std::vector<Bytes> children = {streamHeader(stream), strf(stream.format), stream.more};
    if (hasOpenDml()) {
        const std::uint64_t unused = m_layout.superIndexRoom - stream.superEntries.size();
        children.push_back(chunk("indx", bytesOf(SuperIndex{.chunkId = stream.chunkId,
                                                            .entries = stream.superEntries}) +
                                             filled(kSuperIndexEntry * unused)));
    }
    return list("strl", children);
}

void AviFileWriter::append(const Bytes& data) {
    m_sink.write(m_end, data);
    m_end += data.size();
}

// Sets the size of the chunk or list that ends at the current end of the file.
void AviFileWriter::patchSize(std::uint64_t chunkPosition) {
    const std::uint64_t size = m_end - chunkPosition - kChunkHeader;
    if (size > kLargestRiff) {
        throw std::length_error("the segment would outgrow 4 GiB");
    }
    m_sink.write(chunkPosition + 4, u32(static_cast<std::uint32_t>(size)));
}

}  // namespace aviwriter
