// The list that stores indexes.
#include "avi/BlockList.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

using Numbers = BlockList<std::uint32_t>;

// Appends `count` consecutive numbers, starting with the list's size.
void appendRoom(Numbers& list, std::size_t count) {
    while (count > 0) {
        auto next = static_cast<std::uint32_t>(list.size());
        const auto room = list.extend(count);
        for (std::uint32_t& number : room) {
            number = next++;
        }
        count -= room.size();
    }
}

void expectCountsUp(const Numbers& list, std::size_t size) {
    ASSERT_EQ(list.size(), size);
    for (std::size_t i = 0; i < size; ++i) {
        ASSERT_EQ(list[i], i);
    }
}

TEST(BlockList, KeepsWhatIsAppendedOneByOne) {
    Numbers list;
    for (std::uint32_t i = 0; i < 40'000; ++i) {
        list.append(i);
    }
    expectCountsUp(list, 40'000);
    }

TEST(BlockList, KeepsBatchesOfAnyLength) {
    Numbers list;
    std::size_t size = 0;
    for (std::size_t count = 1; count < 300; ++count) {
        appendRoom(list, count);
        size += count;
    }
    expectCountsUp(list, size);
}

TEST(BlockList, ReturnsRoomForAKnownLengthInOnePiece) {
    Numbers list;
    EXPECT_EQ(list.extend(5000).size(), 5000u);
    EXPECT_EQ(list.size(), 5000u);
}

TEST(BlockList, ReturnsRoomOnlyToTheEndOfABlock) {
    Numbers list;
    EXPECT_EQ(list.extend(20'000).size(), 16'384u);
    EXPECT_EQ(list.extend(20'000 - 16'384).size(), 3616u);
    EXPECT_EQ(list.size(), 20'000u);
}

TEST(BlockList, CanAppendItsOwnElementWhileGrowing) {
    Numbers list;
    appendRoom(list, 16);
    list.append(list[15]);
    EXPECT_EQ(list[16], 15u);
}

TEST(BlockList, LosesNothingWhenItShrinksAndGrowsAgain) {
    Numbers list;
    appendRoom(list, 16'384 + 100);
    list.shrinkToFit();
    expectCountsUp(list, 16'484);
    appendRoom(list, 20'000);
    expectCountsUp(list, 36'484);
}

TEST(BlockList, IsEmptyAndUsableAfterClear) {
    Numbers list;
    appendRoom(list, 100);
    list.clear();
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(list.size(), 0u);
    appendRoom(list, 30);
    expectCountsUp(list, 30);
}

}  // namespace
