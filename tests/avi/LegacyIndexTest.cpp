#include "SampleFiles.h"

#include <gtest/gtest.h>

namespace {

using namespace aviwriter;
using samples::chunkText;
using samples::Parsed;

Bytes fileWithIdx1(const std::vector<Bytes>& strls, const Bytes& idx1Chunk) {
    return riff("AVI ", {samples::hdrl(strls), list("movi", {}), idx1Chunk});
}

std::uint64_t moviAt(const Bytes& file) {
    return positionOf(file, "movi") - 8;
}

std::string at(std::uint64_t offset, const std::string& rest) {
    return std::to_string(offset) + rest;
}

TEST(LegacyIndex, OffsetsAreRelativeToTheMoviType) {
    const Bytes file = samples::idx1File({chunk("00dc", filled(100, 0xAB))}, {{.offset = 4, .length = 100}});
    Parsed parsed(file);
    ASSERT_EQ(parsed.stream(0).chunkCount(), 1u);
    EXPECT_EQ(parsed.stream(0).chunk(0).offset, positionOf(file, "00dc") + 8);
    EXPECT_EQ(file[parsed.stream(0).chunk(0).offset], 0xAB);
}

TEST(LegacyIndex, AbsoluteOffsetsAreNotRecognised) {
    Bytes file = samples::idx1File({chunk("00dc", filled(100))}, {{.length = 100}});
    const auto absolute = static_cast<std::uint32_t>(positionOf(file, "00dc"));
    overwrite(file, positionOf(file, "idx1") + 8 + 8, u32(absolute));
    Parsed parsed(file);
    EXPECT_EQ(parsed.stream(0).chunk(0).offset, moviAt(file) + 16 + absolute);
}

TEST(LegacyIndex, StartBytesAreRunningSumsAndFlagsMarkKeyFrames) {
    const Bytes file = samples::idx1File({}, {{.flags = 0x10, .offset = 4, .length = 10},
                                              {.flags = 0, .offset = 20, .length = 0},
                                              {.flags = 0xFFFFFFEF, .offset = 30, .length = 5},
                                              {.flags = 0x11, .offset = 40, .length = 7}});
    Parsed parsed(file);
    const std::uint64_t base = moviAt(file) + 16;
    EXPECT_EQ(chunkText(parsed.stream(0)),
              at(base + 4, ":10@0k ") + at(base + 20, ":0@10 ") + at(base + 30, ":5@10 ") + at(base + 40, ":7@15k"));
}

TEST(LegacyIndex, OffsetsAndLengthsUseAll32Bits) {
    const Bytes file = samples::idx1File({}, {{.offset = 0xFFFFFFFF, .length = 0xFFFFFFFF},
                                              {.offset = 0x80000000, .length = 0x80000000},
                                              {.offset = 0, .length = 1}});
    Parsed parsed(file);
    const std::uint64_t base = moviAt(file) + 16;
    EXPECT_EQ(chunkText(parsed.stream(0)), at(base + 0xFFFFFFFF, ":4294967295@0k ") +
                                               at(base + 0x80000000, ":2147483648@4294967295k ") +
                                               at(base, ":1@6442450943k"));
    EXPECT_EQ(parsed.stream(0).totalBytes(), 6442450944u);
}

TEST(LegacyIndex, TheTypeOfAChunkDoesNotMatter) {
    Parsed parsed(samples::idx1File({}, {{.chunkId = "00dc", .length = 1},
                                         {.chunkId = "00db", .length = 2},
                                         {.chunkId = "00pc", .length = 3},
                                         {.chunkId = "01wb", .length = 4}}));
    EXPECT_EQ(parsed.stream(0).chunkCount(), 3u);
    EXPECT_EQ(parsed.stream(0).totalBytes(), 6u);
}

TEST(LegacyIndex, StreamTenOwnsTheChunksThatBeginWithTen) {
    Parsed parsed(fileWithIdx1(std::vector<Bytes>(11, samples::videoStrl()),
                               idx1({{.chunkId = "10dc", .length = 5}, {.chunkId = "01dc", .length = 6}})));
    EXPECT_EQ(parsed.stream(10).totalBytes(), 5u);
    EXPECT_EQ(parsed.stream(1).totalBytes(), 6u);
    EXPECT_EQ(parsed.stream(0).chunkCount(), 0u);
}

TEST(LegacyIndex, StreamsFrom100OnUseTheCharactersAfterNine) {
    Parsed parsed(fileWithIdx1(std::vector<Bytes>(124, list("strl", {strh({}), strf({})})),
                               idx1({{.chunkId = ":0dc", .length = 5}, {.chunkId = "<3dc", .length = 6}})));
    EXPECT_EQ(parsed.stream(100).totalBytes(), 5u);
    EXPECT_EQ(parsed.stream(123).totalBytes(), 6u);
}

TEST(LegacyIndex, StreamsFrom2560OnGetNoEntries) {
    Parsed parsed(fileWithIdx1(std::vector<Bytes>(2600, list("strl", {strh({}), strf({})})),
                               idx1({{.chunkId = "37dc", .length = 5},
                                     {.chunkId = std::string_view("\0" "1dc", 4), .length = 6}})));
    EXPECT_EQ(parsed.stream(37).totalBytes(), 5u);
    EXPECT_EQ(parsed.stream(2597).chunkCount(), 0u);
    EXPECT_EQ(parsed.stream(2081).totalBytes(), 6u);
    EXPECT_EQ(parsed.stream(2598).chunkCount(), 0u);
}

TEST(LegacyIndex, EntriesWithoutAStreamAreIgnored) {
    Parsed parsed(samples::idx1File({}, {{.chunkId = "rec ", .length = 1},
                                         {.chunkId = "0 dc", .length = 2},
                                         {.chunkId = " 0dc", .length = 3},
                                         {.chunkId = "00dc", .length = 4}}));
    EXPECT_EQ(parsed.stream(0).totalBytes(), 4u);
}

TEST(LegacyIndex, An100ByteIndexKeepsSixEntriesAndAPartialOne) {
    Bytes entries;
    for (int i = 0; i < 7; ++i) {
        entries = entries + bytesOf(Idx1Entry{.offset = 4, .length = 10});
    }
    entries.resize(100);
    const Bytes file = fileWithIdx1({samples::videoStrl()}, chunk("idx1", entries));
    Parsed parsed(file);
    EXPECT_TRUE(parsed.usable);
    EXPECT_EQ(parsed.errors(), "idx1 size is not a multiple of index entry size\n");
    EXPECT_EQ(parsed.parser.idx1EntryCount(), 7u);
    ASSERT_EQ(parsed.stream(0).chunkCount(), 7u);
    const AviChunk last = parsed.stream(0).chunk(6);
    EXPECT_EQ(last.offset, moviAt(file) + 16);
    EXPECT_EQ(last.size, 0u);
    EXPECT_EQ(last.startByte, 60u);
    EXPECT_EQ(last.keyframe, 0);
}

TEST(LegacyIndex, ATruncatedIndexKeepsItsEntries) {
    Bytes file = fileWithIdx1({samples::videoStrl()}, idx1({{.length = 1}, {.length = 2}, {.length = 3}}));
    file.resize(file.size() - 18);
    Parsed parsed(file);
    EXPECT_TRUE(parsed.usable);
    EXPECT_EQ(parsed.errors(), "");
    EXPECT_EQ(parsed.parser.idx1EntryCount(), 3u);
    ASSERT_EQ(parsed.stream(0).chunkCount(), 2u);
    EXPECT_EQ(parsed.stream(0).totalBytes(), 2u + 1u);  // of the length 2 only the two upper bytes, zeros, are missing
}

TEST(LegacyIndex, AnIndexOfAStated4GiBIsReadToTheEndOfTheFile) {
    Parsed parsed(fileWithIdx1({samples::videoStrl()},
                               chunkClaiming("idx1", 0xFFFFFFF0, bytesOf(Idx1Entry{.length = 9}))));
    EXPECT_TRUE(parsed.usable);
    EXPECT_EQ(parsed.errors(), "");
    EXPECT_EQ(parsed.parser.idx1EntryCount(), 0x0FFFFFFFu);
    EXPECT_EQ(parsed.stream(0).chunkCount(), 1u);
}

TEST(LegacyIndex, ASizeOf2To32Minus1CountsEveryStatedEntry) {
    Parsed parsed(fileWithIdx1({samples::videoStrl()}, chunkClaiming("idx1", 0xFFFFFFFF, {})));
    EXPECT_EQ(parsed.parser.idx1EntryCount(), 0x10000000u);
    EXPECT_EQ(parsed.errors(), "idx1 size is not a multiple of index entry size\n");
}

TEST(LegacyIndex, WithoutMediaDataTheIndexIsNotUsed) {
    Parsed parsed(riff("AVI ", {samples::hdrl({samples::videoStrl()}), idx1({{.length = 9}})}));
    EXPECT_TRUE(parsed.usable);
    EXPECT_EQ(parsed.parser.idx1EntryCount(), 1u);
    EXPECT_EQ(parsed.stream(0).chunkCount(), 0u);
}

TEST(LegacyIndex, OnlyTheIndexOfTheFirstRiffIsRead) {
    const Bytes first = riff("AVI ", {samples::hdrl({samples::videoStrl()}), list("movi", {})});
    Parsed parsed(first + riff("AVIX", {list("movi", {}), idx1({{.length = 9}})}));
    EXPECT_TRUE(parsed.usable);
    EXPECT_EQ(parsed.stream(0).chunkCount(), 0u);
}

TEST(LegacyIndex, AnIndexBeforeTheMediaDataIsUsedToo) {
    Parsed parsed(riff("AVI ", {samples::hdrl({samples::videoStrl()}), idx1({{.length = 9}}), list("movi", {})}));
    EXPECT_EQ(parsed.stream(0).totalBytes(), 9u);
}

TEST(LegacyIndex, AnIndexLargerThanOneReadIsReadCompletely) {
    // 300,000 entries are more than the 262,144 of one 4 MiB read.
    Bytes entries = filled(300'000 * 16);
    for (std::size_t i = 0; i < 300'000; ++i) {
        overwrite(entries, i * 16, bytesOf(Idx1Entry{.length = 1}));
    }
    Parsed parsed(fileWithIdx1({samples::videoStrl()}, chunk("idx1", entries)));
    EXPECT_EQ(parsed.stream(0).chunkCount(), 300'000u);
    EXPECT_EQ(parsed.stream(0).totalBytes(), 300'000u);
}

TEST(LegacyIndex, IsFoundAfterEightMebibytesOfZeroPadding) {
    const Bytes hdrl = samples::hdrl({samples::videoStrl()});
    Parsed parsed(riff("AVI ", {hdrl, list("movi", {}), filled(8 << 20), idx1({{.offset = 4, .length = 10}})}));
    EXPECT_EQ(parsed.errors(), "");
    EXPECT_EQ(parsed.stream(0).totalBytes(), 10u);
    EXPECT_LT(parsed.parser.chunkTree().size(), 20u);
}

}  // namespace
