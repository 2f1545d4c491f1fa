// Number of reads and seeks to open a long recording. On a network share each of them is a round trip, so their number
// must depend only on the number of segments and index chunks.
#include "SampleFiles.h"
#include "support/FaultFile.h"
#include "support/MemoryFile.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace aviwriter;

constexpr std::uint64_t kSegment = std::uint64_t{1} << 30;

struct Shape {
    std::uint32_t segments;
    std::uint32_t streams;
    std::uint32_t entriesEach;  // of each standard index
};

Bytes standardIndex(std::uint32_t entries) {
    return ix("ix00", {.entries = std::vector<StandardIndexEntry>(entries, {.offset = 0, .size = 1})});
}

// Segments of one gigabyte, each with the indexes of all streams at its end.
fileio::MemoryFile recording(const Shape& shape) {
    const Bytes index = standardIndex(shape.entriesEach);
    const auto indexSize = static_cast<std::uint32_t>(index.size());
    const std::uint64_t indexesAt = kSegment - index.size() * shape.streams;
    std::vector<Bytes> strls;
    for (std::uint32_t stream = 0; stream < shape.streams; ++stream) {
        SuperIndex super;
        for (std::uint32_t segment = 0; segment < shape.segments; ++segment) {
            super.entries.push_back({segment * kSegment + indexesAt + stream * index.size(), indexSize});
        }
        strls.push_back(samples::videoStrl({indx(super)}));
    }
    const Bytes head = samples::hdrl(strls);

    fileio::MemoryFile file(static_cast<std::int64_t>(shape.segments * kSegment));
    for (std::uint32_t segment = 0; segment < shape.segments; ++segment) {
        const Bytes before = segment == 0 ? head : Bytes{};
        const auto moviSize = static_cast<std::uint32_t>(kSegment - 12 - before.size() - 8);
        file.put(segment * kSegment, text("RIFF") + u32(static_cast<std::uint32_t>(kSegment - 8)) +
                                         text(segment == 0 ? "AVI " : "AVIX") + before + text("LIST") +
                                         u32(moviSize) + text("movi"));
        for (std::uint32_t stream = 0; stream < shape.streams; ++stream) {
            file.put(segment * kSegment + indexesAt + stream * index.size(), index);
        }
    }
    return file;
}

// The same media data in one segment with an "idx1".
fileio::MemoryFile idx1Recording(std::uint32_t streams, std::uint32_t entries) {
    std::vector<Idx1Entry> list;
    const std::vector<std::string> ids = {"00dc", "01dc", "02dc", "03dc", "04dc", "05dc", "06dc", "07dc"};
    for (std::uint32_t i = 0; i < entries; ++i) {
        list.push_back({.chunkId = ids[i % std::min<std::size_t>(streams, ids.size())], .length = 1});
    }
    const Bytes index = idx1(list);
    const Bytes head = samples::hdrl(std::vector<Bytes>(streams, samples::videoStrl()));
    const auto moviSize = static_cast<std::uint32_t>(kSegment - 12 - head.size() - 8 - index.size());
    fileio::MemoryFile file(kSegment);
    file.put(0, text("RIFF") + u32(static_cast<std::uint32_t>(kSegment - 8)) + text("AVI ") + head + text("LIST") +
                    u32(moviSize) + text("movi"));
    file.put(kSegment - index.size(), index);
    return file;
}

// Opens the file and expects `chunksEach` chunks in each stream.
void expectOpens(fileio::FaultFile& file, std::size_t streams, std::size_t chunksEach) {
    AviParser parser;
    ASSERT_TRUE(parser.parse(file));
    EXPECT_EQ(parser.errorText(), "");
    ASSERT_EQ(parser.streams().size(), streams);
    EXPECT_EQ(parser.streams().front()->chunkCount(), chunksEach);
    EXPECT_EQ(parser.streams().back()->chunkCount(), chunksEach);
}

TEST(RecordingRead, OpenDmlTakesOneReadPerSegmentAndPerIndex) {
    fileio::MemoryFile sparse = recording({.segments = 20, .streams = 2, .entriesEach = 16'000});
    fileio::FaultFile file(sparse);
    expectOpens(file, 2, 320'000);
    EXPECT_EQ(file.reads().size(), 20u + 20 * 2);
    EXPECT_EQ(file.seekCount(), 20u + 20 * 2);
}

TEST(RecordingRead, LongerIndexesTakeNoMoreReads) {
    fileio::MemoryFile sparse = recording({.segments = 3, .streams = 2, .entriesEach = 200'000});
    fileio::FaultFile file(sparse);
    expectOpens(file, 2, 600'000);
    EXPECT_EQ(file.reads().size(), 3u + 3 * 2);
}

TEST(RecordingRead, ThirtyTwoStreamsTakeOneReadPerIndex) {
    fileio::MemoryFile sparse = recording({.segments = 5, .streams = 32, .entriesEach = 63});
    fileio::FaultFile file(sparse);
    expectOpens(file, 32, 5 * 63);
    EXPECT_EQ(file.reads().size(), 5u + 5 * 32);
    EXPECT_EQ(file.seekCount(), 5u + 5 * 32);
}

TEST(RecordingRead, OpenDmlIsReadForwardOncePerStream) {
    fileio::MemoryFile sparse = recording({.segments = 20, .streams = 2, .entriesEach = 16'000});
    fileio::FaultFile file(sparse);
    expectOpens(file, 2, 320'000);
    const auto backward = [](const auto& first, const auto& second) { return second.position < first.position; };
    int turns = 0;
    for (auto at = file.reads().begin(); at != file.reads().end(); ++turns) {
        at = std::adjacent_find(at, file.reads().end(), backward);
        at += at == file.reads().end() ? 0 : 1;
    }
    EXPECT_EQ(turns, 1 + 2);
}

TEST(RecordingRead, StandardIndexReadsHaveTheExactSize) {
    fileio::MemoryFile sparse = recording({.segments = 20, .streams = 2, .entriesEach = 16'000});
    fileio::FaultFile file(sparse);
    expectOpens(file, 2, 320'000);
    // The head of the file, 4 KiB for the head of each further segment, and the indexes.
    EXPECT_EQ(file.bytesRead(), 65'536u + 19 * 4096 + 40 * (24 + 8 * 16'000));
}

TEST(RecordingRead, Idx1UpTo64KiBTakesThreeReads) {
    fileio::MemoryFile sparse = idx1Recording(2, 4096);
    fileio::FaultFile file(sparse);
    expectOpens(file, 2, 2048);
    EXPECT_EQ(file.reads().size(), 3u);
    EXPECT_EQ(file.seekCount(), 3u);
}

TEST(RecordingRead, LongerIdx1IsReadInEightPieces) {
    fileio::MemoryFile sparse = idx1Recording(2, 600'000);
    fileio::FaultFile file(sparse);
    expectOpens(file, 2, 300'000);
    ASSERT_EQ(file.reads().size(), 2u + 8);
    EXPECT_EQ(file.seekCount(), 2u + 8);
    EXPECT_EQ(file.reads()[2].wanted, 1'200'000u);
}

TEST(RecordingRead, AnExtraEntryNeedsNoNinthPiece) {
    fileio::MemoryFile sparse = idx1Recording(1, 100'003);
    fileio::FaultFile file(sparse);
    expectOpens(file, 1, 100'003);
    EXPECT_EQ(file.reads().size(), 2u + 8);
}

TEST(RecordingRead, Idx1Beyond32MiBIsReadInPiecesOf4MiB) {
    fileio::MemoryFile sparse = idx1Recording(2, 2'200'000);
    fileio::FaultFile file(sparse);
    expectOpens(file, 2, 1'100'000);
    ASSERT_EQ(file.reads().size(), 2u + 9);
    EXPECT_EQ(file.reads()[2].wanted, 4u << 20);
}

TEST(RecordingRead, MoreStreamsTakeNoMoreReadsOfIdx1) {
    fileio::MemoryFile sparse = idx1Recording(8, 10'000);
    fileio::FaultFile file(sparse);
    expectOpens(file, 8, 1250);
    EXPECT_EQ(file.reads().size(), 2u + 3);
}

}  // namespace
