// Compressed bytes go from the file to the codec through one buffer: they are read into it and decoded from it.
#include "CostTest.h"

namespace {

class CompressedBytes : public CostTest {
protected:
    void expectOnePlace() {
        EXPECT_NE(reads().lastBuffer(), nullptr);
        EXPECT_EQ(decodes().lastBuffer(), reads().lastBuffer());
        EXPECT_EQ(decodes().lastSize(), reads().lastSize());
    }

    hostkit::SpiedCall& reads() { return plugin().spy().reads(); }
    hostkit::SpiedCall& decodes() { return plugin().spy().decodes(); }
};

}  // namespace

TEST_F(CompressedBytes, OfAFrameAreDecodedWhereTheyWereRead) {
    MeasuredClip& clip = open();
    clip.getFrame(3);
    expectOnePlace();
}

TEST_F(CompressedBytes, OfADroppedFrameAreDecodedWhereTheyWereRead) {
    aviwriter::SampleOptions options = usualClip();
    options.dropped = {5};
    MeasuredClip& clip = open(options);
    plugin().spy().clear();
    clip.getFrame(5);
    expectOnePlace();
}

TEST_F(CompressedBytes, OfAnAnnouncedFrameAreDecodedWhereTheyWereRead) {
    MeasuredClip& clip = open();
    clip.openAsync();
    plugin().spy().clear();
    clip.announce(3);
    clip.collect(3);
    expectOnePlace();
}

TEST_F(CompressedBytes, AreReadOnceAndExactly) {
    MeasuredClip& clip = open();
    plugin().spy().clear();
    clip.getFrame(3);
    EXPECT_EQ(reads().count(), 1u);
    EXPECT_EQ(decodes().count(), 1u);
    EXPECT_EQ(reads().bytes(), decodes().bytes());
}

TEST_F(CompressedBytes, OfTheNextFrameUseTheSameBuffer) {
    MeasuredClip& clip = open();
    clip.getFrame(3);
    const void* place = reads().lastBuffer();
    clip.getFrame(3);
    EXPECT_EQ(reads().lastBuffer(), place);
}
