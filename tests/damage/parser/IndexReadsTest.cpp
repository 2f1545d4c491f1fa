// The limits on what a parse reads of indexes: files just below and just above them.
#include "avi/AviParser.h"
#include "damage/parser/Pieces.h"
#include "support/FaultFile.h"
#include "support/MemoryFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

namespace damage {

namespace {

using namespace aviwriter;

// A super index that points at `pieces` positions in the media of a sparse file, and then, 8 MiB before its end, at an
// index of `indexBytes` bytes. The first ones have stated sizes of 8 MiB, of which 4 MiB are read: their first four
// bytes show that they are not indexes.
std::string errorsOfAnIndexAfterNone(std::uint64_t fileBytes, std::uint32_t pieces, std::uint32_t indexBytes) {
    constexpr std::uint32_t kClaimed = 8 + (8u << 20);
    const std::uint64_t indexAt = fileBytes - (8 << 20);
    std::vector<SuperIndexEntry> entries;
    for (std::uint64_t i = 0; i < pieces; ++i) {
        entries.push_back({(1 << 20) + i * (indexAt - (1 << 20)) / pieces, kClaimed});
    }
    entries.push_back({indexAt, 8 + indexBytes});
    const Bytes head = riff("AVI ", {headers({videoList(1, {indx({.entries = entries})})})});
    fileio::MemoryFile sparse(static_cast<std::int64_t>(fileBytes));
    sparse.put(0, head + text("JUNK") + u32(static_cast<std::uint32_t>(fileBytes - head.size() - 8)));
    sparse.put(static_cast<std::int64_t>(indexAt), ix("ix00", {.entries = {{0, 1}}}));
    fileio::FaultFile file(sparse);
    AviParser parser;
    EXPECT_TRUE(parser.parse(file));
    EXPECT_LE(file.bytesRead(), (pieces + 1) * (4ull << 20) + 65'536)
        << "plus the headers, which include the super index";
    const std::string errors = parser.errorText();
    return errors.substr(errors.rfind("stream[0]: "));
}

// Up to 512 MiB: 127 pieces of 4 MiB, a super index of 2072 bytes, and the rest.
constexpr std::uint64_t kFileOf2GiB = (std::uint64_t{2} << 30) + (8 << 20);
constexpr std::uint32_t kRestOf512MiB = (4 << 20) - 2072;

TEST(IndexReads, AllowHalfAGibibyteOfIndexes) {
    EXPECT_EQ(errorsOfAnIndexAfterNone(kFileOf2GiB, 127, kRestOf512MiB),
              "stream[0]: std index (ix..) unexpected std index entry size (wLongsPerEntry): 0\n");
}

TEST(IndexReads, RefuseTheNextByteOfAnyFile) {
    EXPECT_EQ(errorsOfAnIndexAfterNone(kFileOf2GiB, 127, kRestOf512MiB + 1),
              "stream[0]: could not read standard index at: 2147483656, size: 4192233\n");
}

// In a smaller file, its size plus 4 MiB: four pieces, a super index of 104 bytes, and the rest.
constexpr std::uint64_t kFileOf16MiB = 16 << 20;
constexpr std::uint32_t kRestOf20MiB = (4 << 20) - 104;

TEST(IndexReads, AllowFourMebibytesBeyondASmallFilesSize) {
    EXPECT_EQ(errorsOfAnIndexAfterNone(kFileOf16MiB, 4, kRestOf20MiB),
              "stream[0]: std index (ix..) unexpected std index entry size (wLongsPerEntry): 0\n");
}

TEST(IndexReads, RefuseTheNextByteOfASmallFile) {
    EXPECT_EQ(errorsOfAnIndexAfterNone(kFileOf16MiB, 4, kRestOf20MiB + 1),
              "stream[0]: could not read standard index at: 8388616, size: 4194201\n");
}

// A super index whose entries all point at the last byte of a file of one MiB: an index without entries.
struct OneByteIndexes {
    explicit OneByteIndexes(std::uint32_t entries) {
        constexpr std::int64_t kFileBytes = 1 << 20;
        const SuperIndex super = {.entries = std::vector<SuperIndexEntry>(entries, {kFileBytes - 9, 9})};
        const Bytes head = riff("AVI ", {headers({videoList(1, {indx(super)})})});
        fileio::MemoryFile sparse(kFileBytes);
        sparse.put(0, head + text("JUNK") + u32(static_cast<std::uint32_t>(kFileBytes - head.size() - 8)));
        sparse.put(kFileBytes - 1, u8(2));   // two longs per entry, as required
        EXPECT_TRUE(parser.parse(sparse));
    }

    AviParser parser;
};

// One for every 4 KiB of the file, and 16,384 more.
TEST(IndexReads, AllowAnIndexPer4KiBAnd16384More) {
    const OneByteIndexes parsed(256 + 16'384);
    EXPECT_EQ(parsed.parser.errorText(), "");
    EXPECT_TRUE(parsed.parser.streams().at(0)->useOpenDmlIndex());
}

TEST(IndexReads, RefuseTheIndexAfterThose) {
    const OneByteIndexes parsed(256 + 16'385);
    EXPECT_EQ(parsed.parser.errorText(),
              "stream[0]: super index (indx) chunk data is smaller than nEntriesInUse: 16641 \n");
    EXPECT_FALSE(parsed.parser.streams().at(0)->useOpenDmlIndex());
    EXPECT_EQ(parsed.parser.streams().at(0)->stdIndexes().size(), 16'640u);
}

TEST(IndexReads, KeepOtherStreamsFormatsAfterTheLimit) {
    constexpr std::int64_t kFileBytes = 2 * 1024 * 1024;
    const SuperIndex super = {.entries = std::vector<SuperIndexEntry>(17'000, {kFileBytes - 9, 9})};
    const Bytes other = list("strl", {strh({.type = "auds"}), strf(filled(70'000, 7))});
    const Bytes head = riff("AVI ", {headers({videoList(1, {indx(super)}), other})});
    fileio::MemoryFile file(kFileBytes);
    file.put(0, head + text("JUNK") + u32(static_cast<std::uint32_t>(kFileBytes - head.size() - 8)));
    file.put(kFileBytes - 1, u8(2));
    AviParser parser;
    EXPECT_TRUE(parser.parse(file));
    EXPECT_FALSE(parser.streams().at(0)->useOpenDmlIndex()) << "the limit was not reached";
    ASSERT_EQ(parser.streams().size(), 2u);
    EXPECT_EQ(parser.streams()[1]->format(), filled(70'000, 7));
}

// The same in a file so large that the limit does not depend on its size, with entries that are skipped.
bool holdsInALargeFile(std::uint32_t entries) {
    const SuperIndex super = {.entries = std::vector<SuperIndexEntry>(entries)};
    const Bytes head = riff("AVI ", {headers({videoList(1, {indx(super)})})});
    fileio::MemoryFile file(std::int64_t{5} << 30);
    file.put(0, head + text("JUNK") + u32(0xFFFFFFF0));
    AviParser parser;
    EXPECT_TRUE(parser.parse(file));
    EXPECT_EQ(parser.streams().at(0)->stdIndexes().size(), std::min<std::size_t>(entries, 1 << 20));
    return parser.streams().at(0)->useOpenDmlIndex();
}

TEST(IndexReads, AllowAMebiOfIndexes) { EXPECT_TRUE(holdsInALargeFile(1 << 20)); }

TEST(IndexReads, RefuseTheIndexAfterThoseInAnyFile) { EXPECT_FALSE(holdsInALargeFile((1 << 20) + 1)); }

// A megabyte of media, an "idx1" of 10,000 entries, which is more than is read with the headers, and a super index that
// points `indexes` times at `bytesEach` bytes of the media, which begin as an index does.
std::unique_ptr<AviParser> parsedWithIdx1(std::uint32_t indexes, std::uint32_t bytesEach) {
    constexpr std::uint32_t kMovi = 1024 * 1024;
    constexpr std::uint32_t kByteAt = 512 * 1024;
    const SuperIndex super = {.entries = std::vector<SuperIndexEntry>(indexes, {kByteAt - 8, 8 + bytesEach})};
    const Bytes hdrl = headers({videoList(1, {indx(super)})});
    const Bytes index = idx1(std::vector<Idx1Entry>(10'000, {.length = 1}));
    const Bytes head = text("RIFF") + u32(static_cast<std::uint32_t>(4 + hdrl.size() + 8 + kMovi + index.size())) +
                       text("AVI ") + hdrl + text("LIST") + u32(kMovi) + text("movi");
    const std::uint64_t indexAt = head.size() - 4 + kMovi;
    fileio::MemoryFile file(static_cast<std::int64_t>(indexAt + index.size()));
    file.put(0, head);
    file.put(kByteAt, u8(2));
    file.put(indexAt, index);
    auto parser = std::make_unique<AviParser>();
    EXPECT_TRUE(parser->parse(file));
    return parser;
}

TEST(IndexReads, IncludeIdx1AfterTheLimit) {
    const auto parser = parsedWithIdx1(20, 500'000);
    EXPECT_TRUE(parser->errorText().ends_with("could not read standard index at: 524288, size: 500000\n"));
    EXPECT_FALSE(parser->streams().at(0)->useOpenDmlIndex());
    EXPECT_EQ(parser->streams().at(0)->chunkCount(), 10'000u);
}

TEST(IndexReads, IncludeIdx1NextToACompleteIndex) {
    const auto parser = parsedWithIdx1(1000, 1);
    EXPECT_EQ(parser->errorText(), "");
    EXPECT_TRUE(parser->streams().at(0)->useOpenDmlIndex());
    EXPECT_EQ(parser->streams().at(0)->idx1Chunks().size(), 10'000u);
}

// A standard index of five MiB, which is read in two pieces, and a super index that points at it twice: nine MiB and
// the headers may be read, so that the second time ends after the first piece.
TEST(IndexReads, DoNotUseAnIndexBeyondTheLimit) {
    constexpr std::uint32_t kEntries = 5 * 131'072;
    const std::uint32_t size = 8 + 24 + 8 * kEntries;
    Bytes head = riff("AVI ", {headers({videoList(1, {indx({.entries = {{0, size}, {0, size}}})})})});
    const std::size_t indexAt = head.size();
    for (std::size_t entry = 0; entry < 2; ++entry) {
        overwrite(head, superEntryAt(head, 0, entry), u64(indexAt));
    }
    fileio::MemoryFile file(static_cast<std::int64_t>(indexAt + size));
    file.put(0, head + ix("ix00", {.entriesInUse = kEntries}));
    file.put(indexAt + 4, u32(size - 8));
    AviParser parser;
    EXPECT_TRUE(parser.parse(file));
    EXPECT_EQ(parser.errorText(), "stream[0]: could not read standard index at: " + std::to_string(indexAt + 8) +
                                      ", size: " + std::to_string(size - 8) + "\n");
    EXPECT_FALSE(parser.streams().at(0)->useOpenDmlIndex());
}

// A standard index of five MiB at the end of a file whose last bytes are lost.
struct LostEnd {
    explicit LostEnd(std::uint64_t lost) {
        constexpr std::uint32_t kSize = 8 + 24 + 8 * kEntries;
        Bytes bytes = riff("AVI ", {headers({videoList(1, {indx({.entries = {{0, kSize}}})})})});
        overwrite(bytes, superEntryAt(bytes, 0, 0), u64(bytes.size()));
        bytes = bytes + ix("ix00", {.entriesInUse = kEntries});
        bytes.resize(bytes.size() + 8 * kEntries, 1);
        fileio::MemoryFile memory(bytes);
        fileio::FaultFile file(memory);
        file.endReadsAt(bytes.size() - lost);
        EXPECT_TRUE(parser.parse(file));
    }

    static constexpr std::uint32_t kEntries = 5 * 131'072;
    AviParser parser;
    const AviStream& stream() const { return *parser.streams().at(0); }
};

TEST(IndexReads, FillUpATruncatedSecondPieceWithEmptyEntries) {
    const LostEnd parsed(8 * 100);
    EXPECT_TRUE(parsed.stream().useOpenDmlIndex());
    ASSERT_EQ(parsed.stream().chunkCount(), LostEnd::kEntries);
    EXPECT_EQ(parsed.stream().chunk(LostEnd::kEntries - 101).size, 0x01010101u);
    EXPECT_EQ(parsed.stream().chunk(LostEnd::kEntries - 100).size, 0u);
}

TEST(IndexReads, DoNotUseAnIndexWithoutItsSecondPiece) {
    const LostEnd parsed(24 + (1u << 20));
    EXPECT_FALSE(parsed.stream().useOpenDmlIndex());
    EXPECT_NE(parsed.parser.errorText().find("could not read standard index"), std::string::npos);
}

// The file has four MiB, so that eight may be read. The first stream's invalid indexes leave less than 1000 bytes of
// that.
TEST(IndexReads, DoNotUseASuperIndexBeyondTheLimit) {
    constexpr std::uint32_t kFileBytes = 4 << 20;
    const Bytes first = videoList(1, {indx({.entries = {{0, kFileBytes}, {0, kFileBytes - 1000}}})});
    const Bytes second = videoList(1, {indx({.entries = std::vector<SuperIndexEntry>(100)})});
    const Bytes head = riff("AVI ", {headers({first, second})});
    fileio::MemoryFile file(head + chunk("JUNK", filled(kFileBytes - head.size() - 8)));
    AviParser parser;
    EXPECT_TRUE(parser.parse(file));
    EXPECT_TRUE(parser.errorText().ends_with(
        "stream[1]: super index (indx) unexpected super index entry size (wLongsPerEntry): 0\n"))
        << parser.errorText();
    EXPECT_FALSE(parser.streams().at(1)->useOpenDmlIndex());
}

}  // namespace

}  // namespace damage
