#include "aviwriter/Blocks.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace aviwriter;

namespace {

TEST(Blocks, NumbersAreLittleEndian) {
    EXPECT_EQ(join({u8(0x01), u16(0x0302), u32(0x07060504), u64(0x0F0E0D0C0B0A0908)}),
              (Bytes{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}));
}

TEST(Blocks, AnOddChunkIsPaddedButDoesNotCountThePad) {
    EXPECT_EQ(chunk("00dc", {7, 8, 9}), (Bytes{'0', '0', 'd', 'c', 3, 0, 0, 0, 7, 8, 9, 0}));
}

TEST(Blocks, AnEvenChunkHasNoPad) {
    EXPECT_EQ(chunk("00dc", {7, 8}), (Bytes{'0', '0', 'd', 'c', 2, 0, 0, 0, 7, 8}));
}

TEST(Blocks, AChunkMayStateAnySize) {
    EXPECT_EQ(chunkClaiming("00dc", 0xFFFFFFFE, {7, 8}),
              (Bytes{'0', '0', 'd', 'c', 0xFE, 0xFF, 0xFF, 0xFF, 7, 8}));
}

TEST(Blocks, AListCountsItsTypeAndItsChildren) {
    EXPECT_EQ(list("movi", {chunk("00dc", {7, 8}), chunk("01wb", {})}),
              join({text("LIST"), u32(4 + 10 + 8), text("movi"), text("00dc"), u32(2), Bytes({7, 8}),
                    text("01wb"), u32(0)}));
}

TEST(Blocks, ARiffIsAListUnderItsOwnId) {
    EXPECT_EQ(riff("AVI ", {}), text("RIFF") + u32(4) + text("AVI "));
}

TEST(Blocks, AListMayStateAnySize) {
    EXPECT_EQ(listClaiming("LIST", "movi", 9999, {}), text("LIST") + u32(9999) + text("movi"));
}

TEST(Blocks, ACodeOfTheWrongLengthIsRefused) {
    EXPECT_THROW(chunk("dc", {}), std::invalid_argument);
}

TEST(Blocks, TheMainHeaderHasItsFieldsInOrder) {
    EXPECT_EQ(bytesOf(MainHeader{.microSecPerFrame = 1, .maxBytesPerSec = 2, .paddingGranularity = 3, .flags = 4,
                                 .totalFrames = 5, .initialFrames = 6, .streams = 7, .suggestedBufferSize = 8,
                                 .width = 9, .height = 10, .reserved = {11, 12, 13, 14}}),
              join({u32(1), u32(2), u32(3), u32(4), u32(5), u32(6), u32(7), u32(8), u32(9), u32(10), u32(11), u32(12),
                    u32(13), u32(14)}));
}

TEST(Blocks, TheStreamHeaderHasItsFieldsInOrder) {
    EXPECT_EQ(bytesOf(StreamHeader{.type = "auds", .handler = "abcd", .flags = 1, .priority = 2, .language = 3,
                                   .initialFrames = 4, .scale = 5, .rate = 6, .start = 7, .length = 8,
                                   .suggestedBufferSize = 9, .quality = 10, .sampleSize = 11, .left = -1, .top = 12,
                                   .right = 13, .bottom = 14}),
              join({text("auds"), text("abcd"), u32(1), u16(2), u16(3), u32(4), u32(5), u32(6), u32(7), u32(8), u32(9),
                    u32(10), u32(11), u16(0xFFFF), u16(12), u16(13), u16(14)}));
}

TEST(Blocks, TheBitmapInfoHasItsFieldsInOrder) {
    EXPECT_EQ(bytesOf(BitmapInfo{.size = 1, .width = 2, .height = -3, .planes = 4, .bitCount = 5,
                                 .compression = "abcd", .sizeImage = 6, .xPelsPerMeter = 7, .yPelsPerMeter = 8,
                                 .clrUsed = 9, .clrImportant = 10}),
              join({u32(1), u32(2), u32(0xFFFFFFFD), u16(4), u16(5), text("abcd"), u32(6), u32(7), u32(8), u32(9),
                    u32(10)}));
}

TEST(Blocks, TheShortSoundFormatEndsWithTheBits) {
    EXPECT_EQ(pcmWaveFormat({.channels = 3, .samplesPerSec = 1000, .bitsPerSample = 24}),
              join({u16(1), u16(3), u32(1000), u32(9000), u16(9), u16(24)}));
}

TEST(Blocks, TheMiddleSoundFormatAddsCbSize) {
    EXPECT_EQ(waveFormatEx({.formatTag = 3, .channels = 1, .samplesPerSec = 1000, .bitsPerSample = 32, .cbSize = 5}),
              join({u16(3), u16(1), u32(1000), u32(4000), u16(4), u16(32), u16(5)}));
}

TEST(Blocks, TheLongSoundFormatCarriesTheTagInItsSubFormat) {
    EXPECT_EQ(waveFormatExtensible({.formatTag = 3, .channels = 6, .bitsPerSample = 32, .channelMask = 0x3F}),
              join({u16(0xFFFE), u16(6), u32(48000), u32(1152000), u16(24), u16(32), u16(22), u16(32), u32(0x3F),
                    u32(3), Bytes({0, 0, 0x10, 0, 0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71})}));
}

TEST(Blocks, DerivedSoundFieldsCanBeOverridden) {
    EXPECT_EQ(pcmWaveFormat({.channels = 2, .avgBytesPerSec = 1, .blockAlign = 5, .bitsPerSample = 16}),
              join({u16(1), u16(2), u32(48000), u32(1), u16(5), u16(16)}));
}

TEST(Blocks, ASuperIndexCountsItsEntriesByDefault) {
    EXPECT_EQ(bytesOf(SuperIndex{.entries = {{.offset = 0x100000002, .size = 3, .duration = 4}}}),
              join({u16(4), u8(0), u8(0), u32(1), text("00dc"), u32(0), u32(0), u32(0), u64(0x100000002), u32(3),
                    u32(4)}));
    EXPECT_EQ(bytesOf(SuperIndex{.entriesInUse = 9}),
              join({u16(4), u8(0), u8(0), u32(9), text("00dc"), u32(0), u32(0), u32(0)}));
}

TEST(Blocks, AStandardIndexCountsItsEntriesByDefault) {
    EXPECT_EQ(bytesOf(StandardIndex{.chunkId = "01wb", .baseOffset = 0x100000002, .entries = {{8, 3 | kNotKeyFrame}}}),
              join({u16(2), u8(0), u8(1), u32(1), text("01wb"), u64(0x100000002), u32(0), u32(8), u32(0x80000003)}));
    EXPECT_EQ(bytesOf(StandardIndex{.entriesInUse = 9}),
              join({u16(2), u8(0), u8(1), u32(9), text("00dc"), u64(0), u32(0)}));
}

TEST(Blocks, TheLegacyIndexIsAnArrayOfSixteenByteEntries) {
    EXPECT_EQ(idx1({{.offset = 4, .length = 100}, {.chunkId = "01wb", .flags = 0, .offset = 112, .length = 7}}),
              join({text("idx1"), u32(32), text("00dc"), u32(0x10), u32(4), u32(100), text("01wb"), u32(0), u32(112),
                    u32(7)}));
}

TEST(Blocks, TheExtendedHeaderHasItsFullSize) {
    EXPECT_EQ(odml(77), text("LIST") + u32(260) + text("odml") + text("dmlh") + u32(248) + u32(77) + filled(244));
}

TEST(Blocks, AnOccurrenceIsFoundByItsNumber) {
    const Bytes file = chunk("00dc", {}) + chunk("01wb", {}) + chunk("00dc", {});
    EXPECT_EQ(positionOf(file, "00dc"), 0U);
    EXPECT_EQ(positionOf(file, "00dc", 1), 16U);
    EXPECT_THROW(positionOf(file, "00dc", 2), std::out_of_range);
}

TEST(Blocks, BytesAreOverwrittenInPlaceButNeverPastTheEnd) {
    Bytes file = {1, 2, 3, 4};
    overwrite(file, 2, {8, 9});
    EXPECT_EQ(file, (Bytes{1, 2, 8, 9}));
    EXPECT_THROW(overwrite(file, 3, {8, 9}), std::out_of_range);
}

}  // namespace
