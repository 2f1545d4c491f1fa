// The log of a sound request: the computed values, each read, and the number of filled bytes.
#include "audio/support/LoggedSoundTest.h"

#include "hostkit/system/Text.h"

#include <cstdint>

namespace {

// 16-bit stereo in chunks of 1500, 1500 and 2000 bytes: 1250 frames, with data at 312, 1820 and 3328.
Bytes threeChunks() {
    return soundFile(formatRecord({}), {Bytes(1500, 1), Bytes(1500, 2), Bytes(2000, 3)}, 1250);
}

class AudioLog : public LoggedSoundTest {
protected:
    SoundClip& clip() { return *m_clip; }

    void SetUp() override {
        LoggedSoundTest::SetUp();
        m_clip = std::make_unique<SoundClip>(session(), threeChunks());
    }
    void TearDown() override {
        m_clip.reset();
        LoggedSoundTest::TearDown();
    }

    void open(const Bytes& file) {
        m_clip.reset();
        m_clip = std::make_unique<SoundClip>(session(), file);
    }

private:
    std::unique_ptr<SoundClip> m_clip;
};

}  // namespace

TEST_F(AudioLog, OfARequestIsCompleteAndInOrder) {
    const Lines lines = logOf([&] { clip().audio(0, 1024, 2); });
    EXPECT_EQ(lines, (Lines{
                         "----------------------",
                         "[imImportAudio7] (25)",
                         "m_filePathUtf8: '" + hostkit::toUtf8(clip().path()) + "'",
                         "m_streamIndex:  0",
                         "importAudioRec7P->position: 0",
                         "m_audioPosition           : 0",
                         "startPos                  : 0",
                         "importAudioRec7P->size    : 1024",
                         "endPos                    : 1024",
                         "m_numAudioSampleFrames    : 1250",
                         "startPosBytes             : 0",
                         "sizeBytes                 : 4096",
                         "reading : 0, 312, 1500",
                         "reading : 1500, 1820, 1500",
                         "reading : 3000, 3328, 1096",
                         "fill    : 0",
                         "    [imNoErr] (0)",
                     }));
}

TEST_F(AudioLog, ShowsARequestThatBeginsAndEndsWithinChunks) {
    EXPECT_EQ(requestLog(clip(), 300, 700), (Lines{
                                                "importAudioRec7P->position: 300",
                                                "m_audioPosition           : 0",
                                                "startPos                  : 300",
                                                "importAudioRec7P->size    : 700",
                                                "endPos                    : 1000",
                                                "m_numAudioSampleFrames    : 1250",
                                                "startPosBytes             : 1200",
                                                "sizeBytes                 : 2800",
                                                "reading : 1200, 1512, 300",
                                                "reading : 1500, 1820, 1500",
                                                "reading : 3000, 3328, 1000",
                                                "fill    : 0",
                                            }));
}

TEST_F(AudioLog, ShowsOneReadIfOneChunkHoldsAll) {
    EXPECT_EQ(readingLog(clip(), 375, 375), (Lines{"reading : 1500, 1820, 1500", "fill    : 0"}));
}

TEST_F(AudioLog, ShowsWhereARequestContinues) {
    clip().audio(1000, 50, 2);
    EXPECT_EQ(requestLog(clip(), -1, 50), (Lines{
                                              "importAudioRec7P->position: -1",
                                              "m_audioPosition           : 1050",
                                              "startPos                  : 1050",
                                              "importAudioRec7P->size    : 50",
                                              "endPos                    : 1100",
                                              "m_numAudioSampleFrames    : 1250",
                                              "startPosBytes             : 4200",
                                              "sizeBytes                 : 200",
                                              "reading : 4200, 4528, 200",
                                              "fill    : 0",
                                          }));
}

TEST_F(AudioLog, ShowsPosition1500AndThen2000) {
    clip().audio(1000, 500, 2);
    EXPECT_EQ(requestLog(clip(), -1, 500).at(2), "startPos                  : 1500");
    EXPECT_EQ(requestLog(clip(), -1, 500).at(2), "startPos                  : 2000");
}

TEST_F(AudioLog, ShowsANegativePositionUnchanged) {
    const Lines lines = requestLog(clip(), INT64_MIN, 1);
    EXPECT_EQ(lines.at(0), "importAudioRec7P->position: -9223372036854775808");
    EXPECT_EQ(lines.at(2), "startPos                  : 0");
}

TEST_F(AudioLog, StartsAtZeroAfterTheStreamIsDescribedAgain) {
    clip().audio(1000, 50, 2);
    clip().session().info(SoundClip::kSoundStream);
    EXPECT_EQ(requestLog(clip(), -1, 1).at(2), "startPos                  : 0");
}

TEST_F(AudioLog, CountsTheBytesFilledAfterTheLastChunk) {
    EXPECT_EQ(readingLog(clip(), 1150, 200), (Lines{"reading : 4600, 4928, 400", "fill    : 400"}));
}

TEST_F(AudioLog, ShowsNoReadPastTheEnd) { EXPECT_EQ(readingLog(clip(), 1250, 10), Lines{"fill    : 40"}); }

TEST_F(AudioLog, OfARequestForNothingHasNoRead) {
    EXPECT_EQ(requestLog(clip(), 5, 0), (Lines{
                                            "importAudioRec7P->position: 5",
                                            "m_audioPosition           : 0",
                                            "startPos                  : 5",
                                            "importAudioRec7P->size    : 0",
                                            "endPos                    : 5",
                                            "m_numAudioSampleFrames    : 1250",
                                            "startPosBytes             : 20",
                                            "sizeBytes                 : 0",
                                            "fill    : 0",
                                        }));
}

TEST_F(AudioLog, OfTheFarthestPositionShowsWrappedSums) {
    EXPECT_EQ(requestLog(clip(), INT64_MAX, 1), (Lines{
                                                    "importAudioRec7P->position: 9223372036854775807",
                                                    "m_audioPosition           : 0",
                                                    "startPos                  : 9223372036854775807",
                                                    "importAudioRec7P->size    : 1",
                                                    "endPos                    : -9223372036854775808",
                                                    "m_numAudioSampleFrames    : 1250",
                                                    "startPosBytes             : -4",
                                                    "sizeBytes                 : 4",
                                                    "fill    : 4",
                                                }));
}

TEST_F(AudioLog, OfAFarPositionHas64BitValues) {
    const Lines lines = requestLog(clip(), 5000000000, 10);
    EXPECT_EQ(lines.at(4), "endPos                    : 5000000010");
    EXPECT_EQ(lines.at(6), "startPosBytes             : 20000000000");
}

TEST_F(AudioLog, OfAnUnsignedSizeShowsAllOfIt) {
    open(soundFile(formatRecord({aviwriter::SampleFormat::float32, 0}), {Bytes(40)}, 0xFFFFFFFF));
    EXPECT_EQ(requestLog(clip(), 1, 0xFFFFFFFF, 0), (Lines{
                                                        "importAudioRec7P->position: 1",
                                                        "m_audioPosition           : 0",
                                                        "startPos                  : 1",
                                                        "importAudioRec7P->size    : 4294967295",
                                                        "endPos                    : 4294967296",
                                                        "m_numAudioSampleFrames    : 4294967295",
                                                        "startPosBytes             : 0",
                                                        "sizeBytes                 : 0",
                                                        "fill    : 0",
                                                    }));
}

TEST_F(AudioLog, ShowsAnEmptyChunkBetweenTwoOthers) {
    open(soundFile(formatRecord({}), {Bytes(400), Bytes{}, Bytes(400)}, 200));
    EXPECT_EQ(readingLog(clip(), 0, 200), (Lines{"reading : 0, 312, 400", "reading : 400, 720, 0",
                                                 "reading : 400, 728, 400", "fill    : 0"}));
}

TEST_F(AudioLog, ShowsNoEmptyChunkAtTheStart) {
    open(soundFile(formatRecord({}), {Bytes(400), Bytes{}, Bytes(400)}, 200));
    EXPECT_EQ(readingLog(clip(), 100, 10), (Lines{"reading : 400, 728, 40", "fill    : 0"}));
}

// The index determines the order, not the position in the file.
TEST_F(AudioLog, FollowsTheIndexBackwardsThroughTheFile) {
    const std::uint64_t data = indexedDataPosition(2);
    ASSERT_EQ(data, 456u);
    open(indexedSoundFile({{data + 400, 400}, {data, 400}}, Bytes(800)));
    EXPECT_EQ(readingLog(clip(), 50, 100),
              (Lines{"reading : 200, 1056, 200", "reading : 400, 456, 200", "fill    : 0"}));
}

TEST_F(AudioLog, OfAnUndeliverableSoundHoldsNoValues) {
    open(soundFile(aviwriter::waveFormatEx({.bitsPerSample = 20}), {Bytes(40)}, 10));
    EXPECT_EQ(logOf([&] { clip().audio(0, 10, 2); }),
              (Lines{"----------------------", "[imImportAudio7] (25)",
                     "m_filePathUtf8: '" + hostkit::toUtf8(clip().path()) + "'", "m_streamIndex:  0",
                     "    [imNoErr] (0)"}));
}
