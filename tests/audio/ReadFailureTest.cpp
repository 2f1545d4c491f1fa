// Files that cannot be read where their index points: the request still succeeds, and the next one tries again.
#include "audio/support/LoggedSoundTest.h"

#include "hostkit/watch/DiskFaults.h"

#include <algorithm>

namespace {

using ReadFailure = LoggedSoundTest;

const SoundFormat kStereo = {};

SampleBits joined(SampleBits left, const SampleBits& right) {
    for (std::size_t channel = 0; channel < left.size(); ++channel) {
        left[channel].insert(left[channel].end(), right[channel].begin(), right[channel].end());
    }
    return left;
}

// 100 frames, then 100 at an impossible position, then the first 100 again.
Bytes fileWithUnreachableChunk(const Bytes& data) {
    const std::uint64_t at = indexedDataPosition(3);
    return indexedSoundFile({{at, 400}, {0xFFFFFFFFFFFFFC18, 400}, {at, 400}}, data);
}

// 100 frames, then 100 that begin with the last 25 of the file and reach past its end, then the first 100 again.
Bytes fileWithCutChunk(const Bytes& data) {
    const std::uint64_t at = indexedDataPosition(3);
    return indexedSoundFile({{at, 400}, {at + 300, 400}, {at, 400}}, data);
}

constexpr std::uint64_t kPlaceThatNoFileHas = 0xFFFFFFFFFFFFFC18;

// 100 frames, then `empty` chunks without bytes at `place`, then the same 100 again.
Bytes fileWithEmptyChunks(const Bytes& data, std::size_t empty, std::uint64_t place) {
    const std::uint64_t at = indexedDataPosition(empty + 2);
    std::vector<IndexedChunk> index(empty + 2, {place, 0});
    index.front() = index.back() = {at, 400};
    return indexedSoundFile(index, data);
}

// The same with `before` empty chunks at the start of the file, followed by one at an impossible position.
Bytes fileWithUnreachableEmptyChunk(const Bytes& data, std::uint32_t before) {
    const std::uint64_t at = indexedDataPosition(4, before + 3);
    return indexedSoundFile({{at, 400}, {0, 0, before}, {kPlaceThatNoFileHas, 0}, {at, 400}}, data);
}

}  // namespace

TEST_F(ReadFailure, OfASeekIsLoggedWithTheFilesPosition) {
    SoundClip clip(session(), fileWithUnreachableChunk(noise(kStereo, 100)));
    EXPECT_EQ(readingLog(clip, 50, 100), (Lines{"reading : 200, 712, 200", "reading : 400, -1000, 200",
                                                "importAudio: seek error: -1000, pos: 912", "fill    : 200"}));
}

TEST_F(ReadFailure, OfASeekWithinAChunkIsLoggedWithThatPosition) {
    SoundClip clip(session(), fileWithUnreachableChunk(noise(kStereo, 100)));
    clip.audio(0, 10, 2);
    EXPECT_EQ(readingLog(clip, 110, 10), (Lines{"reading : 440, -960, 40", "importAudio: seek error: -960, pos: 552",
                                                "fill    : 40"}));
}

TEST_F(ReadFailure, OfASeekLeavesSilence) {
    const Bytes data = noise(kStereo, 100);
    SoundClip clip(session(), fileWithUnreachableChunk(data));
    EXPECT_TRUE(holds(clip.audio(50, 200, 2),
                      joined(referenceSound(kStereo, data, 50, 50), constantSound(0.0f, 2, 150))));
}

TEST_F(ReadFailure, OfAReadIsLoggedWithWhatWasRead) {
    SoundClip clip(session(), fileWithCutChunk(noise(kStereo, 100)));
    EXPECT_EQ(readingLog(clip, 90, 150),
              (Lines{"reading : 360, 872, 40", "reading : 400, 812, 400", "importAudio: read error: 400, read: 100",
                     "fill    : 460"}));
}

TEST_F(ReadFailure, PastTheEndOfTheFileReadsNothing) {
    SoundClip clip(session(), fileWithCutChunk(noise(kStereo, 100)));
    EXPECT_EQ(readingLog(clip, 150, 20),
              (Lines{"reading : 600, 1012, 80", "importAudio: read error: 80, read: 0", "fill    : 80"}));
}

TEST_F(ReadFailure, OfAReadKeepsWhatWasRead) {
    const Bytes data = noise(kStereo, 100);
    SoundClip clip(session(), fileWithCutChunk(data));
    const SampleBits got = joined(referenceSound(kStereo, data, 90, 10), referenceSound(kStereo, data, 75, 25));
    EXPECT_TRUE(holds(clip.audio(90, 150, 2), joined(got, constantSound(0.0f, 2, 115))));
}

TEST_F(ReadFailure, DoesNotAffectTheNextRequest) {
    const Bytes data = noise(kStereo, 100);
    SoundClip clip(session(), fileWithCutChunk(data));
    clip.audio(90, 110, 2);
    EXPECT_TRUE(holds(clip.audio(-1, 100, 2), referenceSound(kStereo, data, 0, 100)));
}

TEST_F(ReadFailure, RecursWithTheSameRequest) {
    SoundClip clip(session(), fileWithUnreachableChunk(noise(kStereo, 100)));
    const Lines first = readingLog(clip, 50, 100);
    EXPECT_EQ(readingLog(clip, 50, 100), first);
}

TEST_F(ReadFailure, OfAnEmptyChunkIsASeekToAnImpossiblePosition) {
    SoundClip clip(session(), fileWithEmptyChunks(noise(kStereo, 100), 1, kPlaceThatNoFileHas));
    EXPECT_EQ(readingLog(clip, 50, 100), (Lines{"reading : 200, 712, 200", "reading : 400, -1000, 0",
                                                "importAudio: seek error: -1000, pos: 912", "fill    : 200"}));
}

TEST_F(ReadFailure, OfASeekAfterAnEmptyChunkIsLoggedWithItsPosition) {
    const std::uint64_t at = indexedDataPosition(4);
    SoundClip clip(session(), indexedSoundFile({{at, 400}, {1000, 0}, {kPlaceThatNoFileHas, 400}, {at, 400}},
                                               noise(kStereo, 100)));
    EXPECT_EQ(readingLog(clip, 0, 200),
              (Lines{"reading : 0, 568, 400", "reading : 400, 1000, 0", "reading : 400, -1000, 400",
                     "importAudio: seek error: -1000, pos: 1000", "fill    : 400"}));
}

TEST_F(ReadFailure, OnALostDiskOccursAtTheFirstEmptyChunk) {
    SoundClip clip(session(), fileWithEmptyChunks(noise(kStereo, 100), 2, 1000));
    const hostkit::PluginLibrary library(pluginPath());
    hostkit::DiskFaults disk(library);
    disk.fail(hostkit::DiskCall::Seek, 2, hostkit::DiskFaults::kForEver);
    const Lines lines = readingLog(clip, 0, 200);
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(Lines(lines.begin(), lines.begin() + 2), (Lines{"reading : 0, 568, 400", "reading : 400, 1000, 0"}));
    EXPECT_TRUE(lines[2].starts_with("importAudio: seek error: 1000, pos: ")) << lines[2];
    EXPECT_EQ(lines[3], "fill    : 400");
}

TEST_F(ReadFailure, DoesNotOccurForEmptyChunksWhichCostASeekEach) {
    const Bytes data = noise(kStereo, 100);
    SoundClip clip(session(), fileWithEmptyChunks(data, 1000, 400));
    const hostkit::PluginLibrary library(pluginPath());
    hostkit::DiskFaults disk(library);
    EXPECT_TRUE(holds(clip.audio(0, 200, 2),
                      joined(referenceSound(kStereo, data, 0, 100), referenceSound(kStereo, data, 0, 100))));
    EXPECT_EQ(disk.calls(hostkit::DiskCall::Seek), 1002);
    EXPECT_EQ(disk.calls(hostkit::DiskCall::Read), 2);
}

// Each of ten thousand empty chunks is sought and has its line; those after them are skipped, including the one at an
// impossible position.
TEST_F(ReadFailure, OfTheTenThousandthEmptyChunkEndsTheSound) {
    SoundClip clip(session(), fileWithUnreachableEmptyChunk(noise(kStereo, 100), 9'999));
    const Lines lines = readingLog(clip, 0, 200);
    EXPECT_EQ(lines.size(), 1 + 10'000 + 2u) << "the data, the empty chunks, the failure and the end";
    EXPECT_EQ(lines.back(), "fill    : 400");
}

TEST_F(ReadFailure, OfAnEmptyChunkAfterTenThousandIsNotNoticed) {
    const Bytes data = noise(kStereo, 100);
    SoundClip clip(session(), fileWithUnreachableEmptyChunk(data, 10'000));
    const Lines lines = readingLog(clip, 0, 200);
    EXPECT_EQ(lines.size(), 1 + 10'000 + 2u) << "the data, the empty chunks, the data again and the end";
    EXPECT_EQ(lines.back(), "fill    : 0");
    EXPECT_TRUE(holds(clip.audio(0, 200, 2),
                      joined(referenceSound(kStereo, data, 0, 100), referenceSound(kStereo, data, 0, 100))));
}

TEST_F(ReadFailure, OfEightBitSoundLeavesTheLowestSample) {
    const SoundFormat mono8 = {aviwriter::SampleFormat::pcm8, 1};
    const Bytes sound = noise(mono8, 100);
    Bytes file = soundFile(mono8, sound, 100);
    // The index states that the only chunk lies past the end of the file.
    aviwriter::overwrite(file, aviwriter::positionOf(file, "idx1") + 16, aviwriter::u32(0x10000000));
    SoundClip clip(session(), file);
    EXPECT_TRUE(holds(clip.audio(0, 50, 1), constantSound(-1.0f, 1, 50)));
}

TEST_F(ReadFailure, OfAClosedFileIsASeekError) {
    SoundClip clip(session(), soundFile(kStereo, noise(kStereo, 100), 100));
    clip.session().quiet();
    EXPECT_EQ(readingLog(clip, 0, 10),
              (Lines{"reading : 0, 312, 40", "importAudio: seek error: 312, pos: 0", "fill    : 40"}));
}

TEST_F(ReadFailure, OfAClosedFileEndsWhenItIsReopened) {
    const Bytes sound = noise(kStereo, 100);
    SoundClip clip(session(), soundFile(kStereo, sound, 100));
    clip.session().quiet();
    EXPECT_TRUE(holds(clip.audio(0, 10, 2), constantSound(0.0f, 2, 10)));
    clip.session().open();
    EXPECT_TRUE(holds(clip.audio(-1, 10, 2), referenceSound(kStereo, sound, 10, 10)));
}
