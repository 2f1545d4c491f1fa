// Requests for sound that is missing or cannot be converted, and sound next to a picture.
#include "audio/support/LoggedSoundTest.h"

#include "importer/support/ClipSketch.h"

namespace {

using NoSound = LoggedSoundTest;
using SoundBesidePicture = LoggedSoundTest;

constexpr char kNoAudio[] = "FATAL: Unhandled exception during [imImportAudio7] (25): m_audioInfo is NULL";

Bytes invalidSound() { return aviwriter::waveFormatEx({.bitsPerSample = 20}); }

Bytes soundBesidePicture(const Bytes& first, const Bytes& second) {
    return aviFile({shortVideo(), audioStream({.length = 100, .chunks = cut(first, 100)}),
                    audioStream({.length = 100, .chunks = cut(second, 100)})});
}

}  // namespace

TEST_F(NoSound, InAVideoOnlyFileIsAnError) {
    SoundClip clip(session(), aviFile({shortVideo()}), 0);
    const Lines lines = logOf([&] { EXPECT_EQ(clip.audio(0, 20, 2).result, 99); });
    EXPECT_EQ(lines.back(), kNoAudio);
}

TEST_F(NoSound, InAVideoOnlyFileLeavesTheBuffers) {
    SoundClip clip(session(), aviFile({shortVideo()}), 0);
    hostkit::AudioAnswer answer = clip.audio(0, 20, 2);
    EXPECT_EQ(bitsOf(answer), constantSound(hostkit::undeliveredSample(), 2, 20));
}

TEST_F(NoSound, OfAPlainClipWhoseSoundIsInvalidIsAnError) {
    SoundClip clip(session(), aviFile({shortVideo(), audioStream({.format = invalidSound()})}), 0);
    const Lines lines = logOf([&] { EXPECT_EQ(clip.audio(0, 20, 2).result, 99); });
    EXPECT_EQ(lines.back(), kNoAudio);
}

TEST_F(NoSound, BeforeTheFileIsDescribedIsAnError) {
    SoundClip described(session(), soundFile({}, noise({}, 100), 100));
    hostkit::ClipSession clip(session(), described.path());
    clip.open();
    const Lines lines = logOf([&] { EXPECT_EQ(clip.audio(0, 20, 2).result, 99); });
    EXPECT_EQ(lines.back(), kNoAudio);
}

TEST_F(NoSound, WithoutABufferForEachChannelIsAnError) {
    SoundClip clip(session(), soundFile({}, noise({}, 100), 100));
    const Lines lines = logOf([&] { EXPECT_EQ(clip.audio(0, 20, 0).result, imOtherErr); });
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[lines.size() - 2], "importAudio: the host has no buffer for each channel");
    EXPECT_EQ(lines.back(), "    [imOtherErr] (5)");
    float left[20] = {};
    float* oneOfTwo[] = {left, nullptr};
    hostkit::HostRecord<imImportAudioRec7> record;
    record->privateData = clip.session().privateData();
    record->size = 20;
    record->buffer = oneOfTwo;
    EXPECT_EQ(session().exchange(imImportAudio7, std::move(record), nullptr).result, imOtherErr);
    EXPECT_EQ(left[0], 0.0F) << "nothing was written";
}

TEST_F(NoSound, ForAnEmptyRequestNeedsNoBuffers) {
    for (const aviwriter::SampleFormat samples : {aviwriter::SampleFormat::pcm16, aviwriter::SampleFormat::float32}) {
        for (const std::uint16_t channels : {std::uint16_t{1}, std::uint16_t{2}, std::uint16_t{5}}) {
            const SoundFormat format = {samples, channels};
            SoundClip clip(session(), soundFile(format, noise(format, 100), 100));
            EXPECT_EQ(clip.audio(0, 0, 0).result, imNoErr) << channels;
        }
    }
}

TEST_F(NoSound, OfAnInvalidStreamIsNoErrorAndLeavesTheBuffers) {
    SoundClip clip(session(), soundFile(invalidSound(), {Bytes(400, 1)}, 100));
    EXPECT_TRUE(holds(clip.audio(0, 20, 2), constantSound(hostkit::undeliveredSample(), 2, 20)));
}

TEST_F(NoSound, OfAMissingStreamLeavesTheBuffers) {
    SoundClip clip(session(), soundFile({}, noise({}, 100), 100));
    clip.session().info(2);
    EXPECT_TRUE(holds(clip.audio(0, 20, 2), constantSound(hostkit::undeliveredSample(), 2, 20)));
}

TEST_F(SoundBesidePicture, OfStream0IsTheFirst) {
    const Bytes first = noise({}, 100, 1);
    SoundClip clip(session(), soundBesidePicture(first, noise({}, 100, 2)), SoundClip::kSoundStream);
    clip.session().info(0);
    EXPECT_TRUE(holds(clip.audio(0, 100, 2), referenceSound({}, first, 0, 100)));
}

TEST_F(SoundBesidePicture, OfStream1IsTheSecond) {
    const Bytes second = noise({}, 100, 2);
    SoundClip clip(session(), soundBesidePicture(noise({}, 100, 1), second), SoundClip::kSoundStream);
    EXPECT_TRUE(holds(clip.audio(0, 100, 2), referenceSound({}, second, 0, 100)));
}

// Long recordings have several segments.
TEST_F(SoundBesidePicture, ContinuesThroughAllSegmentsOfAFile) {
    aviwriter::SampleOptions options;
    options.width = 32;
    options.height = 16;
    options.frames = 12;
    options.layout = {aviwriter::IndexKind::openDml, 20000, 16};
    options.audio = {{.format = aviwriter::SampleFormat::pcm24, .channels = 2, .sampleRate = 12000}};
    const Bytes file = aviwriter::sampleBytes(options);
    ASSERT_NO_THROW(aviwriter::positionOf(file, "AVIX", 1));
    SoundClip clip(session(), file, 0);
    const Bytes sound = aviwriter::testSound(aviwriter::SampleFormat::pcm24, 2, 12000, 0, 5760);
    const SoundFormat format = {aviwriter::SampleFormat::pcm24, 2};
    EXPECT_TRUE(holds(clip.audio(0, 5760, 2), referenceSound(format, sound, 0, 5760)));
}
