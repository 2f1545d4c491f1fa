// The host's Audio Suite converts integer samples; float samples need no help.
#include "audio/support/LoggedSoundTest.h"

using aviwriter::SampleFormat;

namespace {

struct Conversion {
    SampleFormat samples;
    const char* call;
};

constexpr Conversion kConversions[] = {
    {SampleFormat::pcm8, "Audio.UninterleaveAndConvertFrom8BitInteger(3 channels, 70 frames)"},
    {SampleFormat::pcm16, "Audio.UninterleaveAndConvertFrom16BitInteger(3 channels, 70 frames)"},
    {SampleFormat::pcm24, "Audio.UninterleaveAndConvertFrom24BitInteger(3 channels, 70 frames)"},
    {SampleFormat::pcm32, "Audio.UninterleaveAndConvertFrom32BitInteger(3 channels, 70 frames)"},
};

Bytes fileOf(const SoundFormat& format) { return soundFile(format, noise(format, 100), 64); }

hostkit::HostProfile hostWithoutAudioSuite() {
    hostkit::HostProfile profile = hostkit::hostProfiles().front();
    profile.refusedSuites.push_back({"Premiere Audio Suite"});
    return profile;
}

using AudioSuite = LoggedSoundTest;

class WithoutAudioSuite : public LoggedSoundTest {
protected:
    WithoutAudioSuite() : LoggedSoundTest(hostWithoutAudioSuite()) {}
};

}  // namespace

TEST_F(AudioSuite, IsCalledOncePerRequestForIntegers) {
    for (const Conversion& conversion : kConversions) {
        SoundClip clip(session(), fileOf({conversion.samples, 3}));
        host().calls().clear();
        host().calls().keepLines(true);
        clip.audio(10, 70, 3);
        EXPECT_EQ(host().calls().lines(), Lines{conversion.call});
        host().calls().keepLines(false);
    }
}

TEST_F(AudioSuite, IsNotCalledForFloat) {
    SoundClip clip(session(), fileOf({SampleFormat::float32, 3}));
    host().calls().clear();
    host().calls().keepLines(true);
    clip.audio(10, 70, 3);
    EXPECT_EQ(host().calls().lines(), Lines{});
}

TEST_F(AudioSuite, MayFailUnnoticed) {
    SoundClip clip(session(), fileOf({}));
    host().faults().fail(hostkit::HostCall::UninterleaveFrom16, 5);
    EXPECT_TRUE(holds(clip.audio(0, 20, 2), constantSound(hostkit::undeliveredSample(), 2, 20)));
}

TEST_F(WithoutAudioSuite, IntegersAreRefusedWithTheReason) {
    for (const Conversion& conversion : kConversions) {
        SoundClip clip(session(), fileOf({conversion.samples, 2}));
        const Lines lines = logOf([&] { EXPECT_EQ(clip.audio(0, 20, 2).result, 99); });
        EXPECT_EQ(lines.back(), "FATAL: Unhandled exception during [imImportAudio7] (25): Could not acquire suite: "
                                "'Premiere Audio Suite', ver: 1");
    }
}

TEST_F(WithoutAudioSuite, IntegersAreStillRead) {
    SoundClip clip(session(), soundFile({}, noise({}, 100), 400));
    clip.audio(0, 20, 2);
    const Lines lines = logOf([&] { clip.audio(-1, 20, 2); });
    EXPECT_EQ(lines.at(6), "startPos                  : 20");
    EXPECT_EQ(lines.at(12), "reading : 80, 392, 80");
}

TEST_F(WithoutAudioSuite, FloatIsDelivered) {
    const SoundFormat format = {SampleFormat::float32, 2};
    SoundClip clip(session(), fileOf(format));
    EXPECT_TRUE(holds(clip.audio(0, 100, 2), referenceSound(format, noise(format, 100), 0, 100)));
}
