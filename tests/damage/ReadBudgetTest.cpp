// The two bounds on what a parse reads, just below and just above them.
#include "avi/AviParser.h"
#include "avi/ChunkWalk.h"
#include "damage/Pieces.h"
#include "support/FaultFile.h"
#include "support/SparseFile.h"
#include "text/FourCC.h"

#include <gtest/gtest.h>

namespace damage {

namespace {

using namespace aviwriter;

// Three lists, each of which shows what follows it twice: eight passes over so many chunks, which are 128 KiB apart, so
// that each visit is a read of 64 KiB. Only the first chunk shares one with the lists.
bool eightPassesHold(std::uint32_t chunks) {
    constexpr std::uint32_t kApart = 128 * 1024;
    const std::uint32_t size = 3 * 24 + chunks * kApart;
    fileio::SparseFile file(size);
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

TEST(ReadBudget, LetsHeadersBeReadTwiceAndFourMebibytesMore) {
    EXPECT_TRUE(eightPassesHold(17));   // 1 and 8 times 16 reads of 64 KiB; 132 are allowed
}

TEST(ReadBudget, EndsTheWalkBehindThat) {
    EXPECT_FALSE(eightPassesHold(18));   // 1 and 8 times 17; 136 are allowed
}

// A super index that leads so often to one byte behind the headers: an index without entries.
struct OneByteIndexes {
    explicit OneByteIndexes(std::uint32_t entries) {
        constexpr std::int64_t kFileBytes = 128 * 1024;
        const SuperIndex super = {.entries = std::vector<SuperIndexEntry>(entries, {kFileBytes - 9, 9})};
        const Bytes head = riff("AVI ", {headers({videoList(1, {indx(super)})})});
        fileio::SparseFile sparse(kFileBytes);
        sparse.put(0, head + text("JUNK") + u32(static_cast<std::uint32_t>(kFileBytes - head.size() - 8)));
        sparse.put(kFileBytes - 1, u8(2));   // two longs an entry, as it must be
        fileio::FaultFile file(sparse);
        EXPECT_TRUE(parser.parse(file));
        reads = file.reads().size();
    }

    AviParser parser;
    std::size_t reads = 0;
};

TEST(ReadBudget, CountsTheSmallestReadAsFourKibibytes) {
    // 128 KiB and 4 MiB are 1056 reads of 4 KiB. The super index, 16 KiB and more, is among the headers; it counts as
    // long as it is, and takes the place of five.
    OneByteIndexes parsed(1051);
    EXPECT_TRUE(parsed.parser.streams().at(0)->useOpenDmlIndex());
    EXPECT_EQ(parsed.reads, 1 + 1051u);
}

TEST(ReadBudget, RefusesTheIndexBehindThat) {
    OneByteIndexes parsed(1052);
    EXPECT_FALSE(parsed.parser.streams().at(0)->useOpenDmlIndex());
    EXPECT_TRUE(parsed.parser.errorText().ends_with("stream[0]: could not read standard index at: 131071, size: 1\n"))
        << parsed.parser.errorText();
}

}  // namespace

}  // namespace damage
