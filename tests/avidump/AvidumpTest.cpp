#include "avidump/CommandLine.h"
#include "avidump/Report.h"
#include "aviwriter/Blocks.h"
#include "support/MemoryFile.h"

#include <gtest/gtest.h>

namespace {

using namespace aviwriter;

avidump::Report reportOf(const Bytes& bytes, bool withChunks) {
    fileio::MemoryFile file(bytes);
    AviParser parser;
    const bool usable = parser.parse(file);
    return avidump::makeReport("a.avi", file, parser, usable, withChunks);
}

Bytes smallFile() {
    return riff("AVI ", {list("hdrl", {avih({.totalFrames = 2}),
                                       list("strl", {strh({.type = "vids"}), strf(bytesOf(BitmapInfo{}), {0xAB, 1})})}),
                         list("movi", {chunk("00dc", filled(10)), chunk("00dc", filled(6))}),
                         idx1({{.offset = 4, .length = 10}, {.flags = 0, .offset = 22, .length = 6}})});
}

bool hasLine(const std::string& text, const std::string& line) {
    return ("\n" + text).find("\n" + line + "\n") != std::string::npos;
}

TEST(Avidump, TextShowsTheTreeWithPositionsAndSizes) {
    const std::string text = avidump::textOf(reportOf(smallFile(), false));
    EXPECT_TRUE(hasLine(text, "usable: true")) << text;
    EXPECT_TRUE(hasLine(text, "errorText: none"));
    EXPECT_TRUE(hasLine(text, "  RIFF AVI   0, 290"));
    EXPECT_TRUE(hasLine(text, "      avih  24, 56"));
    EXPECT_TRUE(hasLine(text, "    LIST movi  214, 36"));
    EXPECT_TRUE(hasLine(text, "    idx1  258, 32"));
}

TEST(Avidump, TextShowsHeadersFormatAndIndexInUse) {
    const std::string text = avidump::textOf(reportOf(smallFile(), false));
    EXPECT_TRUE(hasLine(text, "  dwTotalFrames: 2")) << text;
    EXPECT_TRUE(hasLine(text, "    fccType: vids"));
    EXPECT_TRUE(hasLine(text, "    biCompression: QVAN"));
    EXPECT_TRUE(hasLine(text, "    extraData: ab01"));
    EXPECT_TRUE(hasLine(text, "  indexInUse: idx1"));
    EXPECT_TRUE(hasLine(text, "  totalBytes: 16"));
    EXPECT_TRUE(hasLine(text, "  keyFrames: 1"));
    EXPECT_EQ(text.find("\nchunk "), std::string::npos);
}

// The report for a file with one stream of this format.
avidump::Report formatReport(std::string_view type, const Bytes& format) {
    return reportOf(riff("AVI ", {list("hdrl", {avih({}), list("strl", {strh({.type = type}), strf(format)})})}),
                    false)["streams"][0]["format"];
}

const Bytes kBitmap = bytesOf(BitmapInfo{.size = 44, .width = 32, .height = -16, .planes = 7, .bitCount = 24,
                                         .sizeImage = 1536}) + u32(0x04030201);
const WaveFormat kSurround = {.channels = 6, .avgBytesPerSec = 123456, .bitsPerSample = 24, .validBitsPerSample = 20,
                              .channelMask = 0x3F};

TEST(AvidumpFormat, OfVideoHasAllFieldsOfItsRecord) {
    EXPECT_EQ(formatReport("vids", kBitmap).dump(),
              R"({"bytes":44,"biSize":44,"biWidth":32,"biHeight":-16,"biPlanes":7,"biBitCount":24,)"
              R"("biCompression":"QVAN","biSizeImage":1536,"extraData":"01020304"})");
}

TEST(AvidumpFormat, OfPlainSoundHasNoExtensibleFields) {
    EXPECT_EQ(formatReport("auds", waveFormatEx({.avgBytesPerSec = 123456, .cbSize = 2}) + u16(0x0201)).dump(),
              R"({"bytes":20,"wFormatTag":1,"nChannels":2,"nSamplesPerSec":48000,"nAvgBytesPerSec":123456,)"
              R"("nBlockAlign":4,"wBitsPerSample":16,"cbSize":2,"extraData":"0102"})");
}

TEST(AvidumpFormat, OfExtensibleSoundHasMaskAndSubFormat) {
    EXPECT_EQ(formatReport("auds", waveFormatExtensible(kSurround)).dump(),
              R"({"bytes":40,"wFormatTag":65534,"nChannels":6,"nSamplesPerSec":48000,"nAvgBytesPerSec":123456,)"
              R"("nBlockAlign":18,"wBitsPerSample":24,"cbSize":22,"wValidBitsPerSample":20,"dwChannelMask":63,)"
              R"("SubFormat":"00000001-0000-0010-8000-00aa00389b71",)"
              R"("extraData":"14003f0000000100000000001000800000aa00389b71"})");
}

TEST(AvidumpFormat, TooShortForAFieldShowsItAsZero) {
    EXPECT_EQ(formatReport("auds", pcmWaveFormat({}))["cbSize"], 0);
    Bytes cutShort = waveFormatExtensible(kSurround);
    cutShort.resize(39);
    EXPECT_EQ(formatReport("auds", cutShort)["dwChannelMask"], 63);
    EXPECT_EQ(formatReport("auds", cutShort)["SubFormat"], "00000000-0000-0000-0000-000000000000");
}

TEST(AvidumpFormat, InTextHasOneLineForEachField) {
    const Bytes file = riff("AVI ", {list("hdrl", {avih({}), list("strl", {strh({.type = "vids"}), strf(kBitmap)}),
                                                   list("strl", {strh({.type = "auds"}),
                                                                 strf(waveFormatExtensible(kSurround))})})});
    const std::string text = avidump::textOf(reportOf(file, false));
    for (const char* line : {"    biSize: 44", "    biPlanes: 7", "    biSizeImage: 1536",
                             "    nAvgBytesPerSec: 123456", "    cbSize: 22",
                             "    wValidBitsPerSample: 20", "    dwChannelMask: 63",
                             "    SubFormat: 00000001-0000-0010-8000-00aa00389b71"}) {
        EXPECT_TRUE(hasLine(text, line)) << line << '\n' << text;
    }
}

TEST(Avidump, TextListsEveryChunkWhenAsked) {
    const std::string text = avidump::textOf(reportOf(smallFile(), true));
    const std::size_t data = positionOf(smallFile(), "00dc") + 8;
    EXPECT_TRUE(hasLine(text, "chunk 0 0 " + std::to_string(data) + " 10 0 k")) << text;
    EXPECT_TRUE(hasLine(text, "chunk 0 1 " + std::to_string(data + 18) + " 6 10 -"));
}

Bytes indexedBy(const std::vector<Idx1Entry>& entries) {
    return riff("AVI ", {list("hdrl", {avih({}), list("strl", {strh({}), strf(bytesOf(BitmapInfo{}))})}),
                         list("movi", {chunk("00dc", filled(10)), chunk("01wb", filled(6))}), idx1(entries)});
}

TEST(AvidumpIndexCheck, CountsEntriesWithoutAChunkOfTheirStream) {
    const Idx1Entry good = {.offset = 4, .length = 10};
    const struct {
        Idx1Entry entry;
        unsigned checked;
        unsigned astray;
    } rows[] = {
        {good, 2, 0},
        {{.offset = 5, .length = 10}, 2, 1},
        {{.offset = 22, .length = 6}, 2, 1},                   // another stream's
        {{.offset = 0x100000, .length = 10}, 2, 1},            // past the end
        {{.offset = 5, .length = 0}, 1, 0},                    // nothing is read there
    };
    for (const auto& row : rows) {
        const avidump::Report stream = reportOf(indexedBy({good, row.entry}), false)["streams"][0];
        EXPECT_EQ(stream["idx1ChunksChecked"], row.checked) << row.entry.offset;
        EXPECT_EQ(stream["idx1ChunksAstray"], row.astray) << row.entry.offset;
    }
}

TEST(AvidumpIndexCheck, ChecksAThousandEvenlySpreadEntriesByDefault) {
    std::vector<Idx1Entry> entries(2500, {.offset = 4, .length = 10});
    entries.back().offset = 5;
    entries[1250].offset = 5;
    const Bytes file = indexedBy(entries);
    EXPECT_EQ(reportOf(file, false)["streams"][0]["idx1ChunksChecked"], 1000);
    EXPECT_EQ(reportOf(file, false)["streams"][0]["idx1ChunksAstray"], 1);
    EXPECT_EQ(reportOf(file, true)["streams"][0]["idx1ChunksChecked"], 2500);
    EXPECT_EQ(reportOf(file, true)["streams"][0]["idx1ChunksAstray"], 2);
}

TEST(Avidump, TextShowsTheErrorsOfAnUnusableFile) {
    const std::string text = avidump::textOf(reportOf(riff("WAVE", {}), false));
    EXPECT_TRUE(hasLine(text, "usable: false"));
    EXPECT_TRUE(hasLine(text, "mainHeader: none")) << text;
    EXPECT_TRUE(hasLine(text, "errorText:\n  AVI chunk missing")) << text;
}

TEST(Avidump, JsonHasChunksAsArrays) {
    const auto report = avidump::Report::parse(reportOf(smallFile(), true).dump());
    const std::size_t data = positionOf(smallFile(), "00dc") + 8;
    EXPECT_EQ(report["streams"][0]["chunks"].dump(),
              "[[" + std::to_string(data) + ",10,0,true],[" + std::to_string(data + 18) + ",6,10,false]]");
    EXPECT_EQ(report["streams"][0]["indexInUse"], "idx1");
    EXPECT_EQ(report["usable"], true);
}

TEST(Avidump, DeeplyNestedListsAreWrittenFlat) {
    constexpr std::uint32_t depth = 50'000;
    Bytes file;
    for (std::uint32_t i = 0; i < depth; ++i) {
        const Bytes header = text("LIST") + u32((depth - i) * 12 - 8) + text("deep");
        file.insert(file.end(), header.begin(), header.end());
    }
    const avidump::Report report = reportOf(file, false);
    EXPECT_EQ(report["chunkTree"].size(), depth);
    EXPECT_EQ(report["chunkTree"].back()["depth"], depth - 1);
}

TEST(Avidump, AFileThatDoesNotOpenIsUnusable) {
    EXPECT_EQ(avidump::makeFailedReport("b.avi").dump(), R"({"file":"b.avi","opened":false,"usable":false})");
}

TEST(AvidumpCommandLine, TakesFilesAndFlags) {
    const auto parsed = avidump::parseCommandLine({"--json", "a.avi", "--chunks", "b.avi"});
    ASSERT_TRUE(parsed.command.has_value());
    EXPECT_EQ(parsed.command->files, (std::vector<std::string>{"a.avi", "b.avi"}));
    EXPECT_TRUE(parsed.command->json);
    EXPECT_TRUE(parsed.command->chunks);
}

TEST(AvidumpCommandLine, AMissingFileNameIsAUsageError) {
    const auto parsed = avidump::parseCommandLine({"--json"});
    EXPECT_FALSE(parsed.command.has_value());
    EXPECT_EQ(parsed.exitCode, 2);
}

TEST(AvidumpCommandLine, AnUnknownOptionIsAUsageError) {
    EXPECT_EQ(avidump::parseCommandLine({"--jsno", "a.avi"}).exitCode, 2);
}

TEST(AvidumpCommandLine, HelpSucceeds) {
    const auto parsed = avidump::parseCommandLine({"--help"});
    EXPECT_FALSE(parsed.command.has_value());
    EXPECT_EQ(parsed.exitCode, 0);
}

}  // namespace
