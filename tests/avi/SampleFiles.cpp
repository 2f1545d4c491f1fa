#include "SampleFiles.h"

#include <sstream>

namespace samples {

using namespace aviwriter;

namespace {

Bytes strl(const Bytes& header, const Bytes& format, const std::vector<Bytes>& more) {
    std::vector<Bytes> children{header, format};
    children.insert(children.end(), more.begin(), more.end());
    return list("strl", children);
}

}  // namespace

Bytes videoStrl(const std::vector<Bytes>& more) {
    return strl(strh({.type = "vids"}), strf(bytesOf(BitmapInfo{})), more);
}

Bytes audioStrl(const std::vector<Bytes>& more) {
    return strl(strh({.type = "auds", .rate = 48000, .sampleSize = 4}), strf(waveFormatEx({})), more);
}

Bytes hdrl(const std::vector<Bytes>& strls) {
    std::vector<Bytes> children{avih({.streams = static_cast<std::uint32_t>(strls.size())})};
    children.insert(children.end(), strls.begin(), strls.end());
    return list("hdrl", children);
}

Bytes idx1File(const std::vector<Bytes>& chunks, const std::vector<Idx1Entry>& entries) {
    return riff("AVI ", {hdrl({videoStrl()}), list("movi", chunks), idx1(entries)});
}

Bytes openDmlFile(const std::vector<IndexPart>& parts, const SuperIndex& super) {
    SuperIndex placeholder = super;
    placeholder.entries.assign(parts.size(), {});
    std::vector<Bytes> indexes;
    for (const IndexPart& part : parts) {
        StandardIndex index = part.overrides;
        std::uint32_t offset = 0;
        for (const std::uint32_t size : part.sizes) {
            index.entries.push_back({offset, size});
            offset += 100;
        }
        indexes.push_back(ix("ix00", index));
    }
    Bytes file = riff("AVI ", {hdrl({videoStrl({indx(placeholder)})}), list("movi", indexes),
                               idx1({{.chunkId = "00dc", .length = 7}})});
    for (std::size_t i = 0; i < parts.size(); ++i) {
        overwrite(file, superIndexEntryAt(file, i),
                  u64(positionOf(file, "ix00", i)) + u32(static_cast<std::uint32_t>(indexes[i].size())));
    }
    return file;
}

std::size_t superIndexEntryAt(const Bytes& file, std::size_t index) {
    return positionOf(file, "indx") + 8 + 24 + 16 * index;
}

std::string chunkText(const AviStream& stream) {
    std::ostringstream text;
    for (std::size_t i = 0; i < stream.chunkCount(); ++i) {
        const AviChunk chunk = stream.chunk(i);
        text << (i == 0 ? "" : " ") << chunk.offset << ':' << chunk.size << '@' << chunk.startByte;
        text << (chunk.keyframe ? "k" : "");
    }
    return text.str();
}

}  // namespace samples
