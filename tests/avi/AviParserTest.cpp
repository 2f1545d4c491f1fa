#include "SampleFiles.h"
#include "support/FaultFile.h"
#include "text/FourCC.h"

#include <gtest/gtest.h>

namespace {

using namespace aviwriter;
using samples::Parsed;

Bytes aviFile(const Bytes& hdrl) {
    return riff("AVI ", {hdrl, list("movi", {})});
}

// --- Unusable files ---

TEST(AviParser, AnEmptyFileIsRefused) {
    Parsed parsed{Bytes{}};
    EXPECT_FALSE(parsed.usable);
    EXPECT_EQ(parsed.errors(), "riff structure is empty\n");
}

TEST(AviParser, AFileShorterThanAChunkHeaderIsCorruptAndEmpty) {
    Parsed parsed(text("RIFF\1\0\0"));
    EXPECT_FALSE(parsed.usable);
    EXPECT_EQ(parsed.errors(), "riff structure is corrupt or invalid\nriff structure is empty\n");
}

TEST(AviParser, AListCutOffBeforeItsTypeIsCorrupt) {
    Parsed parsed(text("RIFF") + u32(100) + text("AVI"));
    EXPECT_FALSE(parsed.usable);
    EXPECT_EQ(parsed.errors(), "riff structure is corrupt or invalid\nriff structure is empty\n");
}

TEST(AviParser, AnAvixFirstIsRefusedEvenIfAnAviFollows) {
    Parsed parsed(riff("AVIX", {list("movi", {})}) + aviFile(samples::hdrl({samples::videoStrl()})));
    EXPECT_FALSE(parsed.usable);
    EXPECT_EQ(parsed.errors(), "AVI chunk missing\n");
}

TEST(AviParser, AWaveFileIsRefused) {
    Parsed parsed(riff("WAVE", {chunk("fmt ", filled(16)), chunk("data", filled(4))}));
    EXPECT_FALSE(parsed.usable);
    EXPECT_EQ(parsed.errors(), "AVI chunk missing\n");
}

TEST(AviParser, AFirstChunkThatIsNoListIsRefused) {
    Parsed parsed(chunk("JUNK", text("AVI ")) + aviFile(samples::hdrl({})));
    EXPECT_FALSE(parsed.usable);
    EXPECT_EQ(parsed.errors(), "AVI chunk missing\n");
}

TEST(AviParser, AMissingHeaderListIsRefused) {
    Parsed parsed(riff("AVI ", {list("movi", {})}));
    EXPECT_FALSE(parsed.usable);
    EXPECT_EQ(parsed.errors(), "hdrl missing\n");
}

TEST(AviParser, AChunkNamedHdrlIsNotTheHeaderList) {
    Parsed parsed(riff("AVI ", {chunk("hdrl", text("hdrl"))}));
    EXPECT_FALSE(parsed.usable);
    EXPECT_EQ(parsed.errors(), "hdrl missing\n");
}

TEST(AviParser, AMissingMainHeaderIsRefused) {
    Parsed parsed(aviFile(list("hdrl", {samples::videoStrl()})));
    EXPECT_FALSE(parsed.usable);
    EXPECT_EQ(parsed.errors(), "avih missing\n");
    EXPECT_TRUE(parsed.parser.streams().empty());
}

TEST(AviParser, AMainHeaderOf55BytesIsRefused) {
    Parsed parsed(aviFile(list("hdrl", {chunk("avih", filled(55)), samples::videoStrl()})));
    EXPECT_FALSE(parsed.usable);
    EXPECT_EQ(parsed.errors(), "avih data read error\n");
}

TEST(AviParser, ATruncatedMainHeaderIsRefused) {
    Bytes file = riff("AVI ", {list("hdrl", {chunk("avih", filled(56))})});
    file.resize(file.size() - 1);
    Parsed parsed(file);
    EXPECT_FALSE(parsed.usable);
    EXPECT_EQ(parsed.errors(), "avih data read error\n");
}

// --- Usable files ---

TEST(AviParser, AnOrdinaryFileIsReadWithoutAMessage) {
    Parsed parsed(samples::idx1File({chunk("00dc", filled(100))}, {{.offset = 4, .length = 100}}));
    EXPECT_TRUE(parsed.usable);
    EXPECT_EQ(parsed.errors(), "");
}

TEST(AviParser, TheMainHeaderIsReadFieldByField) {
    const MainHeader header{.microSecPerFrame = 1, .maxBytesPerSec = 2, .paddingGranularity = 3, .flags = 4,
                            .totalFrames = 5, .initialFrames = 6, .streams = 7, .suggestedBufferSize = 8,
                            .width = 9, .height = 10, .reserved = {11, 12, 13, 14}};
    Parsed parsed(aviFile(list("hdrl", {avih(header)})));
    ASSERT_TRUE(parsed.usable);
    const avi::AVIMAINHEADER& read = parsed.parser.mainHeader();
    EXPECT_EQ(read.dwMicroSecPerFrame, 1u);
    EXPECT_EQ(read.dwMaxBytesPerSec, 2u);
    EXPECT_EQ(read.dwPaddingGranularity, 3u);
    EXPECT_EQ(read.dwFlags, 4u);
    EXPECT_EQ(read.dwTotalFrames, 5u);
    EXPECT_EQ(read.dwInitialFrames, 6u);
    EXPECT_EQ(read.dwStreams, 7u);
    EXPECT_EQ(read.dwSuggestedBufferSize, 8u);
    EXPECT_EQ(read.dwWidth, 9u);
    EXPECT_EQ(read.dwHeight, 10u);
    EXPECT_EQ(read.dwReserved[0], 11u);
    EXPECT_EQ(read.dwReserved[3], 14u);
}

TEST(AviParser, TheStreamHeaderIsReadFieldByField) {
    const StreamHeader header{.type = "vids", .handler = "HNDL", .flags = 1, .priority = 2, .language = 3,
                              .initialFrames = 4, .scale = 5, .rate = 6, .start = 7, .length = 8,
                              .suggestedBufferSize = 9, .quality = 10, .sampleSize = 11, .left = -1, .top = -2,
                              .right = 3, .bottom = 4};
    Parsed parsed(aviFile(samples::hdrl({list("strl", {strh(header), strf(bytesOf(BitmapInfo{}))})})));
    const avi::AVISTREAMHEADER& read = parsed.stream(0).header();
    EXPECT_EQ(read.fccType, fourCC("vids"));
    EXPECT_EQ(read.fccHandler, fourCC("HNDL"));
    EXPECT_EQ(read.dwFlags, 1u);
    EXPECT_EQ(read.wPriority, 2u);
    EXPECT_EQ(read.wLanguage, 3u);
    EXPECT_EQ(read.dwInitialFrames, 4u);
    EXPECT_EQ(read.dwScale, 5u);
    EXPECT_EQ(read.dwRate, 6u);
    EXPECT_EQ(read.dwStart, 7u);
    EXPECT_EQ(read.dwLength, 8u);
    EXPECT_EQ(read.dwSuggestedBufferSize, 9u);
    EXPECT_EQ(read.dwQuality, 10u);
    EXPECT_EQ(read.dwSampleSize, 11u);
    EXPECT_EQ(read.rcFrame.left, -1);
    EXPECT_EQ(read.rcFrame.top, -2);
    EXPECT_EQ(read.rcFrame.right, 3);
    EXPECT_EQ(read.rcFrame.bottom, 4);
}

TEST(AviParser, RiffAndListAreEquivalent) {
    Parsed parsed(list("AVI ", {riff("hdrl", {avih({}), riff("strl", {strh({}), strf(bytesOf(BitmapInfo{}))})}),
                                riff("movi", {}), idx1({{.length = 5}})}));
    EXPECT_TRUE(parsed.usable);
    EXPECT_EQ(parsed.errors(), "");
    EXPECT_EQ(parsed.stream(0).chunkCount(), 1u);
}

TEST(AviParser, OnlyTheFirstHeaderListCounts) {
    Parsed parsed(riff("AVI ", {samples::hdrl({samples::videoStrl()}), samples::hdrl({samples::audioStrl()})}));
    ASSERT_EQ(parsed.parser.streams().size(), 1u);
    EXPECT_EQ(parsed.stream(0).header().fccType, fourCC("vids"));
}

TEST(AviParser, AFileWithoutMediaDataIsUsable) {
    Parsed parsed(riff("AVI ", {samples::hdrl({samples::videoStrl()})}));
    EXPECT_TRUE(parsed.usable);
    EXPECT_EQ(parsed.stream(0).chunkCount(), 0u);
}

TEST(AviParser, ParsingBeginsAtTheCurrentPosition) {
    fileio::MemoryFile file(filled(10) + samples::idx1File({}, {{.length = 5}}));
    ASSERT_TRUE(file.seek(10));
    AviParser parser;
    EXPECT_TRUE(parser.parse(file));
    EXPECT_EQ(parser.streams().size(), 1u);
    // The walk still covers the whole file's number of bytes, and so reaches past its end.
    EXPECT_EQ(parser.errorText(), "riff structure is corrupt or invalid\n");
}

TEST(AviParser, ASecondParseForgetsTheFirst) {
    AviParser parser;
    fileio::MemoryFile damaged(riff("AVI ", {samples::hdrl({samples::videoStrl(), list("strl", {})}),
                                             list("odml", {}), list("movi", {}), chunk("idx1", filled(17))}));
    ASSERT_TRUE(parser.parse(damaged));
    ASSERT_EQ(parser.errorText(),
              "stream[1]: strh missing in strl\nidx1 size is not a multiple of index entry size\n");
    fileio::MemoryFile wave(riff("WAVE", {}));
    EXPECT_FALSE(parser.parse(wave));
    EXPECT_EQ(parser.errorText(), "AVI chunk missing\n");
    EXPECT_TRUE(parser.streams().empty());
    EXPECT_EQ(parser.idx1EntryCount(), 0u);
    EXPECT_EQ(parser.mainHeader().dwMicroSecPerFrame, 0u);
    EXPECT_EQ(parser.chunkTree().size(), 1u);
    EXPECT_EQ(parser.file(), &wave);
}

// --- The extended header ---

TEST(AviParser, TheExtendedHeaderIsRead) {
    Parsed parsed(aviFile(list("hdrl", {avih({}), odml(70000)})));
    EXPECT_EQ(parsed.parser.extendedHeader().dwTotalFrames, 70000u);
}

TEST(AviParser, AMissingExtendedHeaderIsZero) {
    Parsed parsed(aviFile(samples::hdrl({})));
    EXPECT_EQ(parsed.parser.extendedHeader().dwTotalFrames, 0u);
}

TEST(AviParser, AShortExtendedHeaderLeavesTheRestZero) {
    Parsed parsed(aviFile(list("hdrl", {avih({}), list("odml", {chunk("dmlh", u32(5) + u32(6))})})));
    EXPECT_EQ(parsed.parser.extendedHeader().dwTotalFrames, 5u);
    EXPECT_EQ(parsed.parser.extendedHeader().dwReserved[0], 6u);
    EXPECT_EQ(parsed.parser.extendedHeader().dwReserved[1], 0u);
    EXPECT_EQ(parsed.errors(), "");
}

TEST(AviParser, AnExtendedHeaderIsReadUpTo248Bytes) {
    Parsed parsed(aviFile(list("hdrl", {avih({}), list("odml", {chunk("dmlh", filled(300, 0x11))})})));
    EXPECT_EQ(parsed.parser.extendedHeader().dwReserved[60], 0x11111111u);
    EXPECT_EQ(parsed.errors(), "");
}

// --- Unusable streams ---

TEST(AviParser, AStreamWithoutAHeaderIsDropped) {
    Parsed parsed(aviFile(samples::hdrl({list("strl", {strf(bytesOf(BitmapInfo{}))})})));
    EXPECT_TRUE(parsed.usable);
    EXPECT_EQ(parsed.errors(), "stream[0]: strh missing in strl\n");
    EXPECT_TRUE(parsed.parser.streams().empty());
}

TEST(AviParser, ADroppedStreamKeepsItsNumber) {
    Parsed parsed(aviFile(samples::hdrl({samples::videoStrl(), list("strl", {strh({})}), samples::audioStrl()})));
    EXPECT_TRUE(parsed.usable);
    EXPECT_EQ(parsed.errors(), "stream[1]: strf missing in strl\n");
    ASSERT_EQ(parsed.parser.streams().size(), 2u);
    EXPECT_EQ(parsed.stream(0).streamNumber(), 0u);
    EXPECT_EQ(parsed.stream(1).streamNumber(), 2u);
}

TEST(AviParser, AStreamHeaderOf55BytesDropsTheStream) {
    Parsed parsed(aviFile(samples::hdrl({list("strl", {chunk("strh", filled(55)), strf(filled(40))})})));
    EXPECT_EQ(parsed.errors(), "stream[0]: strh data read error\n");
    EXPECT_TRUE(parsed.parser.streams().empty());
}

TEST(AviParser, AFormatOfAStated4GiBDropsTheStream) {
    Parsed parsed(aviFile(samples::hdrl(
        {list("strl", {strh({}), chunkClaiming("strf", 0xFFFFFFFF, bytesOf(BitmapInfo{}))})})));
    EXPECT_TRUE(parsed.usable);
    EXPECT_EQ(parsed.errors(), "stream[0]: strf data read error\n");
    EXPECT_TRUE(parsed.parser.streams().empty());
}

TEST(AviParser, AnEmptyFormatIsValid) {
    Parsed parsed(aviFile(samples::hdrl({list("strl", {strh({}), strf({})})})));
    EXPECT_EQ(parsed.errors(), "");
    EXPECT_TRUE(parsed.stream(0).format().empty());
}

TEST(AviParser, TheWholeFormatIsKept) {
    Parsed parsed(aviFile(samples::hdrl({list("strl", {strh({}), strf(filled(40, 1), filled(70'000, 2))})})));
    ASSERT_EQ(parsed.stream(0).format().size(), 70'040u);
    EXPECT_EQ(parsed.stream(0).format().front(), 1);
    EXPECT_EQ(parsed.stream(0).format().back(), 2);
}

TEST(AviParser, WithoutAnIndexTheSuperIndexHeaderIsTheDefault) {
    Parsed parsed(aviFile(samples::hdrl(std::vector<Bytes>(12, samples::videoStrl()))));
    EXPECT_EQ(parsed.stream(11).superIndexHeader().wLongsPerEntry, 4);
    EXPECT_EQ(parsed.stream(11).superIndexHeader().dwChunkId, fourCC("11??"));
    EXPECT_EQ(parsed.stream(11).superIndexHeader().nEntriesInUse, 0u);
}

TEST(AviParser, StreamsAreFoundByTypeInListOrder) {
    Parsed parsed(aviFile(samples::hdrl(
        {samples::audioStrl(), samples::videoStrl(), list("strl", {}), samples::audioStrl()})));
    EXPECT_EQ(parsed.parser.streamsOfType(fourCC("auds")), (std::vector<std::size_t>{0, 2}));
    EXPECT_EQ(parsed.parser.streamsOfType(fourCC("vids")), (std::vector<std::size_t>{1}));
    EXPECT_EQ(parsed.parser.streamsOfType(fourCC("txts")), (std::vector<std::size_t>{}));
}

// --- Damage ---

TEST(AviParser, ATruncatedFileIsReportedAndItsStreamsAreRead) {
    Bytes file = samples::idx1File({chunk("00dc", filled(100))}, {{.offset = 4, .length = 100}});
    file.resize(positionOf(file, "00dc") + 50);
    Parsed parsed(file);
    EXPECT_TRUE(parsed.usable);
    EXPECT_EQ(parsed.errors(), "riff structure is corrupt or invalid\n");
    EXPECT_EQ(parsed.parser.streams().size(), 1u);
    EXPECT_EQ(parsed.stream(0).chunkCount(), 0u);
}

TEST(AviParser, AFileCutInsideItsLastChunkIsNotCorrupt) {
    // The walk reads nothing after the last chunk, so only a reader of that chunk notices that its end is missing.
    Bytes file = riff("AVI ", {samples::hdrl({samples::videoStrl()}), list("movi", {chunk("00dc", filled(100))})});
    file.resize(file.size() - 50);
    Parsed parsed(file);
    EXPECT_TRUE(parsed.usable);
    EXPECT_EQ(parsed.errors(), "");
}

TEST(AviParser, AStrayByteAfterTheFileIsReported) {
    Parsed parsed(aviFile(samples::hdrl({samples::videoStrl()})) + u8(0));
    EXPECT_TRUE(parsed.usable);
    EXPECT_EQ(parsed.errors(), "riff structure is corrupt or invalid\n");
    EXPECT_EQ(parsed.parser.streams().size(), 1u);
}

TEST(AviParser, LackOfMemoryWhileReadingIsNoException) {
    fileio::MemoryFile memory(samples::idx1File({}, {{.length = 5}}));
    fileio::FaultFile file(memory);
    file.throwAtRead(0);
    AviParser parser;
    EXPECT_FALSE(parser.parse(file));
    EXPECT_EQ(parser.errorText(), "not enough memory for the file structure\n");
    EXPECT_TRUE(parser.streams().empty());
}

TEST(AviParser, AnUnreadableFileIsCorruptAndEmpty) {
    fileio::MemoryFile memory(samples::idx1File({}, {{.length = 5}}));
    fileio::FaultFile file(memory);
    file.breakByte(0);
    AviParser parser;
    EXPECT_FALSE(parser.parse(file));
    EXPECT_EQ(parser.errorText(), "riff structure is corrupt or invalid\nriff structure is empty\n");
}

}  // namespace
