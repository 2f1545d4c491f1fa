#include "mutator/RiffTree.h"

#include "text/FourCC.h"

#include <algorithm>
#include <cstring>

namespace fuzz {

namespace {

constexpr std::size_t kHeaderSize = 8;
constexpr std::size_t kListTypeSize = 4;

// Deeper lists stay plain bytes, because the tree is walked recursively.
constexpr int kDeepest = 40;

std::uint32_t u32At(ByteView bytes, std::size_t position) {
    std::uint32_t value = 0;
    std::memcpy(&value, bytes.data() + position, sizeof value);
    return value;
}

void append32(Bytes& bytes, std::uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8) {
        bytes.push_back(static_cast<std::uint8_t>(value >> shift));
    }
}

void append(Bytes& bytes, ByteView more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

std::vector<Chunk> readChunks(ByteView& bytes, int depth);

Chunk readChunk(ByteView& bytes, int depth) {
    Chunk chunk;
    chunk.id = u32At(bytes, 0);
    const std::size_t claimed = u32At(bytes, 4);
    bytes = bytes.subspan(kHeaderSize);
    const std::size_t size = std::min(claimed, bytes.size());
    if (claimed != size) {
        chunk.claimedSize = static_cast<std::uint32_t>(claimed);
    }
    ByteView content = bytes.first(size);
    bytes = bytes.subspan(size);
    const bool isListId = chunk.id == fourCC("RIFF") || chunk.id == fourCC("LIST");
    if (isListId && size >= kListTypeSize && depth < kDeepest) {
        chunk.isList = true;
        chunk.listType = u32At(content, 0);
        content = content.subspan(kListTypeSize);
        chunk.children = readChunks(content, depth + 1);
    }
    chunk.data.assign(content.begin(), content.end());
    if (size % 2 != 0 && !bytes.empty()) {
        chunk.pad = bytes.front();
        bytes = bytes.subspan(1);
    }
    return chunk;
}

std::vector<Chunk> readChunks(ByteView& bytes, int depth) {
    std::vector<Chunk> chunks;
    while (bytes.size() >= kHeaderSize) {
        chunks.push_back(readChunk(bytes, depth));
    }
    return chunks;
}

void writeChunk(Chunk& chunk, Bytes& bytes) {
    chunk.position = bytes.size();
    append32(bytes, chunk.id);
    append32(bytes, 0);
    if (chunk.isList) {
        append32(bytes, chunk.listType);
        for (Chunk& child : chunk.children) {
            writeChunk(child, bytes);
        }
    }
    append(bytes, chunk.data);
    const std::size_t size = bytes.size() - chunk.position - kHeaderSize;
    const std::uint32_t stated = chunk.claimedSize.value_or(static_cast<std::uint32_t>(size));
    std::memcpy(bytes.data() + chunk.position + 4, &stated, sizeof stated);
    if (size % 2 != 0 && chunk.pad) {
        bytes.push_back(*chunk.pad);
    }
}

void collect(std::vector<Chunk>& chunks, std::vector<Place>& places) {
    for (std::size_t i = 0; i < chunks.size(); ++i) {
        places.push_back({&chunks, i});
        collect(chunks[i].children, places);
    }
}

}  // namespace

RiffTree readTree(ByteView file) {
    RiffTree tree;
    tree.chunks = readChunks(file, 0);
    tree.rest.assign(file.begin(), file.end());
    return tree;
}

Bytes writeTree(RiffTree& tree) {
    Bytes bytes;
    for (Chunk& chunk : tree.chunks) {
        writeChunk(chunk, bytes);
    }
    append(bytes, tree.rest);
    return bytes;
}

std::vector<Place> placesOf(RiffTree& tree) {
    std::vector<Place> places;
    collect(tree.chunks, places);
    return places;
}

std::size_t contentSize(const Chunk& chunk) {
    std::size_t size = chunk.data.size() + (chunk.isList ? kListTypeSize : 0);
    for (const Chunk& child : chunk.children) {
        const std::size_t content = contentSize(child);
        size += kHeaderSize + content + (content % 2 != 0 && child.pad ? 1 : 0);
    }
    return size;
}

}  // namespace fuzz
