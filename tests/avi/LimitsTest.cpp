// Files just below and just above the parser's limits, and the cost of false sizes.
#include "CountingHeap.h"
#include "SampleFiles.h"
#include "support/FaultFile.h"
#include "support/MemoryFile.h"

#include <gtest/gtest.h>

namespace {

using namespace aviwriter;
using samples::Parsed;

constexpr std::size_t kMiB = std::size_t{1} << 20;

Bytes fileWithFormats(std::size_t streams, std::size_t formatBytes) {
    const Bytes strl = list("strl", {strh({}), strf(filled(formatBytes))});
    return riff("AVI ", {samples::hdrl(std::vector<Bytes>(streams, strl))});
}

TEST(Limits, EightMebibytesOfFormatsAreKept) {
    for (const std::size_t streams : {1, 8}) {
        Parsed parsed(fileWithFormats(streams, 8 * kMiB / streams));
        EXPECT_EQ(parsed.errors(), "");
        EXPECT_EQ(parsed.parser.streams().size(), streams);
        EXPECT_EQ(parsed.stream(0).format().size(), 8 * kMiB / streams);
    }
}

TEST(Limits, ALongerFormatIsNotRead) {
    Parsed parsed(fileWithFormats(1, 8 * kMiB + 1));
    EXPECT_EQ(parsed.errors(), "stream[0]: strf data read error\n");
    EXPECT_TRUE(parsed.parser.streams().empty());
}

TEST(Limits, AByteAfterEightMebibytesOfFormatsIsNotRead) {
    const Bytes mebibyte = list("strl", {strh({}), strf(filled(kMiB))});
    std::vector<Bytes> strls(8, mebibyte);
    strls.push_back(list("strl", {strh({}), strf(filled(1))}));
    strls.push_back(list("strl", {strh({}), strf({})}));
    Parsed parsed(riff("AVI ", {samples::hdrl(strls)}));
    EXPECT_EQ(parsed.errors(), "stream[8]: strf data read error\n");
    EXPECT_EQ(parsed.parser.streams().size(), 9u) << "an empty format needs no read";
}

TEST(Limits, AnOversizedFormatDoesNotAffectTheOthers) {
    const Bytes tooLong = list("strl", {strh({}), strf(filled(8 * kMiB + 1))});
    const Bytes longest = list("strl", {strh({}), strf(filled(8 * kMiB))});
    Parsed parsed(riff("AVI ", {samples::hdrl({tooLong, longest})}));
    EXPECT_EQ(parsed.errors(), "stream[0]: strf data read error\n");
    EXPECT_EQ(parsed.parser.streams().size(), 1u);
}

TEST(Limits, UnreadableFormatsCountTowardsTheLimit) {
    // After 64 KiB of other chunks, so that they are not read together with the headers.
    const Bytes mebibyte = list("strl", {strh({}), strf(filled(kMiB))});
    std::vector<Bytes> strls = {list("strl", {strh({}), strf({}), chunk("JUNK", filled(70'000))})};
    strls.insert(strls.end(), 9, mebibyte);
    const Bytes bytes = riff("AVI ", {samples::hdrl(strls)});
    fileio::MemoryFile memory(bytes);
    fileio::FaultFile file(memory);
    file.breakByte(positionOf(bytes, "strf", 1) + kMiB / 2);
    AviParser parser;
    EXPECT_TRUE(parser.parse(file));
    EXPECT_EQ(parser.errorText(), "stream[1]: strf data read error\nstream[9]: strf data read error\n");
}

TEST(Limits, TenThousandStreamsAreRead) {
    Parsed parsed(fileWithFormats(10'000, 0));
    EXPECT_EQ(parsed.errors(), "");
    EXPECT_EQ(parsed.parser.streams().size(), 10'000u);
}

TEST(Limits, FurtherStreamsAreIgnored) {
    Parsed parsed(fileWithFormats(10'001, 0));
    EXPECT_EQ(parsed.errors(), "");
    EXPECT_EQ(parsed.parser.streams().size(), 10'000u);
}

TEST(Limits, AMessageIsKeptIfTheTextIsBelowAMebibyte) {
    ErrorText errors;
    errors.add(std::string(kMiB - 1, 'x'));
    EXPECT_TRUE(errors.hasRoom());
    errors.add("one more\n");
    EXPECT_EQ(errors.text().size(), kMiB - 1 + 9);
}

TEST(Limits, AMessageIsDroppedIfTheTextIsAMebibyte) {
    ErrorText errors;
    errors.add(std::string(kMiB, 'x'));
    EXPECT_FALSE(errors.hasRoom());
    errors.add("one more\n");
    EXPECT_EQ(errors.text().size(), kMiB);
}

TEST(Limits, MessagesEndAfterAMebibyte) {
    // 100 super indexes with 200 invalid entries each: every entry causes a message of some 70 characters.
    const Bytes strl = samples::videoStrl({indx({.entries = std::vector<SuperIndexEntry>(200, {0xFFFFFFFFFF, 100})})});
    Parsed parsed(riff("AVI ", {samples::hdrl(std::vector<Bytes>(100, strl))}));
    EXPECT_GT(parsed.errors().size(), kMiB);
    EXPECT_LT(parsed.errors().size(), kMiB + 100);
    EXPECT_EQ(parsed.errors().back(), '\n');
    EXPECT_EQ(parsed.parser.streams().size(), 100u);
}

// Peak memory of parsing the file.
std::size_t peakOf(AviParser& parser, fileio::File& file) {
    const std::size_t before = heap::inUse();
    heap::startCounting();
    EXPECT_TRUE(parser.parse(file));
    return heap::peak() - before;
}

TEST(Limits, ASparseFormatOfGigabytesTakesNoMemory) {
    // An aborted capture leaves a hole; a damaged size makes all of it one format.
    const Bytes head = riff("AVI ", {samples::hdrl({list("strl", {strh({}), chunkClaiming("strf", 0xF0000000, {})})})});
    fileio::MemoryFile file(std::int64_t{4} << 30);
    file.put(0, head);
    AviParser parser;
    EXPECT_LT(peakOf(parser, file), 20 * kMiB);
    EXPECT_NE(parser.errorText().find("stream[0]: strf data read error\n"), std::string::npos);
}

// A stream whose standard index states gigabytes of entries, in a file that reports such a size.
fileio::MemoryFile fileOfEndlessIndex(std::uint64_t& indexAt) {
    const std::uint32_t count = 500'000'000;
    const std::uint32_t size = 8 + 24 + 8 * std::uint64_t{count};
    Bytes head = riff("AVI ", {samples::hdrl({samples::videoStrl({indx({.entries = {{0, size}}})})})});
    indexAt = head.size();
    overwrite(head, samples::superIndexEntryAt(head, 0), u64(indexAt));
    fileio::MemoryFile file(std::int64_t{8} << 30);
    file.put(0, head + ix("ix00", {.entriesInUse = count}));
    return file;
}

TEST(Limits, AnIndexInAHoleHasDroppedFrames) {
    // 8 MiB of zeros that take no space on disk.
    constexpr std::uint32_t kCount = 1 << 20;
    constexpr std::uint32_t kSize = 8 + 24 + 8 * kCount;
    Bytes head = riff("AVI ", {samples::hdrl({samples::videoStrl({indx({.entries = {{0, kSize}}})})})});
    overwrite(head, samples::superIndexEntryAt(head, 0), u64(head.size()));
    fileio::MemoryFile file(std::int64_t{kSize} + 1000);
    file.put(0, head + ix("ix00", {.entriesInUse = kCount, .baseOffset = 4711}));
    AviParser parser;
    EXPECT_LT(peakOf(parser, file), 17 * kCount + 5 * kMiB);
    const AviStream& stream = *parser.streams().at(0);
    EXPECT_TRUE(stream.useOpenDmlIndex());
    ASSERT_EQ(stream.chunkCount(), std::size_t{kCount});
    EXPECT_EQ(stream.chunk(kCount - 1).offset, 4711u);
    EXPECT_EQ(stream.totalBytes(), 0u);
}

TEST(Limits, ATruncatedIndexTakesNoMemoryForItsRest) {
    std::uint64_t indexAt = 0;
    fileio::MemoryFile sparse = fileOfEndlessIndex(indexAt);
    fileio::FaultFile file(sparse);
    file.breakByte(indexAt + (16u << 20));
    AviParser parser;
    EXPECT_LT(peakOf(parser, file), 64 * kMiB + 3 * 16 * kMiB);
    EXPECT_FALSE(parser.streams().at(0)->useOpenDmlIndex());
    EXPECT_NE(parser.errorText().find("stream[0]: could not read standard index at: " + std::to_string(indexAt + 8)),
              std::string::npos);
}

// A file whose last bytes are a standard index of `count` entries.
Bytes fileOfOneIndex(std::uint32_t count) {
    Bytes head = riff("AVI ", {samples::hdrl({samples::videoStrl({indx({.entries = {{0, 8 + 24 + 8 * count}}})})})});
    overwrite(head, samples::superIndexEntryAt(head, 0), u64(head.size()));
    return head + ix("ix00", {.entriesInUse = count, .entries = {{1, 10}}}) + filled(8 * (count - 1));
}

TEST(Limits, AnIndexWithAnUnreadableSecondPieceIsNotUsed) {
    // Five MiB: the second piece of up to four MiB fails.
    const Bytes bytes = fileOfOneIndex(5 * 131'072);
    fileio::MemoryFile memory(bytes);
    fileio::FaultFile file(memory);
    file.breakByte(bytes.size() - 1000);
    AviParser parser;
    EXPECT_TRUE(parser.parse(file));
    const std::string at = std::to_string(positionOf(bytes, "ix00") + 8);
    EXPECT_EQ(parser.errorText(), "riff structure is corrupt or invalid\n"
                                  "stream[0]: could not read standard index at: " +
                                      at + ", size: " + std::to_string(24 + 8 * 5 * 131'072) + "\n");
    EXPECT_FALSE(parser.streams().at(0)->useOpenDmlIndex());
}

TEST(Limits, AnIndexWithAnUnreadableLastEntryIsNotUsed) {
    // 24 bytes and all entries but one are the first piece of four MiB.
    const Bytes bytes = fileOfOneIndex(524'286);
    fileio::MemoryFile memory(bytes);
    fileio::FaultFile file(memory);
    file.breakByte(bytes.size() - 1);
    AviParser parser;
    EXPECT_TRUE(parser.parse(file));
    EXPECT_NE(parser.errorText().find("could not read standard index"), std::string::npos);
    EXPECT_FALSE(parser.streams().at(0)->useOpenDmlIndex());
}

TEST(Limits, AMillionMissingEntriesAreZero) {
    // Reading the first piece returns 24 bytes and 131,069 entries, as if the file ended there.
    constexpr std::uint32_t kCount = 131'069 + 1'000'000;
    fileio::MemoryFile memory(fileOfOneIndex(kCount));
    fileio::FaultFile file(memory);
    file.limitReads(kMiB);
    AviParser parser;
    EXPECT_TRUE(parser.parse(file));
    EXPECT_TRUE(parser.streams().at(0)->useOpenDmlIndex());
    EXPECT_EQ(parser.streams().at(0)->chunkCount(), kCount);
}

TEST(Limits, OneMoreMissingEntryIsAReadError) {
    fileio::MemoryFile memory(fileOfOneIndex(131'069 + 1'000'001));
    fileio::FaultFile file(memory);
    file.limitReads(kMiB);
    AviParser parser;
    EXPECT_TRUE(parser.parse(file));
    EXPECT_FALSE(parser.streams().at(0)->useOpenDmlIndex());
}

TEST(Limits, AnUnreadableSuperIndexTakesNoMemory) {
    Bytes head = riff("AVI ", {samples::hdrl({list("strl", {strh({}), strf({}), chunkClaiming("indx", 0x7FFFFFF0,
                               bytesOf(SuperIndex{.entriesInUse = 0x07000000}))})})});
    fileio::MemoryFile sparse(std::int64_t{8} << 30);
    sparse.put(0, head);
    fileio::FaultFile file(sparse);
    file.breakByte(5u << 20);
    AviParser parser;
    EXPECT_LT(peakOf(parser, file), 64 * kMiB);
}

}  // namespace
