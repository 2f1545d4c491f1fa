// The outline of the plug-in's sound.
#include "importhost/sound/Waveform.h"

#include "importhost/Sample.h"

#include <gtest/gtest.h>

using namespace importhost;
using programs::Sample;

namespace {

Waveform waveformOfSample(const Sample& sample, std::int64_t columns) {
    Editor editor({{}, "", false});
    Waveform waveform;
    {
        SoundReader clip(editor, sample.path(), 0);
        waveform = waveformOf(clip, columns);
    }
    EXPECT_EQ(editor.finish(), std::vector<std::string>{});
    return waveform;
}

// A second and a half; each full second begins with a click at 0.875, the rest is a tone at 0.5.
Sample clicks() {
    return Sample({"--size", "32x16", "--frames", "3", "--rate", "2", "--audio", "pcm16:2:48000"});
}

TEST(Waveform, EachColumnHasItsLowestAndHighestSample) {
    const Waveform waveform = waveformOfSample(clicks(), 48);
    ASSERT_EQ(waveform.channels.size(), 2u);
    for (const std::vector<Extent>& columns : waveform.channels) {
        ASSERT_EQ(columns.size(), 48u);
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const float loudest = i == 0 || i == 32 ? 0.875f : 0.5f;
            EXPECT_NEAR(columns[i].high, loudest, 0.001f) << i;
            EXPECT_NEAR(columns[i].low, -loudest, 0.001f) << i;
        }
    }
    EXPECT_FALSE(waveform.isSampled);
    EXPECT_EQ(waveform.failure, "");
}

TEST(Waveform, HasNoMoreColumnsThanSampleFrames) {
    const Sample sample({"--size", "32x16", "--frames", "1", "--rate", "1000", "--audio", "pcm16:1:48000"});
    EXPECT_EQ(waveformOfSample(sample, 400).channels[0].size(), 48u);
}

// The fake importer's samples are their own positions, negated in the second channel.
Waveform waveformOfFake(std::int64_t columns) {
    const fakes::FakeClip file("sound=1");
    Editor editor({fakes::importerPath(), "", false});
    SoundReader clip(editor, file.path(), 0);
    return waveformOf(clip, columns);
}

TEST(Waveform, GoesFromTheFirstSampleToTheLast) {
    const Waveform waveform = waveformOfFake(10);
    EXPECT_EQ(waveform.channels[0].back(), (Extent{0.0f, 95999.0f}));
    EXPECT_EQ(waveform.channels[1].back(), (Extent{-95999.0f, 0.0f}));
    EXPECT_FALSE(waveform.isSampled);
}

TEST(Waveform, LongColumnsAreReadAtTheirStart) {
    const Waveform waveform = waveformOfFake(1);
    EXPECT_EQ(waveform.channels[0][0].high, 16383.0f);
    EXPECT_TRUE(waveform.isSampled);
}

}  // namespace
