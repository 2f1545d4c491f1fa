#include "aviwriter/Sample.h"
#include "makeavi/CommandLine.h"
#include "makeavi/Values.h"
#include "standin/Encoder.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <stdexcept>

using namespace aviwriter;

namespace {

std::uint32_t crcOf(const Bytes& bytes) {
    return static_cast<std::uint32_t>(crc32(0, bytes.data(), static_cast<uInt>(bytes.size())));
}

// dwLength of the n-th stream.
std::uint32_t lengthOf(const Bytes& file, std::size_t n) {
    return u32At(file, positionOf(file, "strh", n) + 8 + 32);
}

std::size_t countOf(const Bytes& file, std::string_view code) {
    std::size_t n = 0;
    try {
        for (;; ++n) {
            positionOf(file, code, n);
        }
    } catch (const std::out_of_range&) {
        return n;
    }
}

SampleOptions tiny() {
    SampleOptions options;
    options.width = 16;
    options.height = 16;
    options.frames = 4;
    options.layout.index = IndexKind::idx1;   // no index entries repeat the chunk ids within "movi"
    return options;
}

TEST(Sample, TheSameOptionsGiveTheSameBytesOnEverySystem) {
    SampleOptions options;
    options.type = 110;
    options.width = 128;
    options.height = 96;
    options.frames = 3;
    options.layout.segmentBytes = 20000;
    options.audio = {{.format = SampleFormat::float32, .channels = 6, .channelMask = 0x3F}};
    EXPECT_EQ(crcOf(sampleBytes(options)), 0x89BFF713U);   // depends on the picture, the sound and the codec's stream
}

TEST(Sample, DroppedFramesAreEmptyChunks) {
    SampleOptions options = tiny();
    options.dropped = {1};
    const Bytes file = sampleBytes(options);
    EXPECT_GT(u32At(file, positionOf(file, "00dc", 0) + 4), 0U);
    EXPECT_EQ(u32At(file, positionOf(file, "00dc", 1) + 4), 0U);
    EXPECT_GT(u32At(file, positionOf(file, "00dc", 2) + 4), 0U);
}

TEST(Sample, SoundLastsAsLongAsTheVideo) {
    SampleOptions options = tiny();
    options.rate = 30000;
    options.scale = 1001;
    options.audio = {{.sampleRate = 48000}, {.sampleRate = 44100}};
    const Bytes file = sampleBytes(options);
    EXPECT_EQ(lengthOf(file, 0), 4U);
    EXPECT_EQ(lengthOf(file, 1), 6406U);   // 4 * 1001 / 30000 s
    EXPECT_EQ(lengthOf(file, 2), 5885U);
}

TEST(Sample, ChunkedSoundHasAShortLastChunk) {
    SampleOptions options = tiny();
    options.audio = {{.format = SampleFormat::pcm8, .channels = 1, .sampleRate = 1000, .chunkFrames = 33}};
    const Bytes file = sampleBytes(options);   // 160 sample frames
    std::vector<std::uint32_t> sizes;
    const Bytes index(file.begin() + static_cast<std::ptrdiff_t>(positionOf(file, "idx1")), file.end());
    for (std::size_t n = 0; n < countOf(index, "01wb"); ++n) {
        sizes.push_back(u32At(index, positionOf(index, "01wb", n) + 12));
    }
    EXPECT_EQ(sizes, (std::vector<std::uint32_t>{33, 33, 33, 33, 28}));
}

TEST(Sample, EverySoundFormatIsDescribedAndWritten) {
    const auto formatOf = [](SampleFormat format) {
        SampleOptions options = tiny();
        options.hasVideo = false;
        options.audio = {{.format = format, .channels = 3, .sampleRate = 1000}};
        const Bytes file = sampleBytes(options);
        const auto begin = file.begin() + static_cast<std::ptrdiff_t>(positionOf(file, "strf") + 8);
        const std::uint32_t bytesOfFirstChunk = u32At(file, positionOf(file, "00wb") + 4);
        return std::pair(Bytes(begin, begin + 18), bytesOfFirstChunk);
    };
    const auto described = [](std::uint16_t tag, std::uint16_t bits) {
        return waveFormatEx({.formatTag = tag, .channels = 3, .samplesPerSec = 1000, .bitsPerSample = bits});
    };
    EXPECT_EQ(formatOf(SampleFormat::pcm8), std::pair(described(1, 8), 40 * 3U));
    EXPECT_EQ(formatOf(SampleFormat::pcm16), std::pair(described(1, 16), 40 * 6U));
    EXPECT_EQ(formatOf(SampleFormat::pcm24), std::pair(described(1, 24), 40 * 9U));
    EXPECT_EQ(formatOf(SampleFormat::pcm32), std::pair(described(1, 32), 40 * 12U));
    EXPECT_EQ(formatOf(SampleFormat::float32), std::pair(described(3, 32), 40 * 12U));
}

TEST(Sample, TheFirstChunkOfSoundHoldsTheTestSound) {
    SampleOptions options = tiny();
    options.audio = {{.channels = 2, .sampleRate = 1000}};
    const Bytes file = sampleBytes(options);
    const auto begin = file.begin() + static_cast<std::ptrdiff_t>(positionOf(file, "01wb") + 8);
    EXPECT_EQ(Bytes(begin, begin + 160), testSound(SampleFormat::pcm16, 2, 1000, 0, 40));
}

TEST(Sample, TheSecondSoundChunkContinuesTheFirst) {
    SampleOptions options = tiny();
    options.audio = {{.channels = 2, .sampleRate = 1000}};
    const Bytes file = sampleBytes(options);
    const auto begin = file.begin() + static_cast<std::ptrdiff_t>(positionOf(file, "01wb", 1) + 8);
    EXPECT_EQ(Bytes(begin, begin + 160), testSound(SampleFormat::pcm16, 2, 1000, 40, 40));
}

TEST(Sample, TheUsualRangeIsFullForRgbAndLimitedForYuv) {
    const auto extraDataOf = [](std::uint32_t type, std::optional<std::uint32_t> range) {
        SampleOptions options = tiny();
        options.type = type;
        options.range = range;
        const Bytes file = sampleBytes(options);
        const std::size_t strfAt = positionOf(file, "strf");
        const auto data = file.begin() + static_cast<std::ptrdiff_t>(strfAt + 8);
        return Bytes(data + 40, data + u32At(file, strfAt + 4));
    };
    EXPECT_EQ(extraDataOf(101, std::nullopt), extraDataOf(101, 2));
    EXPECT_NE(extraDataOf(101, std::nullopt), extraDataOf(101, 1));
    EXPECT_EQ(extraDataOf(104, std::nullopt), extraDataOf(104, 1));
    EXPECT_EQ(extraDataOf(104, std::nullopt), standin::encodeExtraData({104, 16, 16, 2, 1}));
}

TEST(Sample, TheHoleLiesBeforeTheSecondHalf) {
    SampleOptions options = tiny();
    options.layout.index = IndexKind::both;
    options.hole = 1000;
    const Bytes file = sampleBytes(options);
    EXPECT_EQ(u32At(file, positionOf(file, "avih") + 8 + 16), 2U);
    EXPECT_EQ(u32At(file, positionOf(file, "JUNK") + 4), 992U);
    EXPECT_EQ(lengthOf(file, 0), 4U);
}

TEST(MakeaviValues, AreReadAsWritten) {
    EXPECT_EQ(makeavi::parseSize("1920x1080"), std::pair(1920U, 1080U));
    EXPECT_EQ(makeavi::parseRate("25"), std::pair(25U, 1U));
    EXPECT_EQ(makeavi::parseRate("30000/1001"), std::pair(30000U, 1001U));
    EXPECT_EQ(makeavi::parseIndex("opendml"), IndexKind::openDml);
    EXPECT_EQ(makeavi::parseColor("601"), 1U);
    EXPECT_EQ(makeavi::parseRange("full"), 2U);
    EXPECT_EQ(makeavi::parseFrames("3,5-8"), (std::set<std::uint32_t>{3, 5, 6, 7, 8}));
    EXPECT_EQ(makeavi::parseBytes("100000"), 100000U);
    EXPECT_EQ(makeavi::parseBytes("64KB"), 65536U);
    EXPECT_EQ(makeavi::parseBytes("5GB"), std::uint64_t{5} << 30);
}

TEST(MakeaviValues, ASoundIsReadWithAllItsAttributes) {
    const SampleAudio audio = makeavi::parseAudio("float32:6:44100:mask=0x3f:chunk=100");
    EXPECT_EQ(audio.format, SampleFormat::float32);
    EXPECT_EQ(audio.channels, 6);
    EXPECT_EQ(audio.sampleRate, 44100U);
    EXPECT_EQ(audio.channelMask, 0x3FU);
    EXPECT_EQ(audio.chunkFrames, 100U);
    EXPECT_EQ(audio.record, WaveRecord::extensible40);
}

TEST(MakeaviValues, TheSoundHeaderCanBeChosen) {
    EXPECT_EQ(makeavi::parseAudio("pcm8:1:22050").record, WaveRecord::ex18);
    EXPECT_EQ(makeavi::parseAudio("pcm8:1:22050:header=16").record, WaveRecord::pcm16);
}

TEST(MakeaviValues, InvalidTextIsRefused) {
    for (const char* text : {"", "320", "0x10", "10x", "10x20x30", "16385x1", "10X20", "-1x5"}) {
        EXPECT_THROW(makeavi::parseSize(text), std::invalid_argument) << text;
    }
    for (const char* text : {"", "0", "25/0", "25/1/1", "25.0"}) {
        EXPECT_THROW(makeavi::parseRate(text), std::invalid_argument) << text;
    }
    for (const char* text : {"", "1,", "8-5", "1-2-3", "a", "0-4000000000"}) {
        EXPECT_THROW(makeavi::parseFrames(text), std::invalid_argument) << text;
    }
    for (const char* text : {"", "MB", "1TB", "-1", "5 GB"}) {
        EXPECT_THROW(makeavi::parseBytes(text), std::invalid_argument) << text;
    }
    for (const char* text : {"pcm16", "pcm12:2:48000", "pcm16:0:48000", "pcm16:33:48000", "pcm16:2:0",
                             "pcm16:2:48000:chunk=0", "pcm16:2:48000:mask", "pcm16:2:48000:header=17",
                             "pcm16:2:48000:"}) {
        EXPECT_THROW(makeavi::parseAudio(text), std::invalid_argument) << text;
    }
}

TEST(MakeaviCommandLine, OptionsReachTheSample) {
    const auto parsed = makeavi::parseCommandLine({"--type", "AR4Q", "--size", "64x48", "--audio", "pcm8:1:8000",
                                                   "--audio", "pcm16:2:48000", "--drop", "1", "-o", "out.avi"});
    ASSERT_TRUE(parsed.command.has_value());
    EXPECT_EQ(parsed.command->options.type, 114U);
    EXPECT_EQ(parsed.command->options.width, 64U);
    EXPECT_EQ(parsed.command->options.audio.size(), 2U);
    EXPECT_EQ(parsed.command->options.dropped, std::set<std::uint32_t>{1});
    EXPECT_EQ(parsed.command->output, "out.avi");
}

TEST(MakeaviCommandLine, AnInvalidLineIsAUsageError) {
    const auto parsed = makeavi::parseCommandLine({"--type", "XXXX", "-o", "out.avi"});
    EXPECT_FALSE(parsed.command.has_value());
    EXPECT_EQ(parsed.exitCode, 2);
}

TEST(MakeaviCommandLine, HelpIsNoError) {
    const auto parsed = makeavi::parseCommandLine({"--help"});
    EXPECT_FALSE(parsed.command.has_value());
    EXPECT_EQ(parsed.exitCode, 0);
}

}  // namespace
