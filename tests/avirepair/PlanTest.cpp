// What becomes of lost stretches, of indexes, and of headers.
#include "avirepair/Repaired.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace aviwriter;

// The position of the n-th picture's chunk in the clip of ten pictures; sound follows each.
std::size_t pictureAt(const Bytes& clip, std::size_t number) { return positionOf(clip, "00dc", number); }

Bytes withoutIndex(Bytes clip) {
    clip.resize(positionOf(clip, "idx1"));
    return clip;
}

Bytes zeroed(Bytes clip, std::size_t begin, std::size_t end) {
    overwrite(clip, begin, filled(end - begin));
    return clip;
}

Bytes without(Bytes clip, std::size_t begin, std::size_t end) {
    clip.erase(clip.begin() + static_cast<std::ptrdiff_t>(begin), clip.begin() + static_cast<std::ptrdiff_t>(end));
    return clip;
}

// Pictures 3 to 5 and the sound between them.
Bytes withHole(const Bytes& clip) { return zeroed(clip, pictureAt(clip, 3), pictureAt(clip, 6)); }

struct Lost {
    std::size_t stream;
    double begin;
    double seconds;
};

void expectLosses(const avirepair::Plan& plan, const std::vector<Lost>& wanted) {
    ASSERT_EQ(plan.losses.size(), wanted.size());
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        EXPECT_EQ(plan.losses[i].stream, wanted[i].stream);
        EXPECT_NEAR(plan.losses[i].begin, wanted[i].begin, 1e-9);
        EXPECT_NEAR(plan.losses[i].seconds, wanted[i].seconds, 1e-9);
    }
}

TEST(Gap, KeepsItsPlaceByTheIndex) {
    const avirepair::Plan plan = diagnosed(withHole(damage::honestClip())).plan;
    EXPECT_EQ(videoOf(plan), "+++xxx++++");
    EXPECT_EQ(soundOf(plan), "+5760 x5760 +7680");
    expectLosses(plan, {{0, 0.12, 0.12}, {1, 0.12, 0.12}});
}

TEST(Gap, KeepsItsPlaceWithoutAnIndex) {
    const avirepair::Plan plan = diagnosed(withHole(withoutIndex(damage::honestClip()))).plan;
    EXPECT_EQ(videoOf(plan), "+++xxx++++");
    EXPECT_EQ(soundOf(plan), "+5760 x5760 +7680");
}

TEST(Gap, IsClosedWhenWanted) {
    const avirepair::Plan plan = diagnosed(withHole(damage::honestClip()), {.closesGaps = true}).plan;
    EXPECT_EQ(videoOf(plan), "+++++++");
    EXPECT_EQ(soundOf(plan), "+13440");
    EXPECT_TRUE(plan.hasLosses);
}

TEST(Gap, ThatBeginsInTheSoundCostsOnlyWhatIsLost) {
    const Bytes clip = withoutIndex(damage::honestClip());
    const avirepair::Plan plan = diagnosed(zeroed(clip, pictureAt(clip, 4) - 1000, pictureAt(clip, 5))).plan;
    EXPECT_EQ(videoOf(plan), "++++x+++++");
    EXPECT_EQ(soundOf(plan), "+7680 x1920 +9600");
}

TEST(Gap, InAFrameLosesThatFrame) {
    const Bytes clip = withoutIndex(damage::honestClip());
    const avirepair::Plan plan = diagnosed(zeroed(clip, pictureAt(clip, 4) + 20, pictureAt(clip, 5))).plan;
    EXPECT_EQ(videoOf(plan), "++++x+++++");
    EXPECT_EQ(soundOf(plan), "+7680 x1920 +9600");
}

TEST(Gap, OfRemovedBytesKeepsSoundAndVideoInSync) {
    // From the middle of picture 3's sound to the middle of picture 6's.
    const Bytes clip = withoutIndex(damage::honestClip());
    const Bytes cut = without(clip, pictureAt(clip, 3) + 2000, pictureAt(clip, 6) + 2000);
    const avirepair::Plan plan = diagnosed(cut).plan;
    EXPECT_EQ(videoOf(plan), "+++++++");
    EXPECT_EQ(soundOf(plan), "+13440");
}

TEST(Gap, OfManySizesStaysInSyncAtItsEnd) {
    const Bytes clip = withoutIndex(damage::honestClip());
    for (std::size_t begin = pictureAt(clip, 1); begin < pictureAt(clip, 3); begin += 997) {
        for (std::size_t end = begin + 600; end < pictureAt(clip, 8); end += 3001) {
            const avirepair::Plan plan = diagnosed(zeroed(clip, begin, end)).plan;
            EXPECT_EQ(videoOf(plan).size(), 10U) << begin << " to " << end;
            EXPECT_EQ(plan.streams[1].length(), 19200U) << begin << " to " << end;
        }
    }
}

TEST(Length, OfSoundIsThatOfItsChunks) {
    Bytes clip = damage::honestClip();
    overwrite(clip, positionOf(clip, "strh", 1) + 8 + 32, u32(10));     // the number of chunks
    const avirepair::Plan plan = diagnosed(clip).plan;
    EXPECT_EQ(plan.wrong, std::vector<std::string>{"stream 1: the header's length was 10, not 19200"});
    const Bytes repaired = repairedBytes(clip);
    EXPECT_EQ(u32At(repaired, positionOf(repaired, "strh", 1) + 8 + 32), 19200U);
}

TEST(Length, OfSoundCountedInBytesCountsSamplesAfterwards) {
    Bytes clip = damage::honestClip();
    const std::size_t header = positionOf(clip, "strh", 1) + 8;
    overwrite(clip, header + 24, u32(192000));
    overwrite(clip, header + 32, u32(76800));
    overwrite(clip, header + 44, u32(1));
    const Bytes repaired = repairedBytes(clip);
    const std::size_t after = positionOf(repaired, "strh", 1) + 8;
    EXPECT_EQ(u32At(repaired, after + 20), 1U);
    EXPECT_EQ(u32At(repaired, after + 24), 48000U);
    EXPECT_EQ(u32At(repaired, after + 32), 19200U);
    EXPECT_EQ(u32At(repaired, after + 44), 4U);
}

std::vector<Idx1Entry> withKeyFrames(std::vector<Idx1Entry> entries, std::uint32_t shift) {
    for (std::size_t i = 0; i < entries.size(); ++i) {
        entries[i].flags = i % 6 == 0 || i % 2 != 0 ? 0x10 : 0;     // every third picture
        entries[i].offset += shift;
    }
    return entries;
}

TEST(KeyFrames, ComeFromTheIndexHoweverItCounts) {
    const auto movi = static_cast<std::uint32_t>(positionOf(damage::honestClip(), "movi"));
    for (const std::uint32_t shift : {0U, 8U, movi, movi + 8}) {
        const Bytes clip = damage::clipIndexedBy(withKeyFrames(damage::mediaEntries(), shift));
        const avirepair::Plan plan = diagnosed(clip).plan;
        EXPECT_EQ(plan.streams[0].keyFrames, 4U) << shift;
        EXPECT_EQ(plan.wrong, std::vector<std::string>{}) << shift;
    }
}

TEST(KeyFrames, AreAllFramesWithoutAnIndex) {
    EXPECT_EQ(diagnosed(withoutIndex(damage::honestClip())).plan.streams[0].keyFrames, 10U);
}

TEST(Index, TellsOfDroppedFramesWithoutAChunk) {
    std::vector<Idx1Entry> entries = damage::mediaEntries();
    entries.insert(entries.begin() + 6, 2, {.flags = 0, .offset = entries[6].offset, .length = 0});
    EXPECT_EQ(videoOf(diagnosed(damage::clipIndexedBy(entries)).plan), "+++dd+++++++");
}

TEST(Index, ThatIsSoundLeavesChunksOut) {
    std::vector<Idx1Entry> entries = damage::mediaEntries();
    entries.erase(entries.begin() + 4);
    const Bytes clip = damage::clipIndexedBy(entries);
    EXPECT_EQ(videoOf(diagnosed(clip).plan), "+++++++++");
    EXPECT_EQ(videoOf(diagnosed(clip, {.takesAll = true}).plan), "++++++++++");
}

TEST(Index, ThatEndsTooEarlyLeavesNothingOut) {
    std::vector<Idx1Entry> entries = damage::mediaEntries();
    entries.resize(7);
    EXPECT_EQ(videoOf(diagnosed(damage::clipIndexedBy(entries)).plan), "++++++++++");
}

TEST(Headers, ThatAreLostAreReportedWithTheirChunks) {
    const Bytes clip = damage::clipWith(damage::headers({damage::videoList()}));
    const avirepair::Plan plan = diagnosed(clip).plan;
    EXPECT_EQ(plan.wrong.front(), "of a stream whose headers are lost: 10 chunks named 01wb; --like takes the headers "
                                  "from another clip");
    EXPECT_EQ(avirepair::exitCodeOf(plan), 3);
}

TEST(Headers, KeepWhatElseTheyHold) {
    const Bytes name = chunk("strn", text("cam")) + chunk("strd", filled(6, 7));
    const Bytes clip = damage::clipWith(damage::headers(
        {list("strl", {strh(damage::videoHeader()), strf(damage::videoFormat()), name}), damage::soundList()}));
    const Bytes repaired = repairedBytes(clip);
    const auto found = std::search(repaired.begin(), repaired.end(), name.begin(), name.end());
    EXPECT_NE(found, repaired.end());
}

}  // namespace
