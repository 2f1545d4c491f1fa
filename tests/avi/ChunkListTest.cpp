// Positions of chunks in their stream, compared with sums computed one by one.
#include "avi/ChunkList.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

using Row = ChunkList::Row;

// Rows in which every third chunk is empty, and sometimes a whole run of them.
std::vector<Row> someRows(std::size_t count) {
    std::mt19937 random(7);
    std::vector<Row> rows;
    while (rows.size() < count) {
        const std::size_t run = random() % 50 == 0 ? 40 : 1;
        const std::uint32_t size = run > 1 || random() % 3 == 0 ? 0 : static_cast<std::uint32_t>(random() % 10);
        const bool keyframe = random() % 2 == 0;
        rows.insert(rows.end(), std::min(run, count - rows.size()), Row(random(), size, keyframe));
    }
    return rows;
}

void fill(ChunkList& list, const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        list.append(row);
    }
}

void expectHolds(const ChunkList& list, const std::vector<Row>& rows) {
    ASSERT_EQ(list.size(), rows.size());
    std::uint64_t startByte = 0;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const AviChunk chunk = list[i];
        ASSERT_EQ(chunk.startByte, startByte) << i;
        ASSERT_EQ(chunk.offset, rows[i].offset()) << i;
        ASSERT_EQ(chunk.size, rows[i].size()) << i;
        ASSERT_EQ(chunk.keyframe, rows[i].keyframe()) << i;
        startByte += rows[i].size();
    }
    EXPECT_EQ(list.totalBytes(), startByte);
}

TEST(ChunkList, KnowsEveryChunksPositionInTheStream) {
    const std::vector<Row> rows = someRows(40'000);
    ChunkList list;
    fill(list, rows);
    expectHolds(list, rows);
}

TEST(ChunkList, HoldsTheSameIfFilledInLongRuns) {
    const std::vector<Row> rows = someRows(40'000);
    ChunkList list;
    std::span<const Row> left(rows);
    for (const std::size_t run : {1u, 15u, 16u, 17u, 1u, 9000u, 20'000u, 10'950u}) {
        list.appendAll(left.subspan(0, run), [](const Row& row) { return row; });
        left = left.subspan(run);
    }
    ASSERT_TRUE(left.empty());
    expectHolds(list, rows);
}

TEST(ChunkList, HoldsTheSameAfterShrinking) {
    const std::vector<Row> rows = someRows(20'001);
    ChunkList list;
    fill(list, rows);
    list.shrinkToFit();
    expectHolds(list, rows);
}

TEST(ChunkList, FindsTheChunkOfEveryByte) {
    const std::vector<Row> rows = someRows(5000);
    ChunkList list;
    fill(list, rows);
    std::uint64_t position = 0;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        for (const std::uint64_t end = position + rows[i].size(); position < end; ++position) {
            ASSERT_EQ(list.findByBytePosition(position), i) << position;
        }
    }
    EXPECT_EQ(list.findByBytePosition(position), std::nullopt);
}

TEST(ChunkList, CountsBeyond4GiBWithinOneGroup) {
    ChunkList list;
    fill(list, std::vector<Row>(16, Row(0, 0xFFFFFFFF, false)));
    EXPECT_EQ(list[15].startByte, std::uint64_t{0xFFFFFFFF} * 15);
    EXPECT_EQ(list.findByBytePosition(std::uint64_t{0xFFFFFFFF} * 15), 15u);
}

TEST(ChunkList, HasNoBytesWhenAllChunksAreEmpty) {
    ChunkList list;
    fill(list, std::vector<Row>(100, Row(0, 0, true)));
    EXPECT_EQ(list.totalBytes(), 0u);
    EXPECT_EQ(list.findByBytePosition(0), std::nullopt);
}

}  // namespace
