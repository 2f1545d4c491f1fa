#include "avi/AviStream.h"

#include "avi/RecordReader.h"
#include "text/FourCC.h"

#include <stdexcept>

namespace {

// Two digits and "??": the stream's type, which decides the last two characters, is not known yet. Nothing compares
// with this value; it appears in dumps of streams without an OpenDML index.
std::uint32_t defaultChunkId(std::uint32_t streamNumber) {
    const std::uint32_t tens = ('0' + streamNumber / 10) & 0xFF;
    const std::uint32_t ones = '0' + streamNumber % 10;
    return tens | ones << 8 | (fourCC("\0\0??"));
}

std::size_t baseFormatSize(std::uint32_t fccType) {
    switch (fccType) {
    case fourCC("vids"): return avi::kBitmapInfoHeaderSize;
    case fourCC("auds"): return avi::kWaveFormatExSize;
    default: return 0;
    }
}

}  // namespace

AviStream::AviStream(std::uint32_t streamNumber) : m_streamNumber(streamNumber) {
    m_superIndexHeader.wLongsPerEntry = avi::kSuperIndexLongsPerEntry;
    m_superIndexHeader.dwChunkId = defaultChunkId(streamNumber);
}

std::vector<std::uint8_t> AviStream::formatExtraData() const {
    const std::size_t base = baseFormatSize(m_header.fccType);
    if (m_format.size() <= base) {
        return {};
    }
    return {m_format.begin() + static_cast<std::ptrdiff_t>(base), m_format.end()};
}

AviChunk AviStream::chunk(std::size_t index) const {
    const ChunkList& chunks = activeChunks();
    if (index >= chunks.size()) {
        throw std::out_of_range("chunk " + std::to_string(index) + " of " + std::to_string(chunks.size()));
    }
    return chunks[index];
}

std::optional<std::size_t> AviStream::findChunkByBytePosition(std::int64_t pos) const {
    if (pos < 0) {
        return std::nullopt;
    }
    return activeChunks().findByBytePosition(static_cast<std::uint64_t>(pos));
}

bool AviStream::parse(ParseContext& context, const ChunkNode& strl) {
    const ChunkNode* strh = context.tree.child(strl, fourCC("strh"));
    if (!strh) {
        report(context, "strh missing in strl");
        return false;
    }
    const ChunkNode* strf = context.tree.child(strl, fourCC("strf"));
    if (!strf) {
        report(context, "strf missing in strl");
        return false;
    }
    if (!context.reader.readChunkData(*strh, &m_header, sizeof m_header)) {
        report(context, "strh data read error");
        return false;
    }
    if (!readFormat(context, *strf)) {
        report(context, "strf data read error");
        return false;
    }
    if (const ChunkNode* indx = context.tree.child(strl, fourCC("indx"))) {
        readSuperIndex(context, *indx);
    }
    return true;
}

bool AviStream::readFormat(ParseContext& context, const ChunkNode& strf) {
    ChunkReader& reader = context.reader;
    if (reader.existing(strf.dataPosition(), strf.size) != strf.size || !take(context.formatBytesLeft, strf.size)) {
        return false;
    }
    m_format.resize(strf.size);
    return reader.readDirect(strf.dataPosition(), m_format.data(), strf.size) == strf.size;
}

void AviStream::shrinkToFit() {
    m_idx1Chunks.shrinkToFit();
    m_openDmlChunks.shrinkToFit();
}

void AviStream::report(ParseContext& context, const char* text, std::initializer_list<Value> values) const {
    if (!context.errors.hasRoom()) {
        return;
    }
    std::string message = text;
    for (const Value& value : values) {
        message.append(std::to_string(value.number)).append(value.after);
    }
    context.errors.add("stream[" + std::to_string(m_streamNumber) + "]: " + message + "\n");
}
