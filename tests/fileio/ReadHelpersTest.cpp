#include "fileio/ReadHelpers.h"
#include "support/FaultFile.h"
#include "support/MemoryFile.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace {

template <typename Call>
std::string runtimeErrorOf(Call call) {
    try {
        call();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "no exception";
}

TEST(ReadExact, ReturnsTheRequestedBytes) {
    fileio::MemoryFile file({1, 2, 3});
    std::uint8_t bytes[3] = {};
    fileio::readExact(file, bytes, 3);
    EXPECT_EQ(bytes[2], 3);
}

TEST(ReadExact, AtTheEndOfTheFileThrowsWithBothCounts) {
    fileio::MemoryFile file(std::vector<std::uint8_t>(3));
    ASSERT_TRUE(file.seek(3));
    std::uint8_t bytes[8];
    EXPECT_EQ(runtimeErrorOf([&] { fileio::readExact(file, bytes, 8); }), "Read error: size: 8, read: 0");
}

TEST(ReadExact, ShortOfTheEndThrowsWithBothCounts) {
    fileio::MemoryFile file(std::vector<std::uint8_t>(3));
    std::uint8_t bytes[8];
    EXPECT_EQ(runtimeErrorOf([&] { fileio::readExact(file, bytes, 8); }), "Read error: size: 8, read: 3");
}

TEST(ReadExact, NumbersAreNotGrouped) {
    fileio::MemoryFile file(std::vector<std::uint8_t>(3'000));
    std::vector<std::uint8_t> bytes(3'000);
    EXPECT_EQ(runtimeErrorOf([&] { fileio::readExact(file, bytes.data(), 0x1'0000'0BB8); }),
              "Read error: size: 4294970296, read: 3000");
}

TEST(ReadExact, ReadsOnceAndDoesNotRetry) {
    fileio::MemoryFile memory(std::vector<std::uint8_t>(8));
    fileio::FaultFile file(memory);
    file.limitReads(5);
    std::uint8_t bytes[8];
    EXPECT_EQ(runtimeErrorOf([&] { fileio::readExact(file, bytes, 8); }), "Read error: size: 8, read: 5");
    EXPECT_EQ(file.reads().size(), 1u);
}

TEST(SeekOrThrow, MovesToThePosition) {
    fileio::MemoryFile file(std::vector<std::uint8_t>(8));
    fileio::seekOrThrow(file, 5);
    EXPECT_EQ(file.tell(), 5);
}

TEST(SeekOrThrow, ToANegativePositionThrowsWithItsSign) {
    fileio::MemoryFile file(std::vector<std::uint8_t>(8));
    EXPECT_EQ(runtimeErrorOf([&] { fileio::seekOrThrow(file, -1); }), "Seek error: pos: -1");
}

TEST(SeekOrThrow, NamesLargePositionsInFull) {
    fileio::MemoryFile memory(std::vector<std::uint8_t>(8));
    fileio::FaultFile file(memory);
    file.refuseSeekTo(0x7FFF'FFFF'FFFF'FFFF);
    EXPECT_EQ(runtimeErrorOf([&] { fileio::seekOrThrow(file, 0x7FFF'FFFF'FFFF'FFFF); }),
              "Seek error: pos: 9223372036854775807");
}

}  // namespace
