// The memory that a parsed file takes, and running out of memory while parsing.
#include "CountingHeap.h"
#include "SampleFiles.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace aviwriter;

struct Cost {
    std::size_t kept;
    std::size_t peak;
};

// Cost of parsing a file of these bytes, without the file itself.
Cost costOf(const Bytes& bytes, AviParser& parser) {
    fileio::MemoryFile file(bytes);
    const std::size_t before = heap::inUse();
    heap::startCounting();
    EXPECT_TRUE(parser.parse(file));
    return {heap::inUse() - before, heap::peak() - before};
}

void put32(Bytes& bytes, std::size_t at, std::size_t value) {
    for (std::size_t i = 0; i < 4; ++i) {
        bytes[at + i] = static_cast<std::uint8_t>(value >> 8 * i);
    }
}

// A file whose streams' entries alternate, each with its own position, as in a recording.
Bytes idx1FileOf(std::size_t entries, std::size_t streams = 1) {
    Bytes table = filled(entries * 16);
    const Bytes each[] = {bytesOf(Idx1Entry{.chunkId = "00dc", .offset = 4, .length = 1}),
                          bytesOf(Idx1Entry{.chunkId = "01dc", .offset = 4, .length = 1})};
    for (std::size_t i = 0; i < entries; ++i) {
        const Bytes& entry = each[i % streams];
        std::copy(entry.begin(), entry.end(), table.begin() + static_cast<std::ptrdiff_t>(i * 16));
        put32(table, i * 16 + 8, 4 + i);
    }
    const std::vector<Bytes> strls(streams, samples::videoStrl());
    return riff("AVI ", {samples::hdrl(strls), list("movi", {}), chunk("idx1", table)});
}

TEST(Memory, AnIdx1EntryCostsAtMost17Bytes) {
    AviParser parser;
    const Cost cost = costOf(idx1FileOf(1'000'000), parser);
    ASSERT_EQ(parser.streams()[0]->chunkCount(), 1'000'000u);
    EXPECT_LE(cost.kept, 17u * 1'000'000 + 10'000);
}

TEST(Memory, ReadingIdx1TakesLessThanHalfMore) {
    AviParser parser;
    const Cost cost = costOf(idx1FileOf(1'000'000), parser);
    EXPECT_LT(cost.peak, cost.kept * 3 / 2);
}

TEST(Memory, ReadingLongIdx1TakesLessThanHalfMore) {
    AviParser parser;
    const Cost cost = costOf(idx1FileOf(100'000), parser);
    ASSERT_EQ(parser.streams()[0]->chunkCount(), 100'000u);
    EXPECT_LT(cost.peak, cost.kept * 3 / 2);
}

TEST(Memory, ReadingIdx1OfTwoStreamsTakesLessThanHalfMore) {
    AviParser parser;
    const Cost cost = costOf(idx1FileOf(100'000, 2), parser);
    ASSERT_EQ(parser.streams()[1]->chunkCount(), 50'000u);
    EXPECT_LT(cost.peak, cost.kept * 3 / 2);
}

TEST(Memory, ReadingAShortIdx1TakesAtMostHalfAMebibyteMore) {
    AviParser parser;
    const Cost cost = costOf(idx1FileOf(10'000), parser);
    ASSERT_EQ(parser.streams()[0]->chunkCount(), 10'000u);
    EXPECT_LT(cost.peak, cost.kept + (1u << 19));
}

Bytes openDmlFileOf(std::size_t indexes, std::size_t entriesEach) {
    Bytes entries = filled(entriesEach * 8);
    for (std::size_t i = 0; i < entriesEach; ++i) {
        put32(entries, i * 8, i);      // position
        put32(entries, i * 8 + 4, 1);  // size
    }
    const Bytes index =
        chunk("ix00", bytesOf(StandardIndex{.entriesInUse = static_cast<std::uint32_t>(entriesEach)}) + entries);
    const Bytes head = riff("AVI ", {samples::hdrl({samples::videoStrl(
                                        {indx({.entries = std::vector<SuperIndexEntry>(indexes)})})})});
    Bytes file = head;
    for (std::size_t i = 0; i < indexes; ++i) {
        overwrite(file, samples::superIndexEntryAt(file, i),
                  u64(file.size()) + u32(static_cast<std::uint32_t>(index.size())));
        file.insert(file.end(), index.begin(), index.end());
    }
    return file;
}

TEST(Memory, AStandardIndexEntryCostsAtMost17Bytes) {
    AviParser parser;
    const Cost cost = costOf(openDmlFileOf(20, 50'000), parser);
    ASSERT_EQ(parser.streams()[0]->chunkCount(), 1'000'000u);
    EXPECT_LE(cost.kept, 17u * 1'000'000 + 10'000);
}

TEST(Memory, SeveralShortStandardIndexesLeaveNoSpareRoom) {
    AviParser parser;
    const Cost cost = costOf(openDmlFileOf(3, 3000), parser);
    ASSERT_EQ(parser.streams()[0]->chunkCount(), 9000u);
    EXPECT_LE(cost.kept, 16u * 9000 + 9000 / 2 + 3000);
}

TEST(Memory, ReadingStandardIndexesTakesLessThanHalfMore) {
    AviParser parser;
    const Cost cost = costOf(openDmlFileOf(20, 50'000), parser);
    EXPECT_LT(cost.peak, cost.kept * 3 / 2);
}

TEST(Memory, ReadingALongStandardIndexTakesLessThanHalfMore) {
    AviParser parser;
    const Cost cost = costOf(openDmlFileOf(1, 1'000'000), parser);
    ASSERT_EQ(parser.streams()[0]->chunkCount(), 1'000'000u);
    EXPECT_LT(cost.peak, cost.kept * 3 / 2);
}

// Number of allocations for a super index of `entries` entries that each point at a byte of the headers.
std::size_t allocationsOfFaults(std::size_t entries) {
    fileio::MemoryFile file(riff("AVI ", {samples::hdrl({samples::videoStrl(
                                             {indx({.entries = std::vector<SuperIndexEntry>(entries, {0, 9})})})})}));
    AviParser parser;
    heap::startCounting();
    EXPECT_TRUE(parser.parse(file));
    const std::size_t allocations = heap::allocations();
    EXPECT_GT(parser.errorText().size(), 1u << 20) << "there is room for more";
    return allocations;
}

TEST(Memory, MessagesWithoutRoomTakeNoMemory) {
    EXPECT_LT(allocationsOfFaults(100'000), allocationsOfFaults(20'000) + 100);
}

TEST(Memory, StatedSizesOf4GiBTakeNoMemory) {
    const Bytes strl = list("strl", {strh({}), chunkClaiming("strf", 0xFFFFFFF0, {})});
    const Bytes withIndx = samples::videoStrl({chunkClaiming("indx", 0x7FFFFFF0, bytesOf(SuperIndex{}))});
    AviParser parser;
    const Cost cost = costOf(riff("AVI ", {samples::hdrl({withIndx, strl}), list("movi", {}),
                                           chunkClaiming("idx1", 0xFFFFFFF0, {})}), parser);
    EXPECT_LT(cost.peak, 1u << 20);
}

TEST(Memory, ManyStreamsDoNotMultiplyIdx1) {
    std::vector<Bytes> strls(32, samples::videoStrl());
    std::vector<Idx1Entry> entries;
    for (int i = 0; i < 100'000; ++i) {
        entries.push_back({.chunkId = i % 2 == 0 ? "00dc" : "31dc", .length = 1});
    }
    AviParser parser;
    const Cost cost = costOf(riff("AVI ", {samples::hdrl(strls), list("movi", {}), idx1(entries)}), parser);
    EXPECT_EQ(parser.streams()[31]->chunkCount(), 50'000u);
    EXPECT_LE(cost.kept, 17u * 100'000 + 100'000);
}

TEST(Memory, OverlappingFormatsAreNotKeptForEveryStream) {
    // 5000 streams whose formats all reach to the end of a 1 MB file would be 5 GB of formats.
    std::vector<Bytes> strls(5000, list("strl", {strh({}), chunkClaiming("strf", 0, {})}));
    Bytes file = riff("AVI ", {samples::hdrl(strls)}) + chunk("JUNK", filled(400'000));
    const std::size_t first = positionOf(file, "strf");
    const std::size_t step = positionOf(file, "strf", 1) - first;
    for (std::size_t i = 0; i < 5000; ++i) {
        const std::size_t at = first + i * step;
        overwrite(file, at + 4, u32(static_cast<std::uint32_t>(file.size() - at - 8)));
    }
    AviParser parser;
    const Cost cost = costOf(file, parser);
    EXPECT_LT(cost.peak, 40u << 20);
}

// Parses with memory running out at each allocation in turn, until it is sufficient.
void expectEveryFailureIsClean(const Bytes& bytes, std::size_t chunks) {
    int failures = 0;
    for (std::size_t number = 0;; ++number) {
        ASSERT_LT(number, 10'000u) << "memory never suffices";
        fileio::MemoryFile file(bytes);
        AviParser parser;
        heap::startCounting();
        heap::failFrom(number);
        const bool usable = parser.parse(file);
        const bool ranOut = heap::allocations() > number;
        heap::failNever();
        if (usable) {
            // Releasing spare room is an allocation too, and the only one that may fail unnoticed.
            ASSERT_EQ(parser.streams().at(0)->chunkCount(), chunks) << "allocation " << number;
        }
        if (!ranOut) {
            EXPECT_TRUE(usable);
            EXPECT_GT(failures, 10);
            return;
        }
        if (usable) {
            continue;
        }
        ++failures;
        ASSERT_TRUE(parser.streams().empty()) << "allocation " << number;
        // If there is no memory for the message either, only the result reports the failure.
        ASSERT_TRUE(parser.errorText().empty()) << parser.errorText();
    }
}

TEST(Memory, LackOfMemoryInAnIdx1FileIsNoException) {
    expectEveryFailureIsClean(samples::idx1File({}, std::vector<Idx1Entry>(100)), 100);
}

TEST(Memory, LackOfMemoryInAnOpenDmlFileIsNoException) {
    expectEveryFailureIsClean(samples::openDmlFile({{{10}}, {{20}}}), 2);
}

TEST(Memory, AParserThatRanOutOfMemoryParsesAgain) {
    const Bytes bytes = samples::idx1File({}, std::vector<Idx1Entry>(100));
    fileio::MemoryFile file(bytes);
    AviParser parser;
    heap::startCounting();
    heap::failFrom(3);
    EXPECT_FALSE(parser.parse(file));
    heap::failNever();
    ASSERT_TRUE(file.seek(0));
    EXPECT_TRUE(parser.parse(file));
    EXPECT_EQ(parser.streams()[0]->chunkCount(), 100u);
}

TEST(Memory, AParserFreesAllMemory) {
    const std::size_t before = heap::inUse();
    {
        AviParser parser;
        fileio::MemoryFile file(samples::openDmlFile({{{10}}, {{20}}}));
        ASSERT_TRUE(parser.parse(file));
    }
    EXPECT_EQ(heap::inUse(), before);
}

}  // namespace
