// A file is read in few large reads, with the same results as in many small ones.
#include "SampleFiles.h"
#include "support/FaultFile.h"
#include "support/MemoryFile.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace aviwriter;

TEST(ReadCount, ASmallFileIsReadOnce) {
    fileio::MemoryFile memory(samples::openDmlFile({{{10}}, {{20}}}));
    fileio::FaultFile file(memory);
    AviParser parser;
    ASSERT_TRUE(parser.parse(file));
    EXPECT_EQ(parser.streams()[0]->totalBytes(), 30u);
    EXPECT_EQ(file.reads().size(), 1u);
    EXPECT_EQ(file.seekCount(), 1u);
}

// 1 GiB of media data followed by a small index.
fileio::MemoryFile largeFile(std::uint32_t entries) {
    const Bytes head = samples::hdrl({samples::videoStrl()});
    const Bytes index = idx1(std::vector<Idx1Entry>(entries, {.length = 1}));
    constexpr std::uint32_t moviSize = 1u << 30;
    const auto total = static_cast<std::uint32_t>(4 + head.size() + 8 + moviSize + index.size());
    fileio::MemoryFile file(std::int64_t{total} + 8);
    file.put(0, text("RIFF") + u32(total) + text("AVI ") + head + text("LIST") + u32(moviSize) + text("movi"));
    file.put(total + 8 - index.size(), index);
    return file;
}

TEST(ReadCount, ALargeFileIsReadAtItsStartAndEnd) {
    fileio::MemoryFile sparse = largeFile(10);
    fileio::FaultFile file(sparse);
    AviParser parser;
    ASSERT_TRUE(parser.parse(file));
    EXPECT_EQ(parser.errorText(), "");
    EXPECT_EQ(parser.streams()[0]->chunkCount(), 10u);
    ASSERT_EQ(file.reads().size(), 2u);
    EXPECT_EQ(file.reads()[0].position, 0);
    EXPECT_EQ(file.reads()[0].got, 65536u);
}

TEST(ReadCount, AnIndexUpTo64KiBIsReadWithTheEndOfTheFile) {
    fileio::MemoryFile sparse = largeFile(4095);
    fileio::FaultFile file(sparse);
    AviParser parser;
    ASSERT_TRUE(parser.parse(file));
    EXPECT_EQ(parser.streams()[0]->chunkCount(), 4095u);
    EXPECT_EQ(file.reads().size(), 2u);
}

TEST(ReadCount, ALargeIndexIsReadInEightPieces) {
    fileio::MemoryFile sparse = largeFile(100'000);
    fileio::FaultFile file(sparse);
    AviParser parser;
    ASSERT_TRUE(parser.parse(file));
    EXPECT_EQ(parser.streams()[0]->chunkCount(), 100'000u);
    ASSERT_EQ(file.reads().size(), 2u + 8);
    EXPECT_EQ(file.reads()[2].wanted, 200'000u);
    EXPECT_EQ(file.reads()[9].wanted, 200'000u);
}

TEST(ReadCount, EachStandardIndexIsReadOnceAndSeparately) {
    // Three indexes, each a gigabyte from the next.
    SuperIndex super;
    for (std::uint64_t i = 1; i <= 3; ++i) {
        super.entries.push_back({i << 30, 8 + 24 + 8 * 2});
    }
    const Bytes head = riff("AVI ", {samples::hdrl({samples::videoStrl({indx(super)})})});
    fileio::MemoryFile sparse((std::int64_t{3} << 30) + 48);
    sparse.put(0, head + text("JUNK") + u32(static_cast<std::uint32_t>((3u << 30) + 48 - head.size() - 8)));
    for (std::uint64_t i = 1; i <= 3; ++i) {
        sparse.put(i << 30, ix("ix00", {.entries = {{0, 10}, {0, 20}}}));
    }
    fileio::FaultFile file(sparse);
    AviParser parser;
    ASSERT_TRUE(parser.parse(file));
    EXPECT_EQ(parser.errorText(), "");
    EXPECT_EQ(parser.streams()[0]->totalBytes(), 90u);
    ASSERT_EQ(file.reads().size(), 4u);
    EXPECT_EQ(file.reads()[1].position, (1 << 30) + 8);
    EXPECT_EQ(file.reads()[1].wanted, 40u);
}

TEST(ReadCount, GigabytesOfZerosAfterAFileTakeAFewReads) {
    const Bytes good = samples::idx1File({chunk("00dc", filled(100))}, {{.offset = 4, .length = 100}});
    fileio::MemoryFile sparse(std::int64_t{8} << 30);
    sparse.put(0, good);
    fileio::FaultFile file(sparse);
    AviParser parser;
    EXPECT_TRUE(parser.parse(file));
    EXPECT_EQ(parser.errorText(), "riff structure is corrupt or invalid\n");
    EXPECT_EQ(parser.streams()[0]->totalBytes(), 100u);
    EXPECT_LE(parser.chunkTree().size(), 10u);
    EXPECT_LE(file.reads().size(), 1026u);
    EXPECT_LE(file.bytesRead(), 65u << 20);
}

TEST(ReadCount, ListsThatEndPastTheFileAreNotReadThere) {
    // 50,000 nested lists, each one chunk larger than the file's rest.
    constexpr std::uint32_t depth = 50'000;
    Bytes bytes;
    bytes.reserve(depth * 12);
    for (std::uint32_t i = 0; i < depth; ++i) {
        const Bytes header = text("LIST") + u32((depth - i) * 20) + text("deep");
        bytes.insert(bytes.end(), header.begin(), header.end());
    }
    fileio::MemoryFile memory(bytes);
    fileio::FaultFile file(memory);
    AviParser parser;
    EXPECT_FALSE(parser.parse(file));
    EXPECT_EQ(parser.errorText(), "riff structure is corrupt or invalid\nAVI chunk missing\n");
    EXPECT_LE(file.reads().size(), 600'000u / 65'536 + 2);
}

// A parse of a file that has one unreadable byte.
struct ParsedWithFault {
    ParsedWithFault(const Bytes& bytes, std::uint64_t brokenByte) : memory(bytes), file(memory) {
        file.breakByte(brokenByte);
        EXPECT_TRUE(parser.parse(file));
    }

    // Each can take half a minute on a failing disk.
    std::size_t failedReads() const {
        return static_cast<std::size_t>(
            std::count_if(file.reads().begin(), file.reads().end(),
                          [](const auto& read) { return read.wanted > 0 && read.got == 0; }));
    }

    fileio::MemoryFile memory;
    fileio::FaultFile file;
    AviParser parser;
};

TEST(ReadCount, AFaultAfterTheHeadersDoesNotAffectThem) {
    const Bytes bytes = samples::idx1File({chunk("00dc", filled(1000))}, {{.offset = 4, .length = 1000}});
    const ParsedWithFault parsed(bytes, positionOf(bytes, "00dc") + 500);
    EXPECT_EQ(parsed.parser.errorText(), "");
    EXPECT_EQ(parsed.parser.streams()[0]->totalBytes(), 1000u);
}

TEST(ReadCount, AFaultAfterTheHeadersIsReadOnce) {
    const Bytes bytes = riff("AVI ", {samples::hdrl({samples::videoStrl(), samples::audioStrl(), samples::audioStrl()}),
                                      list("movi", {chunk("00dc", filled(1000))})});
    const ParsedWithFault parsed(bytes, positionOf(bytes, "00dc") + 500);
    EXPECT_EQ(parsed.parser.errorText(), "");
    EXPECT_EQ(parsed.parser.streams().size(), 3u);
    EXPECT_EQ(parsed.failedReads(), 1u);
}

TEST(ReadCount, AFaultInAFormatIsReadTwice) {
    const Bytes bytes = riff("AVI ", {samples::hdrl({samples::videoStrl(), samples::audioStrl()}), list("movi", {})});
    const ParsedWithFault parsed(bytes, positionOf(bytes, "strf") + 20);
    EXPECT_EQ(parsed.parser.errorText(), "stream[0]: strf data read error\n");
    EXPECT_EQ(parsed.parser.streams().size(), 1u);
    EXPECT_EQ(parsed.failedReads(), 2u);
}

TEST(ReadCount, ZerosAfterAFaultAreNotReadInSmallSteps) {
    const Bytes head = riff("AVI ", {samples::hdrl({samples::videoStrl()}), list("movi", {})});
    fileio::MemoryFile sparse(std::int64_t{8} << 20);
    sparse.put(0, head);
    fileio::FaultFile file(sparse);
    file.breakByte(65'535);
    AviParser parser;
    EXPECT_TRUE(parser.parse(file));
    EXPECT_EQ(parser.errorText(), "riff structure is corrupt or invalid\n");
    EXPECT_EQ(parser.streams().size(), 1u);
    EXPECT_LE(file.reads().size(), 128u + 1024 + 10);
}

TEST(ReadCount, AFileThatReturnsFewBytesAtATimeIsStillRead) {
    const Bytes bytes = samples::openDmlFile({{{10}}, {{20}}});
    fileio::MemoryFile memory(bytes);
    fileio::FaultFile file(memory);
    file.limitReads(100);
    AviParser parser;
    EXPECT_TRUE(parser.parse(file));
    EXPECT_EQ(parser.errorText(), "");
    EXPECT_EQ(parser.streams()[0]->totalBytes(), 30u);
}

}  // namespace
