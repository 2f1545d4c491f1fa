// The limits on what a parse reads for chunk headers: files just below and just above them.
#include "avi/AviParser.h"
#include "avi/ChunkWalk.h"
#include "damage/parser/Pieces.h"
#include "support/FaultFile.h"
#include "support/MemoryFile.h"
#include "text/FourCC.h"

#include <gtest/gtest.h>

namespace damage {

namespace {

using namespace aviwriter;

constexpr std::uint32_t kApart = 128 * 1024;

// Three lists, each of which includes what follows twice: eight passes over `chunks` chunks, which are 128 KiB apart,
// so that each visit is a read, which counts as 64 KiB. Only the first chunk shares a read with the lists.
bool eightPassesHold(std::uint32_t chunks) {
    const std::uint32_t size = 3 * 24 + chunks * kApart;
    fileio::MemoryFile file(size);
    for (std::uint32_t i = 0; i < 3; ++i) {
        file.put(i * 24, listClaiming("LIST", "outr", 4 + 12, {listClaiming("LIST", "innr", size - i * 24 - 20, {})}));
    }
    for (std::uint32_t i = 0; i < chunks; ++i) {
        file.put(3 * 24 + i * kApart, text("JUNK") + u32(kApart - 8));
    }
    ChunkReader reader(file);
    ChunkTree tree;
    const bool holds = walkChunks(reader, {fourCC("movi")}, tree);
    EXPECT_EQ(tree.size() == 14 + 8 * chunks, holds) << tree.size() << " nodes";
    return holds;
}

// There are one read, and eight for each chunk except the first; two for each of these 128 KiB plus 1024 are allowed.
TEST(HeaderReads, ABlockPer64KiBAnd1024MoreMayBeRead) { EXPECT_TRUE(eightPassesHold(171)); }

TEST(HeaderReads, FurtherBlocksEndTheWalk) { EXPECT_FALSE(eightPassesHold(172)); }

// A file that begins with `front`, followed by `chunks` chunks that are 128 KiB apart.
fileio::MemoryFile chunksFarApart(std::uint32_t chunks, const Bytes& front = {}) {
    fileio::MemoryFile file(static_cast<std::int64_t>(front.size() + std::uint64_t{chunks} * kApart));
    file.put(0, front);
    for (std::uint64_t i = 0; i < chunks; ++i) {
        file.put(front.size() + i * kApart, text("JUNK") + u32(kApart - 8));
    }
    return file;
}

struct WalkOverFarChunks {
    explicit WalkOverFarChunks(std::uint32_t chunks) : memory(chunksFarApart(chunks)) {
        ChunkReader reader(file);
        ChunkTree tree;
        holds = walkChunks(reader, {}, tree);
        found = tree.size();
    }

    fileio::MemoryFile memory;
    fileio::FaultFile file{memory};
    bool holds = false;
    std::size_t found = 0;
};

TEST(HeaderReads, SixtyFiveThousandHeaderReadsAreAllowed) {
    const WalkOverFarChunks walk(65'536);
    EXPECT_TRUE(walk.holds);
    EXPECT_EQ(walk.found, 65'536u);
    EXPECT_EQ(walk.file.bytesRead(), 65'536u + 65'535 * 4096u) << "an isolated header takes 4 KiB";
}

TEST(HeaderReads, OneMoreHeaderReadEndsTheWalkOfAnyFile) {
    const WalkOverFarChunks walk(65'537);
    EXPECT_FALSE(walk.holds);
    EXPECT_EQ(walk.found, 65'536u);
}

// A recording of more segments than the walk may read. The super index of its pictures is longer than a block, so that
// the headers of its sound have to be read again.
TEST(HeaderReads, StreamsAreReadEvenIfTheWalkHitsTheLimit) {
    constexpr std::uint32_t kSegments = 65'600;
    const Bytes index = ix("ix00", {.entries = {{0, 1}}});
    const SuperIndex ofPictures = {.entries = std::vector<SuperIndexEntry>(kSegments, {0, 8 + 24 + 8})};
    const SuperIndex ofSound = {.entries = {{0, 8 + 24 + 8}}};
    Bytes front = riff("AVI ", {headers({videoList(1, {indx(ofPictures)}), soundList(1, {indx(ofSound)}), odml(7)}),
                                list("movi", {index})});
    const std::size_t indexAt = positionOf(front, "ix00");
    for (std::size_t i = 0; i < kSegments; ++i) {
        overwrite(front, superEntryAt(front, 0, i), u64(indexAt));
    }
    overwrite(front, superEntryAt(front, 1, 0), u64(indexAt));
    fileio::MemoryFile file = chunksFarApart(kSegments, front);
    AviParser parser;
    EXPECT_TRUE(parser.parse(file));
    EXPECT_EQ(parser.errorText(), "riff structure is corrupt or invalid\n") << "the limit was not reached";
    EXPECT_EQ(parser.extendedHeader().dwTotalFrames, 7u);
    ASSERT_EQ(parser.streams().size(), 2u);
    EXPECT_EQ(parser.streams()[0]->chunkCount(), kSegments);
    EXPECT_EQ(parser.streams()[1]->chunkCount(), 1u);
}

}  // namespace

}  // namespace damage
