// Heap allocations of requests: none after the first request.
#include "CostTest.h"
#include "HeapWatch.h"

using aviwriter::SampleFormat;

namespace {

class Allocation : public CostTest {
protected:
    // Without decodes, because the codec's allocations are not the plug-in's.
    Allocation() : m_watch(plugin().library()) { plugin().spy().decodes().leaveOut(true); }

    template <class Action>
    std::size_t allocationsOf(Action action) {
        HeapWatch::clear();
        action();
        return HeapWatch::allocations();
    }

    std::size_t allocationsOfSound(SampleFormat format, std::uint16_t channels) {
        MeasuredClip& clip = open(clipWith(format, channels));
        clip.getSound(0, 3 * kChunkFrames);
        return allocationsOf([&] { clip.getSound(kChunkFrames / 2, 3 * kChunkFrames); });
    }

private:
    HeapWatch m_watch;
};

}  // namespace

// Proves that allocations are detected at all, which all other tests rely on.
TEST_F(Allocation, OfAnAsynchronousImporterIsDetected) {
    MeasuredClip& clip = open();
    EXPECT_GT(allocationsOf([&] { clip.openAsync(); }), 0u);
}

TEST_F(Allocation, OfTheFirstFrameIsDetected) {
    MeasuredClip& clip = open();
    EXPECT_GT(allocationsOf([&] { clip.getFrame(0); }), 0u);
}

TEST_F(Allocation, IsNotNeededForASecondFrame) {
    MeasuredClip& clip = open();
    clip.getFrame(0);
    EXPECT_EQ(allocationsOf([&] { clip.getFrame(0); }), 0u);
}

TEST_F(Allocation, IsNotNeededAfterTheLargestFrame) {
    MeasuredClip& clip = open();
    for (csSDK_int64 frame = 0; frame < clip.frameCount(); ++frame) {
        clip.getFrame(frame);
    }
    EXPECT_EQ(allocationsOf([&] {
                  for (csSDK_int64 frame = 0; frame < clip.frameCount(); ++frame) {
                      clip.getFrame(frame);
                  }
              }),
              0u);
}

TEST_F(Allocation, IsNotNeededForADroppedFrame) {
    aviwriter::SampleOptions options = usualClip();
    options.dropped = {5};
    MeasuredClip& clip = open(options);
    clip.getFrame(4);
    EXPECT_EQ(allocationsOf([&] { clip.getFrame(5); }), 0u);
}

TEST_F(Allocation, IsNotNeededForFloatSound) { EXPECT_EQ(allocationsOfSound(SampleFormat::float32, 8), 0u); }

TEST_F(Allocation, IsNotNeededForEightBitSound) { EXPECT_EQ(allocationsOfSound(SampleFormat::pcm8, 2), 0u); }

TEST_F(Allocation, IsNotNeededForSixteenBitSound) { EXPECT_EQ(allocationsOfSound(SampleFormat::pcm16, 2), 0u); }

TEST_F(Allocation, IsNotNeededForTwentyFourBitSound) { EXPECT_EQ(allocationsOfSound(SampleFormat::pcm24, 2), 0u); }

TEST_F(Allocation, ForACollectionIsOnlyTheRuntimesForTheWait) {
    MeasuredClip& clip = open();
    clip.openAsync();
    clip.collect(0);
    clip.announce(0);
    HeapWatch::clear();
    clip.collect(0);
    EXPECT_LE(HeapWatch::allocationsOfThisThread(), HeapWatch::kMostForAWait);
}

// An announcement starts a thread, which allocates a little, far less than a frame.
TEST_F(Allocation, ForAnAnnouncedFrameExcludesItsBytes) {
    MeasuredClip& clip = open();
    clip.openAsync();
    clip.collect(0);
    plugin().spy().clear();
    HeapWatch::clear();
    clip.announce(0);
    clip.collect(0);
    EXPECT_GT(plugin().spy().reads().lastSize(), 2000u);
    EXPECT_LT(HeapWatch::largest(), 1000u);
}

// Hundreds of clips are open in a project: a buffer that one no longer needs serves the next. Asynchronous importers
// take part too.
TEST_F(Allocation, FirstFrameReusesAnotherImportersBuffer) {
    MeasuredClip& clip = open();
    clip.openAsync();
    clip.getFrame(0);
    plugin().spy().clear();
    HeapWatch::clear();
    clip.collect(0);
    EXPECT_GT(plugin().spy().reads().lastSize(), 2000u);
    EXPECT_LT(HeapWatch::largest(), plugin().spy().reads().lastSize());
}

TEST_F(Allocation, IsNeededAgainAfterAFlush) {
    MeasuredClip& clip = open();
    clip.openAsync();
    clip.collect(0);
    clip.flush();
    plugin().spy().clear();
    HeapWatch::clear();
    clip.collect(0);
    EXPECT_EQ(HeapWatch::largest(), plugin().spy().reads().lastSize());
}

// A quiet importer frees its own buffers and all spare ones.
TEST_F(Allocation, IsNeededAgainAfterAQuietClip) {
    MeasuredClip& clip = open();
    clip.getFrame(0);
    clip.quiet();
    clip.openAsync();
    plugin().spy().clear();
    HeapWatch::clear();
    clip.collect(0);
    EXPECT_EQ(HeapWatch::largest(), plugin().spy().reads().lastSize());
}
