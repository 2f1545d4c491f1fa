// The bounds on what a parse reads of indexes, just below and just above them.
#include "avi/AviParser.h"
#include "damage/Pieces.h"
#include "damage/ShortFile.h"
#include "support/FaultFile.h"
#include "support/MemoryFile.h"
#include "support/SparseFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

namespace damage {

namespace {

using namespace aviwriter;

// A super index whose entries lead into the media of a large file, and claim so many bytes each.
TEST(IndexReads, ReadsFourMebibytesAtTheFirstPlaceThatIsNoIndexAndLittleAtTheOthers) {
    constexpr std::uint32_t kPlaces = 200;
    constexpr std::uint32_t kClaimed = 8 + (8u << 20);
    std::vector<SuperIndexEntry> entries;
    for (std::uint64_t i = 1; i <= kPlaces; ++i) {
        entries.push_back({i * (kClaimed + 1000), kClaimed});
    }
    const Bytes head = riff("AVI ", {headers({videoList(1, {indx({.entries = entries})})})});
    const std::uint64_t size = (kPlaces + 2) * std::uint64_t{kClaimed + 1000};
    fileio::SparseFile sparse(static_cast<std::int64_t>(size));
    sparse.put(0, head + text("JUNK") + u32(static_cast<std::uint32_t>(size - head.size() - 8)));
    fileio::FaultFile file(sparse);
    AviParser parser;
    EXPECT_TRUE(parser.parse(file));
    EXPECT_FALSE(parser.streams().at(0)->useOpenDmlIndex());
    EXPECT_EQ(file.reads().size(), 1 + kPlaces);
    EXPECT_EQ(file.bytesRead(), 65'536 + (4u << 20) + (kPlaces - 1) * 65'536);
}

// A super index that leads to the headers first, which are no index, and then to one of so many entries.
TEST(IndexReads, ReadsALaterIndexOfAStreamThatHasShownAFaultWholeInPiecesOf64KiB) {
    constexpr std::uint32_t kEntries = 20'000;
    constexpr std::uint32_t kSize = 8 + 24 + 8 * kEntries;
    Bytes bytes = riff("AVI ", {headers({videoList(1, {indx({.entries = {{0, 100}, {0, kSize}}})})})});
    overwrite(bytes, superEntryAt(bytes, 0, 1), u64(bytes.size()));
    bytes = bytes + ix("ix00", {.entriesInUse = kEntries});
    bytes.resize(bytes.size() + 8 * kEntries, 1);
    fileio::MemoryFile memory(bytes);
    fileio::FaultFile file(memory);
    AviParser parser;
    EXPECT_TRUE(parser.parse(file));
    const AviStream& stream = *parser.streams().at(0);
    EXPECT_FALSE(stream.useOpenDmlIndex());
    ASSERT_EQ(stream.openDmlChunks().size(), std::size_t{kEntries});
    EXPECT_EQ(stream.openDmlChunks()[kEntries - 1].size, 0x01010101u);
    EXPECT_TRUE(std::all_of(file.reads().begin(), file.reads().end(),
                            [](const auto& read) { return read.wanted <= 65'536; }));
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

TEST(IndexReads, CountsTheSmallestReadAsFourKibibytes) {
    // 128 KiB and 4 MiB are 1056 reads of 4 KiB. The super index, 16 KiB and more, is among the headers; it counts as
    // long as it is, and takes the place of five.
    OneByteIndexes parsed(1051);
    EXPECT_TRUE(parsed.parser.streams().at(0)->useOpenDmlIndex());
    EXPECT_EQ(parsed.reads, 1 + 1051u);
}

TEST(IndexReads, RefusesTheIndexBehindThat) {
    OneByteIndexes parsed(1052);
    EXPECT_FALSE(parsed.parser.streams().at(0)->useOpenDmlIndex());
    EXPECT_TRUE(parsed.parser.errorText().ends_with("stream[0]: could not read standard index at: 131071, size: 1\n"))
        << parsed.parser.errorText();
}

TEST(IndexReads, KeepsTheFormatsOfOtherStreamsWhenOnesIndexesHaveUsedItUp) {
    constexpr std::int64_t kFileBytes = 2 * 1024 * 1024;
    const SuperIndex super = {.entries = std::vector<SuperIndexEntry>(5000, {kFileBytes - 9, 9})};
    const Bytes other = list("strl", {strh({.type = "auds"}), strf(filled(70'000, 7))});
    const Bytes head = riff("AVI ", {headers({videoList(1, {indx(super)}), other})});
    fileio::SparseFile file(kFileBytes);
    file.put(0, head + text("JUNK") + u32(static_cast<std::uint32_t>(kFileBytes - head.size() - 8)));
    file.put(kFileBytes - 1, u8(2));
    AviParser parser;
    EXPECT_TRUE(parser.parse(file));
    EXPECT_FALSE(parser.streams().at(0)->useOpenDmlIndex()) << "the aim was missed";
    ASSERT_EQ(parser.streams().size(), 2u);
    EXPECT_EQ(parser.streams()[1]->format(), filled(70'000, 7));
}

// The same in a file so large that the bound does not depend on its size.
bool holdsInALargeFile(std::uint32_t entries) {
    constexpr std::int64_t kByteAt = std::int64_t{5} << 30;
    const SuperIndex super = {.entries = std::vector<SuperIndexEntry>(entries, {kByteAt - 8, 9})};
    const Bytes head = riff("AVI ", {headers({videoList(1, {indx(super)})})});
    fileio::SparseFile file(kByteAt + 1);
    file.put(0, head + text("JUNK") + u32(0xFFFFFFF0));
    file.put(kByteAt, u8(2));
    AviParser parser;
    EXPECT_TRUE(parser.parse(file));
    EXPECT_EQ(parser.streams().at(0)->stdIndexes().size(), entries);
    return parser.streams().at(0)->useOpenDmlIndex();
}

// 4 GiB hold a super index of 24 bytes and so many entries of 16, with 4 KiB for each of them: 1,044,495 times 4112 are
// 3,200 bytes less.
TEST(IndexReads, LetsFourGibibytesOfIndexesBeRead) { EXPECT_TRUE(holdsInALargeFile(1'044'495)); }

TEST(IndexReads, RefusesTheIndexBehindThoseHoweverLargeTheFileIs) { EXPECT_FALSE(holdsInALargeFile(1'044'496)); }

// A megabyte of media with an "idx1" of 10,000 entries behind it, which is more than is read with the headers, and a
// super index that leads so often to one byte of the media.
std::unique_ptr<AviParser> parsedWithIdx1(std::uint32_t oneByteIndexes) {
    constexpr std::uint32_t kMovi = 1024 * 1024;
    constexpr std::uint32_t kByteAt = 512 * 1024;
    const SuperIndex super = {.entries = std::vector<SuperIndexEntry>(oneByteIndexes, {kByteAt - 8, 9})};
    const Bytes hdrl = headers({videoList(1, {indx(super)})});
    const Bytes index = idx1(std::vector<Idx1Entry>(10'000, {.length = 1}));
    const Bytes head = text("RIFF") + u32(static_cast<std::uint32_t>(4 + hdrl.size() + 8 + kMovi + index.size())) +
                       text("AVI ") + hdrl + text("LIST") + u32(kMovi) + text("movi");
    const std::uint64_t indexAt = head.size() - 4 + kMovi;
    fileio::SparseFile file(static_cast<std::int64_t>(indexAt + index.size()));
    file.put(0, head);
    file.put(kByteAt, u8(2));
    file.put(indexAt, index);
    auto parser = std::make_unique<AviParser>();
    EXPECT_TRUE(parser->parse(file));
    return parser;
}

TEST(IndexReads, KeepsIdx1ForAFileWhoseIndexesHaveUsedItUp) {
    const auto parser = parsedWithIdx1(5000);
    EXPECT_TRUE(parser->errorText().ends_with("could not read standard index at: 524288, size: 1\n"));
    EXPECT_FALSE(parser->streams().at(0)->useOpenDmlIndex());
    EXPECT_EQ(parser->streams().at(0)->chunkCount(), 10'000u);
}

TEST(IndexReads, ReadsIdx1BesideAnIndexThatIsWhole) {
    const auto parser = parsedWithIdx1(1000);
    EXPECT_EQ(parser->errorText(), "");
    EXPECT_TRUE(parser->streams().at(0)->useOpenDmlIndex());
    EXPECT_EQ(parser->streams().at(0)->idx1Chunks().size(), 10'000u);
}

// A standard index of five MiB, so that it is read in two pieces, and a super index that leads to it twice: nine MiB
// and the headers may be read, so that the second time ends behind the first piece.
TEST(IndexReads, AnIndexOfWhichOnlyTheFirstPieceMayBeReadIsNotInUse) {
    constexpr std::uint32_t kEntries = 5 * 131'072;
    const std::uint32_t size = 8 + 24 + 8 * kEntries;
    Bytes head = riff("AVI ", {headers({videoList(1, {indx({.entries = {{0, size}, {0, size}}})})})});
    const std::size_t indexAt = head.size();
    for (std::size_t entry = 0; entry < 2; ++entry) {
        overwrite(head, superEntryAt(head, 0, entry), u64(indexAt));
    }
    fileio::SparseFile file(static_cast<std::int64_t>(indexAt + size));
    file.put(0, head + ix("ix00", {.entriesInUse = kEntries}));
    file.put(indexAt + 4, u32(size - 8));
    AviParser parser;
    EXPECT_TRUE(parser.parse(file));
    EXPECT_EQ(parser.errorText(), "stream[0]: could not read standard index at: " + std::to_string(indexAt + 8) +
                                      ", size: " + std::to_string(size - 8) + "\n");
    EXPECT_FALSE(parser.streams().at(0)->useOpenDmlIndex());
}

// A standard index of five MiB at the end of the file, and what is known of it where the file's last bytes are lost.
struct LostEnd {
    explicit LostEnd(std::uint64_t lost) {
        constexpr std::uint32_t kSize = 8 + 24 + 8 * kEntries;
        Bytes bytes = riff("AVI ", {headers({videoList(1, {indx({.entries = {{0, kSize}}})})})});
        overwrite(bytes, superEntryAt(bytes, 0, 0), u64(bytes.size()));
        bytes = bytes + ix("ix00", {.entriesInUse = kEntries});
        bytes.resize(bytes.size() + 8 * kEntries, 1);
        ShortFile file(bytes);
        file.endAt(bytes.size() - lost);
        EXPECT_TRUE(parser.parse(file));
    }

    static constexpr std::uint32_t kEntries = 5 * 131'072;
    AviParser parser;
    const AviStream& stream() const { return *parser.streams().at(0); }
};

TEST(IndexReads, AnIndexThatEndsWithinItsSecondPieceHasEmptyEntriesForTheRest) {
    const LostEnd parsed(8 * 100);
    EXPECT_TRUE(parsed.stream().useOpenDmlIndex());
    ASSERT_EQ(parsed.stream().chunkCount(), LostEnd::kEntries);
    EXPECT_EQ(parsed.stream().chunk(LostEnd::kEntries - 101).size, 0x01010101u);
    EXPECT_EQ(parsed.stream().chunk(LostEnd::kEntries - 100).size, 0u);
}

TEST(IndexReads, AnIndexOfWhichTheSecondPieceIsNotThereIsNotInUse) {
    const LostEnd parsed(24 + (1u << 20));
    EXPECT_FALSE(parsed.stream().useOpenDmlIndex());
    EXPECT_NE(parsed.parser.errorText().find("could not read standard index"), std::string::npos);
}

// The super index of the second stream takes five MiB in two pieces. That of the first leads to four and a half MiB
// that are no indexes, and leaves four and a half and the headers.
TEST(IndexReads, ASuperIndexOfWhichOnlyTheFirstPieceMayBeReadIsNotInUse) {
    constexpr std::uint32_t kEntries = 5 * 65'536;
    const Bytes first = videoList(1, {indx({.entries = {{0, 8 + (4u << 20)}, {0, 8 + (1u << 19)}}})});
    const Bytes second = videoList(1, {indx({.entries = std::vector<SuperIndexEntry>(kEntries)})});
    fileio::MemoryFile file(riff("AVI ", {headers({first, second})}));
    AviParser parser;
    EXPECT_TRUE(parser.parse(file));
    EXPECT_TRUE(parser.errorText().ends_with(
        "stream[1]: super index (indx) chunk data is smaller than nEntriesInUse: 327680 \n"))
        << parser.errorText();
    EXPECT_FALSE(parser.streams().at(1)->useOpenDmlIndex());
}

}  // namespace

}  // namespace damage
