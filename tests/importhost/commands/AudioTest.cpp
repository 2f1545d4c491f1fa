// Sound as WAV files: the writer itself, and whole files of the plug-in's sound, byte by byte.
#include "importhost/Program.h"

#include "aviwriter/Blocks.h"
#include "aviwriter/TestSound.h"
#include "hostkit/sessions/Names.h"
#include "importhost/Sample.h"
#include "importhost/sound/WavFile.h"

#include <bit>

using programs::ProgramRun;
using programs::Sample;

namespace {

std::string bytesOf(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// Text and numbers, lowest byte first.
std::string little(std::uint32_t number, int bytes = 4) {
    std::string text;
    for (int i = 0; i < bytes; ++i) {
        text.push_back(static_cast<char>(static_cast<unsigned char>(number >> (8 * i))));
    }
    return text;
}

std::string wavHeader(std::uint32_t channels, std::uint32_t rate, std::uint32_t mask, std::uint32_t frames) {
    const std::uint32_t dataBytes = frames * channels * 4;
    return "RIFF" + little(72 + dataBytes) + "WAVE" +                                        //
           "fmt " + little(40) + little(0xFFFE, 2) + little(channels, 2) + little(rate) +    //
           little(rate * channels * 4) + little(channels * 4, 2) + little(32, 2) +           //
           little(22, 2) + little(32, 2) + little(mask) +                                    //
           std::string("\x03\x00\x00\x00\x00\x00\x10\x00\x80\x00\x00\xAA\x00\x38\x9B\x71", 16) +
           "fact" + little(4) + little(frames) +                                             //
           "data" + little(dataBytes);
}

// The test sound as the host's samples: each integer cut off to the format's bits and divided by its full scale.
std::string expectedSamples(int bits, std::uint16_t channels, std::uint32_t rate, std::uint32_t first,
                            std::uint32_t count) {
    std::string bytes;
    for (std::uint32_t frame = first; frame < first + count; ++frame) {
        for (std::uint16_t channel = 0; channel < channels; ++channel) {
            const std::int32_t cut = aviwriter::testSample(channel, frame, rate) >> (32 - bits);
            const double scale = static_cast<double>(std::int64_t{1} << (bits - 1));
            bytes += little(std::bit_cast<std::uint32_t>(static_cast<float>(cut / scale)));
        }
    }
    return bytes;
}

struct Written {
    ProgramRun run;
    std::string bytes;
};

Written write(const Sample& sample, std::vector<std::string> options) {
    const auto path = sample.beside("sound.wav");
    std::vector<std::string> arguments = {"audio", sample.text(), "-o", hostkit::toUtf8(path)};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const ProgramRun run = programs::runImporthost(arguments);
    return {run, bytesOf(path)};
}

TEST(SpeakerMask, OfStereoIsThree) {
    EXPECT_EQ(importhost::speakerMaskOf({kPrAudioChannelLabel_FrontLeft, kPrAudioChannelLabel_FrontRight}), 3u);
}

TEST(SpeakerMask, HasABitForEverySpeakerInWavOrder) {
    const std::vector<csSDK_int32> all = {100, 101, 102, 103, 104, 105, 107, 108, 106,
                                          109, 110, 111, 112, 114, 113, 115, 117, 116};
    EXPECT_EQ(importhost::speakerMaskOf(all), 0x3FFFFu);
    EXPECT_EQ(importhost::speakerMaskOf({kPrAudioChannelLabel_BackCenter}), 0x100u);
    EXPECT_EQ(importhost::speakerMaskOf({kPrAudioChannelLabel_TopFrontCenter}), 0x2000u);
    EXPECT_EQ(importhost::speakerMaskOf({kPrAudioChannelLabel_TopBackRight}), 0x20000u);
}

TEST(SpeakerMask, IsZeroForDiscreteChannels) {
    EXPECT_EQ(importhost::speakerMaskOf({kPrAudioChannelLabel_Discrete, kPrAudioChannelLabel_Discrete}), 0u);
    EXPECT_EQ(importhost::speakerMaskOf({kPrAudioChannelLabel_FrontLeft, kPrAudioChannelLabel_Discrete}), 0u);
    EXPECT_EQ(importhost::speakerMaskOf({}), 0u);
}

TEST(SpeakerMask, IsZeroForAnotherOrderOrARepeatedSpeaker) {
    EXPECT_EQ(importhost::speakerMaskOf({kPrAudioChannelLabel_FrontRight, kPrAudioChannelLabel_FrontLeft}), 0u);
    EXPECT_EQ(importhost::speakerMaskOf({kPrAudioChannelLabel_FrontLeft, kPrAudioChannelLabel_FrontLeft}), 0u);
}

TEST(WavFile, InterleavesChannelsAndHasItsSizes) {
    const fakes::TemporaryFile file(u8"two.wav", "");
    importhost::WavFile wav(file.path(), {2, 48000, 3}, 3);
    wav.write({{0.5f, -1.0f}, {0.25f, 2.0f}});
    wav.write({{0.0f}, {1.0f}});
    wav.finish();
    EXPECT_EQ(bytesOf(file.path()), wavHeader(2, 48000, 3, 3) + little(0x3F000000) + little(0x3E800000) +
                                        little(0xBF800000) + little(0x40000000) + little(0) + little(0x3F800000));
}

TEST(WavFile, ReportsAFileThatCannotBeCreated) {
    EXPECT_THROW(importhost::WavFile("no-such-folder/two.wav", {2, 48000, 3}, 3), std::runtime_error);
}

TEST(WavFile, AnUnfinishedFileIsRemoved) {
    const fakes::TemporaryFile file(u8"two.wav", "");
    importhost::WavFile(file.path(), {2, 48000, 3}, 3).write({{0.5f, -1.0f}, {0.25f, 2.0f}});
    EXPECT_FALSE(std::filesystem::exists(file.path()));
}

// Sizes of 32 bits hold 1073741805 mono sample frames and the header; one more makes an RF64 file.
TEST(WavFile, Beyond4GiBIsRf64) {
    EXPECT_EQ(importhost::wavHeader({1, 48000, 4}, 1073741805), wavHeader(1, 48000, 4, 1073741805));
    const std::string small = wavHeader(1, 48000, 4, 0);
    const std::string unknown = little(0xFFFFFFFF);
    EXPECT_EQ(importhost::wavHeader({1, 48000, 4}, 1073741806),
              "RF64" + unknown + "WAVE" +                                                       //
                  "ds64" + little(28) + little(36) + little(1) +                                // 108 and the data,
                  little(0xFFFFFFB8) + little(0) +                                              // 2^32 - 72 bytes
                  little(1073741806) + little(0) + little(0) +                                  //
                  small.substr(12, 48) +                                                        // the format
                  "fact" + little(4) + unknown + "data" + unknown);
}

TEST(Audio, SixteenBitSoundIsWrittenWhole) {
    const Sample sample({"--size", "32x16", "--frames", "3", "--audio", "pcm16:2:48000"});
    const Written written = write(sample, {});
    EXPECT_EQ(written.run.exitCode, 0) << written.run.errors;
    EXPECT_EQ(written.run.errors, "");
    EXPECT_EQ(written.bytes, wavHeader(2, 48000, 3, 5760) + expectedSamples(16, 2, 48000, 0, 5760));
}

TEST(Audio, TheSecondStreamsSixChannelsKeepTheirSpeakers) {
    const Sample sample({"--size", "32x16", "--frames", "2", "--audio", "pcm16:2:48000", "--audio",
                         "pcm24:6:44100:mask=0x3f"});
    const Written written = write(sample, {"--stream", "1"});
    EXPECT_EQ(written.run.exitCode, 0) << written.run.errors;
    EXPECT_EQ(written.bytes, wavHeader(6, 44100, 0x3F, 3528) + expectedSamples(24, 6, 44100, 0, 3528));
}

TEST(Audio, FloatSoundIsWrittenBitForBit) {
    const Sample sample({"--size", "32x16", "--frames", "2", "--audio", "float32:2:48000:mask=0x3"});
    const aviwriter::Bytes sound = aviwriter::testSound(aviwriter::SampleFormat::float32, 2, 48000, 0, 3840);
    EXPECT_EQ(write(sample, {}).bytes, wavHeader(2, 48000, 3, 3840) + std::string(sound.begin(), sound.end()));
}

TEST(Audio, ARangeHasJustItsSamples) {
    const Sample sample({"--size", "32x16", "--frames", "3", "--audio", "pcm16:2:48000:mask=0x3"});
    EXPECT_EQ(write(sample, {"--range", "1000-1999"}).bytes,
              wavHeader(2, 48000, 3, 1000) + expectedSamples(16, 2, 48000, 1000, 1000));
}

TEST(Audio, TheSizeOfBlocksChangesNothing) {
    const Sample sample({"--size", "32x16", "--frames", "2", "--audio", "pcm8:3:8000:mask=0x7"});
    const std::string whole = write(sample, {}).bytes;
    EXPECT_EQ(whole, wavHeader(3, 8000, 7, 640) + expectedSamples(8, 3, 8000, 0, 640));
    EXPECT_EQ(write(sample, {"--block", "7"}).bytes, whole);
}

TEST(Audio, ARangeBeyondTheEndIsAUsageError) {
    const Sample sample({"--size", "32x16", "--frames", "1", "--audio", "pcm16:2:48000"});
    const ProgramRun run = write(sample, {"--range", "1000-1920"}).run;
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.errors, "importhost: The sound has 1920 sample frames, counted from 0.\n");
}

TEST(Audio, AMissingStreamIsAUsageError) {
    const Sample sample({"--size", "32x16", "--frames", "1", "--audio", "pcm16:2:48000"});
    const ProgramRun run = write(sample, {"--stream", "4"}).run;
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.errors, "importhost: '" + sample.text() + "' has 1 stream, counted from 0.\n");
}

TEST(Audio, AClipWithoutSoundFails) {
    const Sample sample({"--size", "32x16", "--frames", "1"});
    const ProgramRun run = write(sample, {}).run;
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.errors, "importhost: '" + sample.text() + "' has no sound in stream 0.\n");
}

// Alone the sound makes a silent clip, with other streams beside it a stream of silence.
TEST(Audio, ThatThePluginDoesNotTakeIsNamed) {
    const struct {
        std::size_t at;         // in the format
        aviwriter::Bytes bytes;
        const char* name;
    } rows[] = {
        {0, aviwriter::u16(0x0055), "MP3 (0x0055), 2 channels, 48000 Hz, 16 bits"},
        {0, aviwriter::u16(0x1234), "format 0x1234, 2 channels, 48000 Hz, 16 bits"},
        {14, aviwriter::u16(12), "PCM (0x0001), 2 channels, 48000 Hz, 12 bits"},
    };
    for (const auto& [at, bytes, name] : rows) {
        for (const std::vector<std::string>& more : {std::vector<std::string>{}, {"--audio", "pcm16:1:8000"}}) {
            std::vector<std::string> options = {"--size", "32x16", "--frames", "1", "--audio", "pcm16:2:48000"};
            options.insert(options.end(), more.begin(), more.end());
            const Sample sample(options);
            std::string content = bytesOf(sample.path());
            const std::size_t format = content.find("strf", content.find("strf") + 4) + 8;
            content.replace(format + at, bytes.size(), std::string(bytes.begin(), bytes.end()));
            std::ofstream(sample.path(), std::ios::binary) << content;
            const Written written = write(sample, {});
            EXPECT_EQ(written.run.exitCode, 1);
            EXPECT_EQ(written.run.errors, "importhost: '" + sample.text() + "' has sound in stream 0 that the plug-in "
                                          "does not take: " + name + ".\n");
            EXPECT_EQ(written.bytes, "");
        }
    }
}

TEST(Audio, ABufferThatIsOverrunFailsTheRun) {
    const fakes::FakeClip clip("overrun-sound");
    const auto path = clip.path().parent_path() / "sound.wav";
    const ProgramRun run =
        programs::withFake({"audio", hostkit::toUtf8(clip.path()), "-o", hostkit::toUtf8(path), "--range", "0-9"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.errors, "importhost: A channel buffer of 10 samples was overrun.\n"
                          "importhost: A channel buffer of 10 samples was overrun.\n");
}

}  // namespace
