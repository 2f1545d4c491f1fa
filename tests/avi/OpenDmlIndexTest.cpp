#include "SampleFiles.h"
#include "support/FaultFile.h"

#include <gtest/gtest.h>

namespace {

using namespace aviwriter;
using samples::chunkText;
using samples::openDmlFile;
using samples::Parsed;
using samples::superIndexEntryAt;

constexpr std::uint64_t kIdx1Bytes = 7;  // total size in the "idx1" of the sample files

void expectFallback(const Parsed& parsed, const std::string& errors) {
    EXPECT_TRUE(parsed.usable);
    EXPECT_EQ(parsed.errors(), errors);
    EXPECT_FALSE(parsed.stream(0).useOpenDmlIndex());
    EXPECT_EQ(parsed.stream(0).totalBytes(), kIdx1Bytes);
}

std::string unreadable(std::uint64_t position, std::uint64_t size) {
    return "stream[0]: could not read standard index at: " + std::to_string(position) +
           ", size: " + std::to_string(size) + "\n";
}

TEST(OpenDmlIndex, AValidIndexIsPreferredToIdx1) {
    Parsed parsed(openDmlFile({{{10, 20}}}));
    EXPECT_TRUE(parsed.usable);
    EXPECT_EQ(parsed.errors(), "");
    EXPECT_TRUE(parsed.stream(0).useOpenDmlIndex());
    EXPECT_EQ(chunkText(parsed.stream(0)), "0:10@0k 100:20@10k");
    EXPECT_EQ(parsed.stream(0).idx1Chunks().size(), 1u);
}

TEST(OpenDmlIndex, StandardIndexesShareOneRunningSum) {
    Parsed parsed(openDmlFile({{{10, 20}, {.baseOffset = 1000}}, {{}, {}}, {{30}, {.baseOffset = 5000}}}));
    EXPECT_EQ(parsed.errors(), "");
    EXPECT_EQ(chunkText(parsed.stream(0)), "1000:10@0k 1100:20@10k 5000:30@30k");
    EXPECT_EQ(parsed.stream(0).superIndexEntries().size(), 3u);
    EXPECT_EQ(parsed.stream(0).stdIndexes().size(), 3u);
    EXPECT_EQ(std::uint64_t{parsed.stream(0).stdIndexes()[2].qwBaseOffset}, 5000u);
}

TEST(OpenDmlIndex, Bit31OfASizeMarksAChunkThatIsNoKeyFrame) {
    Parsed parsed(openDmlFile({{{0x7FFFFFFF, 0xFFFFFFFF, 5 | kNotKeyFrame, 5}}}));
    EXPECT_EQ(chunkText(parsed.stream(0)),
              "0:2147483647@0k 100:2147483647@2147483647 200:5@4294967294 300:5@4294967299k");
}

TEST(OpenDmlIndex, AnOffsetPastTheLastPositionWrapsAround) {
    Parsed parsed(openDmlFile({{{1, 2}, {.baseOffset = 0xFFFFFFFFFFFFFFF0}}}));
    EXPECT_EQ(chunkText(parsed.stream(0)), "18446744073709551600:1@0k 84:2@1k");
}

TEST(OpenDmlIndex, TheSuperIndexHeaderIsKept) {
    Parsed parsed(openDmlFile({{{1}}}, {.indexSubType = 1, .indexType = 2, .chunkId = "00db", .reserved = {7, 8, 9}}));
    const avi::SuperIndexHeader& header = parsed.stream(0).superIndexHeader();
    EXPECT_EQ(header.wLongsPerEntry, 4);
    EXPECT_EQ(header.bIndexSubType, 1);
    EXPECT_EQ(header.bIndexType, 2);
    EXPECT_EQ(header.nEntriesInUse, 1u);
    EXPECT_EQ(header.dwReserved[2], 9u);
    EXPECT_EQ(parsed.errors(), "");
}

TEST(OpenDmlIndex, TheHeaderAndIdOfAStandardIndexChunkAreNotChecked) {
    Bytes file = openDmlFile({{{10}}});
    overwrite(file, positionOf(file, "ix00"), text("????") + u32(0xFFFFFFFF));
    Parsed parsed(file);
    EXPECT_EQ(parsed.errors(), "");
    EXPECT_EQ(parsed.stream(0).totalBytes(), 10u);
}

// --- Faults of the super index ---

TEST(OpenDmlIndex, ASuperIndexWithoutFourLongsPerEntryFallsBack) {
    expectFallback(Parsed(openDmlFile({{{10}}}, {.longsPerEntry = 2})),
                   "stream[0]: super index (indx) unexpected super index entry size (wLongsPerEntry): 2\n");
}

TEST(OpenDmlIndex, ASuperIndexWithoutFourLongsPerEntryHasNoEntries) {
    Parsed parsed(openDmlFile({{{10}}}, {.longsPerEntry = 65535}));
    EXPECT_EQ(parsed.errors(),
              "stream[0]: super index (indx) unexpected super index entry size (wLongsPerEntry): 65535\n");
    EXPECT_TRUE(parsed.stream(0).superIndexEntries().empty());
    EXPECT_TRUE(parsed.stream(0).openDmlChunks().empty());
}

TEST(OpenDmlIndex, ASuperIndexWithTooManyEntriesFallsBackToIdx1) {
    const Parsed parsed(openDmlFile({{{10}}, {{20}}}, {.entriesInUse = 3}));
    expectFallback(parsed, "stream[0]: super index (indx) chunk data is smaller than nEntriesInUse: 3 \n");
    EXPECT_EQ(parsed.stream(0).superIndexEntries().size(), 2u);
    EXPECT_EQ(parsed.stream(0).openDmlChunks().size(), 2u);
}

TEST(OpenDmlIndex, UnusedSuperIndexEntriesAreIgnored) {
    Parsed parsed(openDmlFile({{{10}}, {{20}}}, {.entriesInUse = 1}));
    EXPECT_EQ(parsed.errors(), "");
    EXPECT_TRUE(parsed.stream(0).useOpenDmlIndex());
    EXPECT_EQ(parsed.stream(0).totalBytes(), 10u);
}

TEST(OpenDmlIndex, AnEmptySuperIndexChunkIsAnIndexWithoutChunks) {
    const Bytes strl = samples::videoStrl({chunk("indx", {})});
    Parsed parsed(riff("AVI ", {samples::hdrl({strl}), list("movi", {}), idx1({{.length = 7}})}));
    EXPECT_EQ(parsed.errors(), "");
    EXPECT_TRUE(parsed.stream(0).useOpenDmlIndex());
    EXPECT_EQ(parsed.stream(0).chunkCount(), 0u);
    EXPECT_EQ(parsed.stream(0).superIndexHeader().wLongsPerEntry, 4);
}

TEST(OpenDmlIndex, ASuperIndexShorterThanItsHeaderKeepsItsBytes) {
    const Bytes strl = samples::videoStrl({chunk("indx", u16(4) + u16(0) + u32(2))});
    Parsed parsed(riff("AVI ", {samples::hdrl({strl}), list("movi", {}), idx1({{.length = 7}})}));
    expectFallback(parsed, "stream[0]: super index (indx) chunk data is smaller than nEntriesInUse: 2 \n");
}

TEST(OpenDmlIndex, ASuperIndexOf39BytesHasRoomForNoEntry) {
    Bytes data = bytesOf(SuperIndex{.entriesInUse = 0});
    data.resize(39);
    const Bytes strl = samples::videoStrl({chunk("indx", data)});
    Parsed parsed(riff("AVI ", {samples::hdrl({strl}), list("movi", {})}));
    EXPECT_EQ(parsed.errors(), "");
    EXPECT_TRUE(parsed.stream(0).superIndexEntries().empty());
}

TEST(OpenDmlIndex, ASuperIndexOfAStated4GiBHasRoomForNoEntry) {
    Bytes file = openDmlFile({{{10}}});
    overwrite(file, positionOf(file, "indx") + 4, u32(0xFFFFFFFF));
    expectFallback(Parsed(file), "stream[0]: super index (indx) chunk data is smaller than nEntriesInUse: 1 \n");
}

TEST(OpenDmlIndex, ASuperIndexOfAStated2GiBUsesTheExistingEntries) {
    Bytes file = openDmlFile({{{10}}});
    overwrite(file, positionOf(file, "indx") + 4, u32(0x7FFFFFFF));
    Parsed parsed(file);
    EXPECT_EQ(parsed.errors(), "");
    EXPECT_EQ(parsed.stream(0).totalBytes(), 10u);
}

TEST(OpenDmlIndex, SuperIndexEntriesPastTheEndOfTheFileAreSkipped) {
    SuperIndex super{.entriesInUse = 100'000'000};
    Bytes file = riff("AVI ", {samples::hdrl({samples::videoStrl({indx(super)})})});
    overwrite(file, positionOf(file, "indx") + 4, u32(0x7FFFFFF0));
    Parsed parsed(file);
    EXPECT_EQ(parsed.errors(), "");
    EXPECT_TRUE(parsed.stream(0).useOpenDmlIndex());
    EXPECT_EQ(parsed.stream(0).chunkCount(), 0u);
}

// --- Faults of the standard indexes ---

TEST(OpenDmlIndex, AnEntryOfSizeZeroIsSkippedSilently) {
    Bytes file = openDmlFile({{{10}}, {{20}}, {{30}}});
    overwrite(file, superIndexEntryAt(file, 1) + 8, u32(0));
    Parsed parsed(file);
    EXPECT_EQ(parsed.errors(), "");
    EXPECT_TRUE(parsed.stream(0).useOpenDmlIndex());
    EXPECT_EQ(chunkText(parsed.stream(0)), "0:10@0k 0:30@10k");
    EXPECT_EQ(parsed.stream(0).stdIndexes()[1].wLongsPerEntry, 0);
}

TEST(OpenDmlIndex, AnEntryOfSizeSevenIsSkippedSilently) {
    Bytes file = openDmlFile({{{10}}});
    overwrite(file, superIndexEntryAt(file, 0) + 8, u32(7));
    Parsed parsed(file);
    EXPECT_EQ(parsed.errors(), "");
    EXPECT_TRUE(parsed.stream(0).useOpenDmlIndex());
}

TEST(OpenDmlIndex, AnEntryOfSizeEightCannotBeRead) {
    Bytes file = openDmlFile({{{10}}});
    overwrite(file, superIndexEntryAt(file, 0) + 8, u32(8));
    expectFallback(Parsed(file), unreadable(positionOf(file, "ix00") + 8, 0));
}

TEST(OpenDmlIndex, AnUnreadableStandardIndexFallsBackToIdx1) {
    Bytes file = openDmlFile({{{10}}, {{20}}});
    overwrite(file, superIndexEntryAt(file, 0), u64(1'000'000));
    const Parsed parsed(file);
    expectFallback(parsed, unreadable(1'000'008, 32));
    EXPECT_EQ(parsed.stream(0).openDmlChunks().size(), 1u);
}

TEST(OpenDmlIndex, AReadErrorInAStandardIndexFallsBackToIdx1) {
    const Bytes file = openDmlFile({{{10}}});
    fileio::MemoryFile memory(file);
    fileio::FaultFile faulty(memory);
    faulty.breakByte(positionOf(file, "ix00") + 20);
    AviParser parser;
    EXPECT_TRUE(parser.parse(faulty));
    EXPECT_FALSE(parser.streams()[0]->useOpenDmlIndex());
    // The walk does not enter "movi", so the fault shows only here.
    EXPECT_EQ(parser.errorText(), unreadable(positionOf(file, "ix00") + 8, 32));
}

TEST(OpenDmlIndex, PositionsBeyond2To63AreRefusedAndNamedUnsigned) {
    Bytes file = openDmlFile({{{10}}});
    overwrite(file, superIndexEntryAt(file, 0), u64(0xFFFFFFFFFFFFFF00));
    expectFallback(Parsed(file), unreadable(18446744073709551368u, 32));
}

TEST(OpenDmlIndex, AWrappedPositionReadsFromTheStart) {
    Bytes file = openDmlFile({{{10}}});
    overwrite(file, superIndexEntryAt(file, 0), u64(0xFFFFFFFFFFFFFFF8));
    // The file's first bytes are "RI", which is 18770 longs per entry.
    expectFallback(Parsed(file),
                   "stream[0]: std index (ix..) unexpected std index entry size (wLongsPerEntry): 18770\n");
}

TEST(OpenDmlIndex, AStandardIndexWithoutTwoLongsPerEntryFallsBack) {
    const Parsed parsed(openDmlFile({{{10}, {.longsPerEntry = 3}}, {{20}}}));
    expectFallback(parsed, "stream[0]: std index (ix..) unexpected std index entry size (wLongsPerEntry): 3\n");
    EXPECT_EQ(parsed.stream(0).openDmlChunks().size(), 1u);
}

TEST(OpenDmlIndex, AStandardIndexWithTooManyEntriesFallsBackToIdx1) {
    const Parsed parsed(openDmlFile({{{10, 20}, {.entriesInUse = 3}}}));
    expectFallback(parsed, "stream[0]: std index (ix..) chunk data is smaller than nEntriesInUse: 3\n");
    EXPECT_EQ(parsed.stream(0).openDmlChunks().size(), 2u);
}

TEST(OpenDmlIndex, UnusedStandardIndexEntriesAreIgnored) {
    Parsed parsed(openDmlFile({{{10, 20, 30}, {.entriesInUse = 2}}}));
    EXPECT_EQ(parsed.errors(), "");
    EXPECT_EQ(chunkText(parsed.stream(0)), "0:10@0k 100:20@10k");
}

TEST(OpenDmlIndex, ASizeWithAPartialEntryIsRoundedDown) {
    Bytes file = openDmlFile({{{10, 20}, {.entriesInUse = 2}}});
    overwrite(file, superIndexEntryAt(file, 0) + 8, u32(8 + 24 + 15));
    expectFallback(Parsed(file), "stream[0]: std index (ix..) chunk data is smaller than nEntriesInUse: 2\n");
}

TEST(OpenDmlIndex, AStandardIndexShorterThanItsHeaderKeepsItsBytes) {
    Bytes file = openDmlFile({{{10}}});
    overwrite(file, superIndexEntryAt(file, 0) + 8, u32(8 + 8));
    const Parsed parsed(file);
    expectFallback(parsed, "stream[0]: std index (ix..) chunk data is smaller than nEntriesInUse: 1\n");
    EXPECT_EQ(parsed.stream(0).stdIndexes()[0].nEntriesInUse, 1u);
    EXPECT_EQ(parsed.stream(0).stdIndexes()[0].dwChunkId, 0u);
}

TEST(OpenDmlIndex, AOneByteStandardIndexHasAPartialHeader) {
    Bytes file = openDmlFile({{{10}}});
    overwrite(file, superIndexEntryAt(file, 0) + 8, u32(8 + 1));
    Parsed parsed(file);
    EXPECT_EQ(parsed.errors(), "");
    EXPECT_TRUE(parsed.stream(0).useOpenDmlIndex());
    EXPECT_EQ(parsed.stream(0).chunkCount(), 0u);
}

TEST(OpenDmlIndex, EntriesPastTheEndOfTheFileAreZeroAndCount) {
    // The index is last in the file, so that its size can exceed the file's end.
    const Bytes head = riff("AVI ", {samples::hdrl({samples::videoStrl({indx({.entries = {{0, 8 + 24 + 8 * 5}}})})})});
    Bytes file = head + ix("ix00", {.entriesInUse = 5, .baseOffset = 1000, .entries = {{1, 10}, {2, 20}}});
    overwrite(file, superIndexEntryAt(file, 0), u64(head.size()));
    Parsed parsed(file);
    EXPECT_EQ(parsed.errors(), "");
    EXPECT_TRUE(parsed.stream(0).useOpenDmlIndex());
    EXPECT_EQ(chunkText(parsed.stream(0)), "1001:10@0k 1002:20@10k 1000:0@30k 1000:0@30k 1000:0@30k");
}

TEST(OpenDmlIndex, AnEntryCutByTheEndOfTheFileKeepsItsFirstBytes) {
    const Bytes head = riff("AVI ", {samples::hdrl({samples::videoStrl({indx({.entries = {{0, 8 + 24 + 8 * 2}}})})})});
    Bytes file = head + ix("ix00", {.baseOffset = 1000, .entries = {{1, 10}, {2, 20}}});
    overwrite(file, superIndexEntryAt(file, 0), u64(head.size()));
    file.resize(file.size() - 4);
    Parsed parsed(file);
    EXPECT_EQ(chunkText(parsed.stream(0)), "1001:10@0k 1002:0@10k");
}

// A file that ends with a standard index, shared by several streams, that states `count` entries but has none.
Bytes fileOfClaims(std::size_t streams, std::uint32_t count) {
    const Bytes index = indx({.entries = {{0, 8 + 24 + 8 * count}}});
    const Bytes head = riff("AVI ", {samples::hdrl(std::vector<Bytes>(streams, samples::videoStrl({index})))});
    Bytes file = head + ix("ix00", {.entriesInUse = count});
    for (std::size_t i = 0; i < streams; ++i) {
        overwrite(file, positionOf(file, "indx", i) + 8 + 24, u64(head.size()));
    }
    return file;
}

TEST(OpenDmlIndex, AMillionEntriesPastTheEndOfTheFileAreKept) {
    Parsed parsed(fileOfClaims(1, 1'000'000));
    EXPECT_EQ(parsed.errors(), "");
    EXPECT_TRUE(parsed.stream(0).useOpenDmlIndex());
    EXPECT_EQ(parsed.stream(0).chunkCount(), 1'000'000u);
}

TEST(OpenDmlIndex, OneMoreEntryPastTheEndOfTheFileIsAReadError) {
    const Bytes file = fileOfClaims(1, 1'000'001);
    Parsed parsed(file);
    EXPECT_EQ(parsed.errors(), unreadable(positionOf(file, "ix00") + 8, 24 + 8'000'008));
    EXPECT_FALSE(parsed.stream(0).useOpenDmlIndex());
    EXPECT_TRUE(parsed.stream(0).openDmlChunks().empty());
}

TEST(OpenDmlIndex, AllStreamsShareTheMillion) {
    Parsed parsed(fileOfClaims(3, 400'000));
    EXPECT_TRUE(parsed.stream(1).useOpenDmlIndex());
    EXPECT_FALSE(parsed.stream(2).useOpenDmlIndex());
    EXPECT_TRUE(parsed.stream(2).openDmlChunks().empty());
}

TEST(OpenDmlIndex, ACopyCutWithinItsOnlyIndexPlaysItsEntries) {
    // 300,000 pictures; the copy has 40,000 of their entries.
    constexpr std::uint32_t kCount = 300'000;
    const Bytes strl = samples::videoStrl({indx({.entries = {{0, 8 + 24 + 8 * kCount}}})});
    Bytes file = riff("AVI ", {samples::hdrl({strl})});
    overwrite(file, superIndexEntryAt(file, 0), u64(file.size()));
    file = file + ix("ix00", {.entriesInUse = kCount}) + filled(8 * 40'000, 1);
    Parsed parsed(file);
    EXPECT_TRUE(parsed.stream(0).useOpenDmlIndex());
    EXPECT_EQ(parsed.stream(0).chunkCount(), kCount);
    EXPECT_EQ(parsed.stream(0).totalBytes(), 40'000 * 0x01010101ull);
}

TEST(OpenDmlIndex, OverlappingIndexesAreNotReadForEver) {
    // 1000 entries for the same index of half a megabyte would be half a gigabyte of entries.
    constexpr std::uint32_t indexSize = 8 + 24 + 8 * 60'000;
    SuperIndex super;
    super.entries.assign(1000, {0, indexSize});
    const Bytes head = riff("AVI ", {samples::hdrl({samples::videoStrl({indx(super)})})});
    Bytes file = head + ix("ix00", {.entriesInUse = 60'000}) + filled(8 * 60'000);
    for (std::size_t i = 0; i < 1000; ++i) {
        overwrite(file, superIndexEntryAt(file, i), u64(head.size()));
    }
    Parsed parsed(file);
    EXPECT_FALSE(parsed.stream(0).useOpenDmlIndex());
    // The file's own size plus 4 MiB may be read: nine times the index.
    EXPECT_EQ(parsed.stream(0).openDmlChunks().size(), 9 * 60'000u);
}

}  // namespace
