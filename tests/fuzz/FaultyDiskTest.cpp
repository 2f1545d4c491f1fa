#include "fileio/SystemFile.h"
#include "support/FaultyDisk.h"

#include <gtest/gtest.h>

#include <numeric>

namespace {

using fuzz::Bytes;
using fileio::FileFaults;

constexpr std::uint32_t kReading = fileio::kOpenRead | fileio::kOpenShareRead;

// A file with the bytes 0, 1, 2 ... 99, opened as the plug-in does.
class FaultyDiskTest : public testing::Test {
protected:
    FaultyDiskTest() {
        Bytes bytes(100);
        std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
        disk().setFaults({});
        disk().put("file", bytes);
        EXPECT_TRUE(m_file.open("file", kReading));
    }

    static fuzz::FaultyDisk& disk() { return fuzz::FaultyDisk::instance(); }

    Bytes readAt(std::int64_t position, std::uint64_t count) {
        Bytes bytes(count, 0xEE);
        EXPECT_TRUE(m_file.seek(position));
        bytes.resize(m_file.read(bytes.data(), count));
        return bytes;
    }

    fileio::SystemFile m_file;
};

TEST_F(FaultyDiskTest, WithoutFaultsAFileIsReadCompletely) {
    EXPECT_EQ(m_file.size(), 100);
    EXPECT_EQ(readAt(98, 10), (Bytes{98, 99}));
    EXPECT_EQ(m_file.tell(), 100);
    EXPECT_EQ(readAt(100, 1), Bytes{});
    EXPECT_FALSE(m_file.seek(-1));
}

TEST_F(FaultyDiskTest, ReadsAreCutShort) {
    disk().setFaults({.largestRead = 3});
    EXPECT_EQ(readAt(10, 10), (Bytes{10, 11, 12}));
}

TEST_F(FaultyDiskTest, AReadThatTouchesABrokenByteReturnsNothing) {
    disk().setFaults({.brokenFrom = 50, .brokenCount = 2});
    EXPECT_EQ(readAt(48, 2).size(), 2u);
    EXPECT_EQ(readAt(48, 3).size(), 0u);
    EXPECT_EQ(readAt(51, 1).size(), 0u);
    EXPECT_EQ(readAt(52, 1).size(), 1u);
}

TEST_F(FaultyDiskTest, SeeksAreRefused) {
    disk().setFaults({.refusedFrom = 8, .refusedCount = 2});
    EXPECT_TRUE(m_file.seek(7));
    EXPECT_FALSE(m_file.seek(8));
    EXPECT_FALSE(m_file.seek(9));
    EXPECT_TRUE(m_file.seek(10));
}

TEST_F(FaultyDiskTest, AFalseSizeIsReported) {
    disk().setFaults({.claimedGrowth = 1000});
    EXPECT_EQ(m_file.size(), 1100);
    disk().setFaults({.claimedGrowth = -1000});
    EXPECT_EQ(m_file.size(), 0);
    EXPECT_EQ(readAt(99, 10).size(), 1u);
}

TEST_F(FaultyDiskTest, AFileShrinksWhileItIsRead) {
    disk().setFaults({.readsUntilCut = 1, .cutAt = 20});
    EXPECT_EQ(readAt(10, 20).size(), 20u);
    EXPECT_EQ(readAt(10, 20).size(), 10u);
    EXPECT_EQ(m_file.size(), 20);
}

TEST_F(FaultyDiskTest, OpeningForWritingEmptiesAClosedFile) {
    fileio::SystemFile other;
    EXPECT_FALSE(other.open("file", fileio::kOpenRead | fileio::kOpenWrite));
    m_file.close();
    EXPECT_TRUE(other.open("file", fileio::kOpenRead | fileio::kOpenWrite));
    EXPECT_EQ(other.size(), 0);
}

TEST_F(FaultyDiskTest, CountsTheOpenFiles) {
    EXPECT_EQ(disk().openFiles(), 1u);
    m_file.close();
    EXPECT_EQ(disk().openFiles(), 0u);
    EXPECT_FALSE(m_file.open("no such file", kReading));
    EXPECT_EQ(disk().openFiles(), 0u);
}

TEST(ScriptedFaults, AScriptOfZerosAsksForNone) {
    const Bytes zeros(20, 0);
    fuzz::Script script(zeros);
    EXPECT_TRUE(fuzz::readFaults(script, 1000).none());
}

TEST(ScriptedFaults, AScriptCanAskForAll) {
    const Bytes bytes = {31, 4, 0x05, 0x80, 2, 0x06, 0x80, 3, 10, 7, 0x08, 0x80};
    fuzz::Script script(bytes);
    const FileFaults expected = {.largestRead = 16, .brokenFrom = 5, .brokenCount = 3, .refusedFrom = 6,
                                 .refusedCount = 4, .claimedGrowth = 1024, .readsUntilCut = 7, .cutAt = 8};
    EXPECT_TRUE(fuzz::readFaults(script, 1000) == expected);
    EXPECT_TRUE(script.atEnd());
}

}  // namespace
