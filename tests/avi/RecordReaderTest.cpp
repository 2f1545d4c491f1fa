// Reading the records of an index chunk in pieces.
#include "avi/RecordReader.h"

#include "aviwriter/Blocks.h"
#include "support/FaultFile.h"
#include "support/MemoryFile.h"

#include <gtest/gtest.h>

namespace {

using namespace aviwriter;

struct Pair {
    std::uint32_t first;
    std::uint32_t second;
};

// A reader of a whole file, in pieces of two pairs.
struct Records {
    explicit Records(const Bytes& bytes, std::uint64_t allowance = 1000)
        : file(bytes), chunks(file), bytesLeft(allowance), reader(chunks, bytesLeft, 0, bytes.size(), 16) {}

    fileio::MemoryFile file;
    ChunkReader chunks;
    std::uint64_t bytesLeft;
    RecordReader reader;
};

TEST(RecordReader, ReturnsAllRecordsOfAPiece) {
    Records records(u32(1) + u32(2) + u32(3) + u32(4) + u32(5) + u32(6));
    EXPECT_EQ(records.reader.remaining(), 24u);
    const auto pairs = records.reader.next<Pair>(10);
    ASSERT_EQ(pairs.size(), 2u);
    EXPECT_EQ(pairs[1].first, 3u);
    EXPECT_EQ(records.reader.remaining(), 8u);
    EXPECT_EQ(records.reader.next<Pair>(10)[0].second, 6u);
}

TEST(RecordReader, ReturnsNoMoreThanAskedFor) {
    Records records(u32(1) + u32(2) + u32(3) + u32(4));
    EXPECT_EQ(records.reader.next<Pair>(1).size(), 1u);
    EXPECT_EQ(records.reader.next<Pair>(1)[0].first, 3u);
}

TEST(RecordReader, FillsUpAPartialRecordWithZeros) {
    Records records(u32(1) + u32(2) + u32(3) + u16(0xABCD));
    const auto pairs = records.reader.next<Pair>(2);
    ASSERT_EQ(pairs.size(), 2u);
    EXPECT_EQ(pairs[1].first, 3u);
    EXPECT_EQ(pairs[1].second, 0xABCDu);
}

TEST(RecordReader, HasNoRecordsAfterTheEnd) {
    Records records(u32(1) + u32(2));
    EXPECT_EQ(records.reader.head<Pair>().second, 2u);
    EXPECT_EQ(records.reader.remaining(), 0u);
    EXPECT_TRUE(records.reader.next<Pair>(5).empty());
    EXPECT_FALSE(records.reader.wasRefused());
}

TEST(RecordReader, AHeadAfterTheEndIsZero) {
    Records records(u32(7));
    EXPECT_EQ(records.reader.head<Pair>().first, 7u);
    EXPECT_EQ(records.reader.head<Pair>().first, 0u);
}

TEST(RecordReader, ReadsUntilItsAllowanceIsUsedUp) {
    Records records(filled(32), 16);
    EXPECT_EQ(records.reader.next<Pair>(10).size(), 2u);
    EXPECT_EQ(records.bytesLeft, 0u);
    EXPECT_TRUE(records.reader.next<Pair>(10).empty());
    EXPECT_TRUE(records.reader.wasRefused());
    EXPECT_EQ(records.reader.remaining(), 0u);
}

TEST(RecordReader, EndsWithAnIncompletePiece) {
    fileio::MemoryFile memory(filled(40));
    fileio::FaultFile file(memory);
    file.limitReads(12);
    ChunkReader chunks(file);
    std::uint64_t bytesLeft = 1000;
    RecordReader records(chunks, bytesLeft, 0, 40, 16);
    EXPECT_EQ(records.next<Pair>(10).size(), 2u);
    EXPECT_TRUE(records.next<Pair>(10).empty());
    EXPECT_FALSE(records.wasRefused());
    EXPECT_EQ(file.reads().size(), 1u);
}

}  // namespace
