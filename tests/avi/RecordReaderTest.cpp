// The records of an index chunk, singly and in runs.
#include "avi/RecordReader.h"

#include "aviwriter/Blocks.h"
#include "support/FaultFile.h"
#include "support/MemoryFile.h"
#include "support/SparseFile.h"

#include <gtest/gtest.h>

namespace {

using namespace aviwriter;

struct Pair {
    std::uint32_t first;
    std::uint32_t second;
};

struct Triple {
    std::uint32_t values[3];
};

TEST(RecordReader, ARunGivesAllThatIsThere) {
    fileio::MemoryFile file(u32(1) + u32(2) + u32(3) + u32(4));
    ChunkReader chunks(file);
    RecordReader records(chunks, 0, 16);
    const auto run = records.nextRun<Pair>(10);
    ASSERT_EQ(run.size(), 2u);
    EXPECT_EQ(run[1].first, 3u);
    EXPECT_EQ(records.remaining(), 0u);
}

TEST(RecordReader, ARunEndsWhereItIsToldTo) {
    fileio::MemoryFile file(u32(1) + u32(2) + u32(3) + u32(4));
    ChunkReader chunks(file);
    RecordReader records(chunks, 0, 16);
    EXPECT_EQ(records.nextRun<Pair>(1).size(), 1u);
    EXPECT_EQ(records.next<Pair>().first, 3u);
}

TEST(RecordReader, APartialRecordIsARunOfItsOwnWithZerosBehindIt) {
    fileio::MemoryFile file(u32(1) + u32(2) + u32(3) + u16(0xABCD));
    ChunkReader chunks(file);
    RecordReader records(chunks, 0, 16);
    EXPECT_EQ(records.nextRun<Pair>(2).size(), 1u);
    const auto partial = records.nextRun<Pair>(2);
    ASSERT_EQ(partial.size(), 1u);
    EXPECT_EQ(partial[0].first, 3u);
    EXPECT_EQ(partial[0].second, 0xABCDu);
}

TEST(RecordReader, BehindTheEndARunIsOneRecordOfZeros) {
    fileio::MemoryFile file(u32(1) + u32(2));
    ChunkReader chunks(file);
    RecordReader records(chunks, 0, 8);
    records.next<Pair>();
    const auto run = records.nextRun<Pair>(5);
    ASSERT_EQ(run.size(), 1u);
    EXPECT_EQ(run[0].first, 0u);
    EXPECT_EQ(run[0].second, 0u);
}

TEST(RecordReader, ARecordThatBeginsAtAnOddPlaceIsGivenAligned) {
    fileio::MemoryFile file(u16(7) + u32(1) + u32(2));
    ChunkReader chunks(file);
    RecordReader records(chunks, 0, 10);
    records.next<std::uint16_t>();
    const auto run = records.nextRun<Pair>(1);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(run.data()) % alignof(Pair), 0u);
    EXPECT_EQ(run[0].first, 1u);
    EXPECT_EQ(run[0].second, 2u);
}

TEST(RecordReader, ARecordAcrossTheBorderOfTwoPiecesIsWhole) {
    // Pieces end every 4 MiB, of which a record of 12 bytes crosses the first border with 4 bytes before it.
    constexpr std::uint64_t border = 4u << 20;
    fileio::SparseFile sparse(border + 8);
    sparse.put(border - 4, u32(11) + u32(22) + u32(33));
    fileio::FaultFile file(sparse);
    ChunkReader chunks(file);
    RecordReader records(chunks, 0, border + 8);
    const auto before = records.nextRun<Triple>(UINT64_MAX);
    EXPECT_EQ(before.size(), (border - 4) / 12);
    const auto across = records.nextRun<Triple>(UINT64_MAX);
    ASSERT_EQ(across.size(), 1u);
    EXPECT_EQ(across[0].values[0], 11u);
    EXPECT_EQ(across[0].values[1], 22u);
    EXPECT_EQ(across[0].values[2], 33u);
    EXPECT_EQ(file.reads().size(), 2u);
}

}  // namespace
