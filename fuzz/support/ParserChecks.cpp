#include "support/ParserChecks.h"

#include "avi/ParserLimits.h"
#include "support/Expect.h"

#include <algorithm>
#include <string>

namespace fuzz {

namespace {

// Length of the longest message, with the largest numbers in it.
constexpr std::size_t kLongestLine = 256;

// The memory that any file may take, and the memory that each of its bytes may take in addition: 8 bytes can be both a
// chunk header, which takes a node of 32 bytes, and an entry of a standard index, which takes 16.5.
constexpr std::size_t kMemoryForAnyFile = std::size_t{64} << 20;
constexpr std::size_t kMemoryPerByte = 8;

void checkMessages(const std::string& text) {
    expect(text.empty() || text.back() == '\n', "the messages do not end with a line feed");
    expect(text.size() <= avi::kMaxErrorText + kLongestLine, "the messages are longer than their limit");
}

void checkTree(const ChunkTree& tree) {
    expect(tree.size() <= avi::kMaxNodes, "the tree has more nodes than its limit");
    for (std::size_t number = 0; number < tree.size(); ++number) {
        const ChunkNode& node = tree[static_cast<std::uint32_t>(number)];
        for (const std::uint32_t next : {node.firstChild, node.nextSibling}) {
            expect(next == ChunkNode::kNone || (next > number && next < tree.size()), "a node's link is invalid");
            expect(next == ChunkNode::kNone || tree[next].position > node.position, "nodes are not in file order");
        }
        expect(node.isList() || node.firstChild == ChunkNode::kNone, "a chunk that is no list has children");
    }
}

void checkFound(const AviStream& stream, std::size_t index) {
    const AviChunk chunk = stream.chunk(index);
    const auto first = static_cast<std::int64_t>(chunk.startByte);
    if (chunk.size == 0) {
        return;
    }
    expect(stream.findChunkByBytePosition(first) == index, "a chunk is not found by its first byte");
    expect(stream.findChunkByBytePosition(first + chunk.size - 1) == index, "a chunk is not found by its last byte");
}

void checkChunks(const AviStream& stream) {
    const std::size_t count = stream.chunkCount();
    std::uint64_t total = 0;
    for (std::size_t i = 0; i < count; ++i) {
        expect(stream.chunk(i).startByte == total, "a chunk does not start where the one before ends");
        total += stream.chunk(i).size;
    }
    expect(stream.totalBytes() == total, "the total is not the sum");
    expect(!stream.findChunkByBytePosition(static_cast<std::int64_t>(total)), "a chunk lies past the last byte");
    expect(!stream.findChunkByBytePosition(-1), "a chunk lies before the first byte");
    for (std::size_t i = 0; i < count; i += std::max<std::size_t>(count / 16, 1)) {
        checkFound(stream, i);
    }
}

void checkStreams(const AviParser& parser, std::uint64_t claimedFileSize) {
    std::int64_t before = -1;
    for (const auto& stream : parser.streams()) {
        expect(stream->streamNumber() > before, "stream numbers do not grow");
        before = stream->streamNumber();
        expect(stream->format().size() <= claimedFileSize, "a format is longer than the file");
        expect(stream->formatExtraData().size() <= stream->format().size(), "the extra data is longer than the format");
        expect(stream->superIndexEntries().size() == stream->stdIndexes().size(), "an index lacks its head");
        checkChunks(*stream);
    }
}

}  // namespace

void checkParsed(const AviParser& parser, std::uint64_t claimedFileSize) {
    checkMessages(parser.errorText());
    checkTree(parser.chunkTree());
    checkStreams(parser, claimedFileSize);
}

void checkDescriptionMemory(std::size_t peak, std::size_t fileSize) {
    if (peak > kMemoryForAnyFile + kMemoryPerByte * fileSize) {
        fail("a file of " + std::to_string(fileSize) + " bytes took " + std::to_string(peak) + " bytes of memory");
    }
}

}  // namespace fuzz
