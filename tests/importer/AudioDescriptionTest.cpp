// The description of a file's sound: which formats are accepted, and their values in the host's record and in the log.
#include "importer/support/ImporterTest.h"

#include <algorithm>
#include <cstring>

using aviwriter::WaveFormat;
using hostkit::Answer;
using hostkit::ClipSession;

namespace {

constexpr csSDK_int32 kUntouchedLabel = 0x0DDBA115;

class AudioDescription : public ImporterTest {
protected:
    std::unique_ptr<ClipSession> clipWith(const Bytes& format, std::uint32_t length = 100) {
        return clipOf({shortVideo(), audioStream({.format = format, .length = length})});
    }

    // The file has two sounds, because then an invalid description is kept.
    std::unique_ptr<ClipSession> clipWithInvalid(const Bytes& format) {
        return clipOf({shortVideo(), audioStream({.format = format}), audioStream({})});
    }

    std::unique_ptr<ClipSession> clipOf(const std::vector<StreamSketch>& streams) {
        auto clip = std::make_unique<ClipSession>(session(), write("clip.avi", aviFile(streams)));
        EXPECT_EQ(clip->open().result, 0);
        return clip;
    }

    // The log of fetching the information of stream 0, from the construction of the sound on.
    Lines soundLog(ClipSession& clip) {
        const Lines lines = handlerLogOf([&] { clip.info(0); });
        const auto begin = std::find(lines.begin(), lines.end(), "AudioInfo::AudioInfo()");
        return {begin, lines.end()};
    }

    void expectRefused(const Bytes& format, const std::string& reason) {
        auto clip = clipWith(format);
        EXPECT_EQ(soundLog(*clip), (Lines{"AudioInfo::AudioInfo()", reason, "AudioInfo::~AudioInfo()"}));
        EXPECT_EQ(clip->info(0)->hasAudio, 0);
    }

    void expectSound(const Bytes& format, int channels, float rate, int type) {
        auto clip = clipWith(format);
        const auto info = clip->info(0);
        EXPECT_EQ(info->hasAudio, 1);
        EXPECT_EQ(info->audInfo.numChannels, channels);
        EXPECT_EQ(info->audInfo.sampleRate, rate);
        EXPECT_EQ(info->audInfo.sampleType, type);
        EXPECT_EQ(info->audDuration, 100);
    }

    std::vector<csSDK_int32> labelsOf(const Bytes& format, std::size_t count) {
        auto clip = clipWith(format);
        clip->info(0);
        const auto layout = clip->channelLayout(kUntouchedLabel);
        EXPECT_EQ(layout.result, 0);
        for (std::size_t slot = count; slot < layout.labels.size(); ++slot) {
            EXPECT_EQ(layout.labels[slot], kUntouchedLabel) << "slot " << slot;
        }
        return {layout.labels.begin(), layout.labels.begin() + static_cast<std::ptrdiff_t>(count)};
    }
};

Bytes withSubFormat(std::array<std::uint8_t, 16> guid) {
    return aviwriter::waveFormatExtensible({.subFormat = guid});
}

}  // namespace

// --- Accepted formats ---------------------------------------------------------------------------------------------

TEST_F(AudioDescription, Accepts16BytesWithoutASizeOfExtras) {
    const Bytes format = aviwriter::pcmWaveFormat({.channels = 2, .bitsPerSample = 16});
    ASSERT_EQ(format.size(), 16u);
    expectSound(format, 2, 48000.0f, 3);
}

TEST_F(AudioDescription, AcceptsEightBits) {
    expectSound(aviwriter::waveFormatEx({.bitsPerSample = 8}), 2, 48000.0f, 1);
}

TEST_F(AudioDescription, AcceptsSixteenBits) {
    expectSound(aviwriter::waveFormatEx({.channels = 1, .samplesPerSec = 44100}), 1, 44100.0f, 3);
}

TEST_F(AudioDescription, AcceptsTwentyFourBits) {
    expectSound(aviwriter::waveFormatEx({.bitsPerSample = 24}), 2, 48000.0f, 4);
}

TEST_F(AudioDescription, AcceptsThirtyTwoBits) {
    expectSound(aviwriter::waveFormatEx({.bitsPerSample = 32}), 2, 48000.0f, 5);
}

TEST_F(AudioDescription, AcceptsFloat) {
    expectSound(aviwriter::waveFormatEx({.formatTag = 3, .bitsPerSample = 32}), 2, 48000.0f, 6);
}

TEST_F(AudioDescription, AcceptsFloatBySubFormat) {
    expectSound(aviwriter::waveFormatExtensible({.formatTag = 3, .bitsPerSample = 32}), 2, 48000.0f, 6);
}

TEST_F(AudioDescription, AcceptsPcmBySubFormat) {
    expectSound(aviwriter::waveFormatExtensible({.bitsPerSample = 24}), 2, 48000.0f, 4);
}

TEST_F(AudioDescription, TreatsFloatOfSixteenBitsAsFloat) {
    expectSound(aviwriter::waveFormatEx({.formatTag = 3, .channels = 3, .bitsPerSample = 16}), 3, 48000.0f, 6);
}

TEST_F(AudioDescription, AcceptsThirtyTwoChannels) {
    expectSound(aviwriter::waveFormatEx({.channels = 32}), 32, 48000.0f, 3);
}

TEST_F(AudioDescription, AcceptsNoChannels) { expectSound(aviwriter::waveFormatEx({.channels = 0}), 0, 48000.0f, 3); }

TEST_F(AudioDescription, IgnoresWhatFollowsTheLongestFormat) {
    expectSound(aviwriter::join({aviwriter::waveFormatExtensible({.bitsPerSample = 24}), Bytes(100, 0xFF)}), 2,
                48000.0f, 4);
}

TEST_F(AudioDescription, AcceptsASizeOfExtrasThatTheFileLacks) {
    expectSound(aviwriter::waveFormatEx({.cbSize = std::uint16_t{0xFFFF}}), 2, 48000.0f, 3);
}

// --- Refused formats ----------------------------------------------------------------------------------------------

TEST_F(AudioDescription, RefusesFifteenBytes) {
    Bytes format = aviwriter::pcmWaveFormat({});
    format.resize(15);
    expectRefused(format, "Avi audio stream format size is too small: 15");
}

TEST_F(AudioDescription, RefusesAnEmptyFormat) {
    expectRefused({}, "Avi audio stream format size is too small: 0");
}

TEST_F(AudioDescription, RefusesAnotherTag) {
    expectRefused(aviwriter::waveFormatEx({.formatTag = 0x55}),
                  "Avi unsupported audio stream format: 00000055-0000-0010-8000-00aa00389b71");
}

TEST_F(AudioDescription, RefusesTheHighestTag) {
    expectRefused(aviwriter::waveFormatEx({.formatTag = 0xFFFF}),
                  "Avi unsupported audio stream format: 0000ffff-0000-0010-8000-00aa00389b71");
}

TEST_F(AudioDescription, RefusesAnotherSubFormat) {
    expectRefused(withSubFormat({0x78, 0x56, 0x34, 0x12, 0xBC, 0x9A, 0xF0, 0xDE, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06,
                                 0x07, 0x08}),
                  "Avi unsupported audio stream format: 12345678-9abc-def0-0102-030405060708");
}

TEST_F(AudioDescription, RefusesASubFormatWithAnotherLastByte) {
    expectRefused(withSubFormat({1, 0, 0, 0, 0, 0, 0x10, 0, 0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x72}),
                  "Avi unsupported audio stream format: 00000001-0000-0010-8000-00aa00389b72");
}

TEST_F(AudioDescription, RefusesAnExtensibleFormatWithoutASizeOfExtras) {
    expectRefused(aviwriter::waveFormatExtensible({.cbSize = std::uint16_t{0}}),
                  "Avi unsupported audio stream format: 00000000-0000-0000-0000-000000000000");
}

TEST_F(AudioDescription, RefusesThirtyThreeChannels) {
    expectRefused(aviwriter::waveFormatEx({.channels = 33}), "Avi too many audio channels: 33");
}

TEST_F(AudioDescription, RefusesTwentyBits) {
    expectRefused(aviwriter::waveFormatEx({.bitsPerSample = 20}), "Avi unsupported audio bits per sample: 20");
}

TEST_F(AudioDescription, RefusesABlockThatIsNotASampleFrame) {
    expectRefused(aviwriter::waveFormatEx({.blockAlign = std::uint16_t{6}}),
                  "Avi audio stream format error: nBlockAlign != nChannels * (wBitsPerSample / 8)");
}

TEST_F(AudioDescription, ChecksTheFormatBeforeTheChannels) {
    expectRefused(aviwriter::waveFormatEx({.formatTag = 2, .channels = 33, .bitsPerSample = 20}),
                  "Avi unsupported audio stream format: 00000002-0000-0010-8000-00aa00389b71");
}

TEST_F(AudioDescription, ChecksTheChannelsBeforeTheBits) {
    expectRefused(aviwriter::waveFormatEx({.channels = 33, .bitsPerSample = 20}), "Avi too many audio channels: 33");
}

TEST_F(AudioDescription, ChecksTheBitsBeforeTheBlock) {
    expectRefused(aviwriter::waveFormatEx({.blockAlign = std::uint16_t{1}, .bitsPerSample = 20}),
                  "Avi unsupported audio bits per sample: 20");
}

// --- Dump and substitute values -----------------------------------------------------------------------------------

TEST_F(AudioDescription, DumpsAValidFormat) {
    auto clip = clipWith(
        aviwriter::waveFormatExtensible({.samplesPerSec = 96000, .bitsPerSample = 24, .channelMask = 3}), 1234567);
    EXPECT_EQ(soundLog(*clip),
              (Lines{"AudioInfo::AudioInfo()", "Audio info:", "    wFormatTag:      65534",
                     "    format guid:     00000001-0000-0010-8000-00aa00389b71", "    nChannels:       2",
                     "    nSamplesPerSec:  96000", "    wBitsPerSample:  24", "    dwChannelMask:   0x3",
                     "    numSampleFrames: 1234567"}));
}

TEST_F(AudioDescription, DumpsAnInvalidFormatAsADummy) {
    auto clip = clipWithInvalid(aviwriter::waveFormatEx({.formatTag = 0x55, .channels = 6, .samplesPerSec = 22050}));
    EXPECT_EQ(soundLog(*clip),
              (Lines{"AudioInfo::AudioInfo()",
                     "Avi unsupported audio stream format: 00000055-0000-0010-8000-00aa00389b71",
                     "Audio is INVALID! Dummy:", "Audio info:", "    wFormatTag:      85",
                     "    format guid:     00000055-0000-0010-8000-00aa00389b71", "    nChannels:       6",
                     "    nSamplesPerSec:  22050", "    wBitsPerSample:  16", "    dwChannelMask:   0x0",
                     "    numSampleFrames: 100"}));
}

TEST_F(AudioDescription, TakesTheLengthInSampleFramesFromTheHeader) {
    EXPECT_EQ(clipWith(aviwriter::waveFormatEx({}), 0xFFFFFFFF)->info(0)->audDuration, 0xFFFFFFFFll);
}

TEST_F(AudioDescription, KeepsChannelsAndRateOfAnInvalidFormatWithinBounds) {
    const auto info =
        clipWithInvalid(aviwriter::waveFormatEx({.channels = 5, .samplesPerSec = 44100, .bitsPerSample = 20}))->info(0);
    EXPECT_EQ(info->audInfo.numChannels, 5);
    EXPECT_EQ(info->audInfo.sampleRate, 44100.0f);
    EXPECT_EQ(info->audInfo.sampleType, 14);
    EXPECT_EQ(info->audDuration, 0);
}

TEST_F(AudioDescription, LimitsAnInvalidFormatTo1ChannelAnd192000Hz) {
    const auto info =
        clipWithInvalid(aviwriter::waveFormatEx({.channels = 0, .samplesPerSec = 400000, .bitsPerSample = 20}))
            ->info(0);
    EXPECT_EQ(info->audInfo.numChannels, 1);
    EXPECT_EQ(info->audInfo.sampleRate, 192000.0f);
    EXPECT_EQ(info->audInfo.sampleType, 14);
    EXPECT_EQ(info->audDuration, 0);
}

TEST_F(AudioDescription, LimitsAnInvalidFormatTo32ChannelsAnd1000Hz) {
    const auto info =
        clipWithInvalid(aviwriter::waveFormatEx({.channels = 40, .samplesPerSec = 8, .bitsPerSample = 16}))->info(0);
    EXPECT_EQ(info->audInfo.numChannels, 32);
    EXPECT_EQ(info->audInfo.sampleRate, 1000.0f);
}

TEST_F(AudioDescription, TreatsAnInvalidFormatsHugeRateAsHigh) {
    const auto info =
        clipWithInvalid(aviwriter::waveFormatEx({.samplesPerSec = 0xFFFFFFFF, .bitsPerSample = 20}))->info(0);
    EXPECT_EQ(info->audInfo.sampleRate, 192000.0f);
}

// --- Channel layout -----------------------------------------------------------------------------------------------

TEST_F(AudioDescription, LabelsStereoLeftAndRight) {
    EXPECT_EQ(labelsOf(aviwriter::waveFormatEx({}), 2), (std::vector<csSDK_int32>{100, 101}));
}

TEST_F(AudioDescription, LabelsSixPlainChannelsFrom100To105) {
    EXPECT_EQ(labelsOf(aviwriter::waveFormatEx({.channels = 6}), 6),
              (std::vector<csSDK_int32>{100, 101, 102, 103, 104, 105}));
}

TEST_F(AudioDescription, LabelsNoneOfFourPlainChannels) { labelsOf(aviwriter::waveFormatEx({.channels = 4}), 0); }

TEST_F(AudioDescription, LabelsNoSinglePlainChannel) { labelsOf(aviwriter::waveFormatEx({.channels = 1}), 0); }

TEST_F(AudioDescription, LabelsEightChannelsByTheirMask) {
    EXPECT_EQ(labelsOf(aviwriter::waveFormatExtensible({.channels = 8, .channelMask = 0x63F}), 8),
              (std::vector<csSDK_int32>{100, 101, 102, 103, 104, 105, 109, 110}));
}

TEST_F(AudioDescription, LabelsEveryBitOfTheMask) {
    EXPECT_EQ(labelsOf(aviwriter::waveFormatExtensible({.channels = 32, .channelMask = 0xFFFFFFFF}), 32),
              (std::vector<csSDK_int32>{100, 101, 102, 103, 104, 105, 107, 108, 106, 109, 110, 111, 112, 114, 113, 115,
                                        117, 116, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(AudioDescription, LabelsNoMoreChannelsThanThereAre) {
    EXPECT_EQ(labelsOf(aviwriter::waveFormatExtensible({.channels = 2, .channelMask = 0x7}), 2),
              (std::vector<csSDK_int32>{100, 101}));
}

TEST_F(AudioDescription, LabelsNoMoreChannelsThanTheMaskNames) {
    EXPECT_EQ(labelsOf(aviwriter::waveFormatExtensible({.channels = 4, .channelMask = 0x4}), 1),
              (std::vector<csSDK_int32>{102}));
}

TEST_F(AudioDescription, LogsUnfilledLabelsOfTheLayoutUnchanged) {
    auto clip = clipWith(aviwriter::waveFormatExtensible({.channels = 3, .channelMask = 0x4}));
    clip->info(0);
    EXPECT_EQ(handlerLogOf([&] { clip->channelLayout(101); }),
              (Lines{"Audio channel layout (3 channels):", "    0: kPrAudioChannelLabel_FrontCenter",
                     "    1: kPrAudioChannelLabel_FrontRight", "    2: kPrAudioChannelLabel_FrontRight"}));
}

TEST_F(AudioDescription, OfAnInvalidFormatHasNoLayout) {
    auto clip = clipWithInvalid(aviwriter::waveFormatEx({.bitsPerSample = 20}));
    clip->info(0);
    const Lines lines = logOf([&] {
        const auto layout = clip->channelLayout(kUntouchedLabel);
        EXPECT_EQ(layout.result, 3);
        EXPECT_EQ(layout.labels, std::vector<csSDK_int32>(32, kUntouchedLabel));
    });
    EXPECT_EQ(lines, (Lines{"----------------------", "[imGetAudioChannelLayout] (64)",
                            "m_filePathUtf8: '<folder>/clip.avi'", "m_streamIndex:  0", "    [imUnsupported] (3)"}));
}
