// The memory that finished frame requests leave for later ones, and its limits.
#include "codec/FrameMemory.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace {

constexpr std::size_t kMiB = std::size_t{1} << 20;

class FrameMemoryLeft : public testing::Test {
protected:
    FrameMemoryLeft() { FrameMemory::freeUnused(); }
    ~FrameMemoryLeft() override { FrameMemory::freeUnused(); }

    using Requests = std::vector<std::unique_ptr<FrameMemory>>;

    static Requests requests(std::size_t count) {
        Requests all(count);
        for (auto& request : all) {
            request = std::make_unique<FrameMemory>();
        }
        return all;
    }

    static void finish(std::size_t count, std::size_t bytesEach) {
        for (const Requests all = requests(count); const auto& request : all) {
            request->frameBuffer().growTo(bytesEach);
        }
    }

    // Number of those of `count` new requests that find spare memory.
    static std::size_t found(std::size_t count) {
        std::size_t withRoom = 0;
        for (const Requests all = requests(count); const auto& request : all) {
            withRoom += request->frameBuffer().size() != 0 ? 1 : 0;
        }
        return withRoom;
    }
};

TEST_F(FrameMemoryLeft, IsKeptOfSixteenFrames) {
    finish(16, 1000);
    EXPECT_EQ(found(16), 16u);
}

TEST_F(FrameMemoryLeft, IsNotKeptOfASeventeenth) {
    finish(17, 1000);
    EXPECT_EQ(found(17), 16u);
}

TEST_F(FrameMemoryLeft, IsKeptOfAFrameOfSixteenMebibytes) {
    finish(1, 16 * kMiB);
    EXPECT_EQ(found(1), 1u);
}

TEST_F(FrameMemoryLeft, IsNotKeptOfALargerFrame) {
    finish(1, 16 * kMiB + 1);
    EXPECT_EQ(found(1), 0u);
}

TEST_F(FrameMemoryLeft, IsNotKeptOfAFrameWithTooManyFormats) {
    {
        FrameMemory request;
        request.frameBuffer().growTo(8 * kMiB);
        request.frameFormats().reserve(8 * kMiB / sizeof(imFrameFormat) + 1);
    }
    EXPECT_EQ(found(1), 0u);
}

TEST_F(FrameMemoryLeft, IsAtMostSixtyFourMebibytesInTotal) {
    finish(16, 16 * kMiB);
    EXPECT_EQ(found(16), 4u);
}

TEST_F(FrameMemoryLeft, IsTheSameAgainOnceItWasTaken) {
    finish(4, 16 * kMiB);
    EXPECT_EQ(found(4), 4u);
    EXPECT_EQ(found(4), 4u);
    FrameMemory::freeUnused();
    finish(4, 16 * kMiB);
    EXPECT_EQ(found(4), 4u);
}

TEST_F(FrameMemoryLeft, IsTheSameAfterFramesThatWereTooLarge) {
    finish(16, 16 * kMiB + 1);
    finish(17, 16 * kMiB);
    EXPECT_EQ(found(17), 4u);
}

TEST_F(FrameMemoryLeft, IsNoneOnceItWasFreed) {
    finish(4, 1000);
    FrameMemory::freeUnused();
    EXPECT_EQ(found(4), 0u);
}

}  // namespace
