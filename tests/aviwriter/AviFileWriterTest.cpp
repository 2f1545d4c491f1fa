#include "aviwriter/AviFileWriter.h"

#include <gtest/gtest.h>

#include <cstring>
#include <stdexcept>

using namespace aviwriter;

namespace {

std::uint64_t numberAt(const Bytes& file, std::size_t position, std::size_t size) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < size; ++i) {
        value |= std::uint64_t{file.at(position + i)} << (8 * i);
    }
    return value;
}

Bytes bytesAt(const Bytes& file, std::size_t position, std::size_t size) {
    const auto begin = file.begin() + static_cast<std::ptrdiff_t>(position);
    return {begin, begin + static_cast<std::ptrdiff_t>(size)};
}

// Position of the data of the n-th super index's i-th entry.
std::size_t superEntry(const Bytes& file, std::size_t n, std::size_t i) {
    return positionOf(file, "indx", n) + 8 + 24 + 16 * i;
}

VideoTrack smallVideo() {
    return {.width = 16, .height = 8, .rate = 30000, .scale = 1001, .handler = "abcd", .extraData = {1, 2, 3}};
}

AudioTrack monoSound() {
    return {.format = {.channels = 1, .samplesPerSec = 1000, .bitsPerSample = 16}};
}

MainHeader mainHeaderOfTwoFrames() {
    return {.microSecPerFrame = 33366, .maxBytesPerSec = 5 * 30000 / 1001 + 2000, .flags = 0x110, .totalFrames = 2,
            .streams = 2, .suggestedBufferSize = 5, .width = 16, .height = 8};
}

StreamHeader videoHeaderOfTwoFrames() {
    return {.handler = "abcd", .scale = 1001, .rate = 30000, .length = 2, .suggestedBufferSize = 5, .right = 16,
            .bottom = 8};
}

StreamHeader soundHeaderOfTwoSamples() {
    return {.type = "auds", .handler = std::string_view("\0\0\0\0", 4), .rate = 1000, .length = 2,
            .suggestedBufferSize = 4, .sampleSize = 2, .right = 0, .bottom = 0};
}

Bytes videoFormat() {
    return strf(bytesOf(BitmapInfo{.width = 16, .height = 8, .compression = "abcd", .sizeImage = 384}), {1, 2, 3});
}

Bytes soundFormat() {
    return strf(waveFormatEx({.channels = 1, .samplesPerSec = 1000, .bitsPerSample = 16}));
}

void writeTwoFramesAndSound(AviFileWriter& writer) {
    writer.writeVideo({1, 2, 3, 4, 5});
    writer.writeAudio(0, {6, 7, 8, 9});
    writer.writeVideo({});
    writer.finish();
}

TEST(AviFileWriter, AFileWithTheLegacyIndexHasExactlyTheseBytes) {
    MemorySink sink;
    AviFileWriter writer(sink, {.index = IndexKind::idx1}, smallVideo(), {monoSound()});
    writeTwoFramesAndSound(writer);
    EXPECT_EQ(sink.bytes(),
              riff("AVI ", {list("hdrl", {avih(mainHeaderOfTwoFrames()),
                                          list("strl", {strh(videoHeaderOfTwoFrames()), videoFormat()}),
                                          list("strl", {strh(soundHeaderOfTwoSamples()), soundFormat()})}),
                            list("movi", {chunk("00dc", {1, 2, 3, 4, 5}), chunk("01wb", {6, 7, 8, 9}),
                                          chunk("00dc", {})}),
                            idx1({{.chunkId = "00dc", .flags = 0x10, .offset = 4, .length = 5},
                                  {.chunkId = "01wb", .flags = 0x10, .offset = 18, .length = 4},
                                  {.chunkId = "00dc", .flags = 0, .offset = 30, .length = 0}})}));
}

TEST(AviFileWriter, AFileWithBothIndexesHasExactlyTheseBytes) {
    MemorySink sink;
    AviFileWriter writer(sink, {.index = IndexKind::both, .superIndexRoom = 2}, smallVideo(), {monoSound()});
    writeTwoFramesAndSound(writer);
    const std::uint64_t movi = positionOf(sink.bytes(), "movi") - 8;
    const auto super = [](std::string_view id, const SuperIndexEntry& entry) {
        return chunk("indx", bytesOf(SuperIndex{.chunkId = id, .entries = {entry}}) + filled(16));
    };
    EXPECT_EQ(sink.bytes(),
              riff("AVI ", {list("hdrl", {avih(mainHeaderOfTwoFrames()),
                                          list("strl", {strh(videoHeaderOfTwoFrames()), videoFormat(),
                                                        super("00dc", {movi + 12 + 34, 48, 2})}),
                                          list("strl", {strh(soundHeaderOfTwoSamples()), soundFormat(),
                                                        super("01wb", {movi + 12 + 34 + 48, 40, 2})}),
                                          odml(2)}),
                            list("movi", {chunk("00dc", {1, 2, 3, 4, 5}), chunk("01wb", {6, 7, 8, 9}),
                                          chunk("00dc", {}),
                                          ix("ix00", {.chunkId = "00dc", .baseOffset = movi,
                                                      .entries = {{20, 5}, {46, kNotKeyFrame}}}),
                                          ix("ix01", {.chunkId = "01wb", .baseOffset = movi, .entries = {{34, 4}}})}),
                            idx1({{.chunkId = "00dc", .flags = 0x10, .offset = 4, .length = 5},
                                  {.chunkId = "01wb", .flags = 0x10, .offset = 18, .length = 4},
                                  {.chunkId = "00dc", .flags = 0, .offset = 30, .length = 0}})}));
}

TEST(AviFileWriter, AnOpenDmlFileHasNoLegacyIndexAndDoesNotClaimOne) {
    MemorySink sink;
    AviFileWriter writer(sink, {.index = IndexKind::openDml}, smallVideo(), {});
    writer.writeVideo({1});
    writer.finish();
    EXPECT_THROW(positionOf(sink.bytes(), "idx1"), std::out_of_range);
    EXPECT_EQ(u32At(sink.bytes(), positionOf(sink.bytes(), "avih") + 8 + 12), 0x100U);
}

// Frames of 100 bytes, each filled with its number.
Bytes segmentedFile(const FileLayout& layout, std::size_t frames) {
    MemorySink sink;
    AviFileWriter writer(sink, layout, smallVideo(), {});
    for (std::size_t i = 0; i < frames; ++i) {
        writer.writeVideo(filled(100, static_cast<std::uint8_t>(i)));
    }
    writer.finish();
    return sink.bytes();
}

constexpr FileLayout kTinySegments = {.index = IndexKind::both, .segmentBytes = 400, .superIndexRoom = 8};

TEST(AviFileWriter, ASegmentStaysWithinItsLimit) {
    const Bytes file = segmentedFile(kTinySegments, 7);
    const std::size_t first = positionOf(file, "RIFF") + 8 + u32At(file, 4);
    ASSERT_EQ(bytesAt(file, first, 4), text("RIFF"));
    EXPECT_EQ(bytesAt(file, first + 8, 4), text("AVIX"));
    EXPECT_LE(u32At(file, first + 4) + 8, 400U);
}

TEST(AviFileWriter, SegmentsFollowOneAnotherToTheEndOfTheFile) {
    const Bytes file = segmentedFile(kTinySegments, 7);
    std::size_t position = 0;
    std::size_t segments = 0;
    for (; position < file.size(); ++segments) {
        ASSERT_EQ(bytesAt(file, position, 4), text("RIFF"));
        position += 8 + u32At(file, position + 4);
    }
    EXPECT_EQ(position, file.size());
    EXPECT_EQ(segments, 4U);   // 1 frame next to the headers, then 2, 2, 2
}

TEST(AviFileWriter, EverySegmentHasAnIndexThatLeadsToItsFrames) {
    const Bytes file = segmentedFile(kTinySegments, 7);
    ASSERT_EQ(u32At(file, positionOf(file, "indx") + 8 + 4), 4U);
    std::uint8_t frame = 0;
    for (std::size_t segment = 0; segment < 4; ++segment) {
        const std::size_t entry = superEntry(file, 0, segment);
        const auto index = static_cast<std::size_t>(numberAt(file, entry, 8));
        ASSERT_EQ(bytesAt(file, index, 4), text("ix00"));
        EXPECT_EQ(u32At(file, entry + 8), u32At(file, index + 4) + 8);
        const std::uint32_t count = u32At(file, index + 8 + 4);
        EXPECT_EQ(u32At(file, entry + 12), count);
        const auto base = static_cast<std::size_t>(numberAt(file, index + 8 + 12, 8));
        for (std::size_t i = 0; i < count; ++i, ++frame) {
            const std::size_t data = base + u32At(file, index + 8 + 24 + 8 * i);
            EXPECT_EQ(bytesAt(file, data - 8, 8), text("00dc") + u32(100));
            EXPECT_EQ(bytesAt(file, data, 100), filled(100, frame));
        }
    }
    EXPECT_EQ(frame, 7);
}

TEST(AviFileWriter, TheHeadersCountTheFirstSegmentTheStreamAndTheFile) {
    const Bytes file = segmentedFile(kTinySegments, 7);
    EXPECT_EQ(u32At(file, positionOf(file, "avih") + 8 + 16), 1U);
    EXPECT_EQ(u32At(file, positionOf(file, "strh") + 8 + 32), 7U);
    EXPECT_EQ(u32At(file, positionOf(file, "dmlh") + 8), 7U);
}

TEST(AviFileWriter, TheLegacyIndexCoversTheFirstSegmentOnly) {
    const Bytes file = segmentedFile(kTinySegments, 7);
    EXPECT_EQ(u32At(file, positionOf(file, "idx1") + 4), 16U);
    EXPECT_THROW(positionOf(file, "idx1", 1), std::out_of_range);
}

TEST(AviFileWriter, WithoutOpenDmlIndexesThereIsOneSegment) {
    const Bytes file = segmentedFile({.index = IndexKind::idx1, .segmentBytes = 400}, 7);
    EXPECT_EQ(u32At(file, 4) + 8, file.size());
    EXPECT_EQ(u32At(file, positionOf(file, "idx1") + 4), 7 * 16U);
}

TEST(AviFileWriter, MoreSegmentsThanTheSuperIndexHoldsAreRefused) {
    EXPECT_THROW(segmentedFile({.index = IndexKind::both, .segmentBytes = 400, .superIndexRoom = 3}, 7),
                 std::length_error);
}

TEST(AviFileWriter, AHoleBetweenSegmentsIsJunkOfItsSize) {
    MemorySink sink;
    AviFileWriter writer(sink, {.index = IndexKind::both, .superIndexRoom = 2}, smallVideo(), {});
    writer.writeVideo({1, 2});
    writer.startSegment(1001);
    writer.writeVideo({3, 4});
    writer.finish();
    const Bytes& file = sink.bytes();
    const std::size_t hole = 8 + u32At(file, 4);
    EXPECT_EQ(bytesAt(file, hole, 8), text("JUNK") + u32(1002 - 8));
    EXPECT_EQ(bytesAt(file, hole + 1002, 4), text("RIFF"));
    EXPECT_EQ(bytesAt(file, hole + 1002 + 24, 10), text("00dc") + u32(2) + Bytes({3, 4}));
}

TEST(AviFileWriter, WithTheLegacyIndexTheHoleLiesInsideTheOnlyMovi) {
    MemorySink sink;
    AviFileWriter writer(sink, {.index = IndexKind::idx1}, smallVideo(), {});
    writer.writeVideo({1, 2});
    writer.startSegment(1000);
    writer.writeVideo({3, 4});
    writer.finish();
    const Bytes& file = sink.bytes();
    EXPECT_EQ(u32At(file, positionOf(file, "idx1") + 8 + 16 + 8), 4 + 10 + 1000U);
    EXPECT_EQ(bytesAt(file, positionOf(file, "movi") + 4 + 10 + 1000, 10), text("00dc") + u32(2) + Bytes({3, 4}));
}

// Records the position of each write instead of its bytes, so that tests can write files beyond 4 GiB.
class PositionSink final : public ByteSink {
public:
    void write(std::uint64_t position, const Bytes& data) override {
        if (data.size() >= 4 && std::memcmp(data.data(), "JUNK", 4) == 0) {
            m_junkSizes.push_back(numberAt(data, 4, 4));
        }
        if (data.size() >= 4 && std::memcmp(data.data(), "ix00", 4) == 0) {
            m_indexes.push_back(data);
        }
        m_end = std::max(m_end, position + data.size());
    }

    std::vector<std::uint64_t> m_junkSizes;
    std::vector<Bytes> m_indexes;
    std::uint64_t m_end = 0;
};

TEST(AviFileWriter, AHoleBeyondFourGibIsCutIntoSeveralChunks) {
    PositionSink sink;
    AviFileWriter writer(sink, {.index = IndexKind::both, .superIndexRoom = 2}, smallVideo(), {});
    writer.writeVideo({1, 2});
    writer.startSegment((std::uint64_t{5} << 30) + 4);   // the last chunk would be too small for a header
    writer.writeVideo({3, 4});
    writer.finish();
    EXPECT_EQ(sink.m_junkSizes, (std::vector<std::uint64_t>{0x3FFFFFF8, 0x3FFFFFF8, 0x3FFFFFF8, 0x3FFFFFF8,
                                                            0x3FFFFFF0, 4}));
    ASSERT_EQ(sink.m_indexes.size(), 2U);
    EXPECT_GT(numberAt(sink.m_indexes[1], 8 + 12, 8), std::uint64_t{5} << 30);
}

TEST(AviFileWriter, ALegacyFileBeyondFourGibIsRefused) {
    PositionSink sink;
    AviFileWriter writer(sink, {.index = IndexKind::idx1}, smallVideo(), {});
    writer.startSegment(std::uint64_t{4} << 30);
    EXPECT_THROW(writer.writeVideo({1}), std::length_error);
}

TEST(AviFileWriter, AFileWithoutStreamsIsRefused) {
    MemorySink sink;
    EXPECT_THROW(AviFileWriter(sink, {}, std::nullopt, {}), std::invalid_argument);
}

TEST(AviFileWriter, SoundAloneIsStreamZero) {
    MemorySink sink;
    AviFileWriter writer(sink, {.index = IndexKind::idx1}, std::nullopt, {monoSound()});
    writer.writeAudio(0, {1, 2});
    writer.finish();
    EXPECT_EQ(bytesAt(sink.bytes(), positionOf(sink.bytes(), "movi") + 4, 4), text("00wb"));
}

TEST(AviFileWriter, TheTwelfthStreamHasTwoDigits) {
    MemorySink sink;
    AviFileWriter writer(sink, {.index = IndexKind::openDml, .superIndexRoom = 1}, smallVideo(),
                         std::vector<AudioTrack>(11, monoSound()));
    writer.writeAudio(10, {1, 2});
    writer.finish();
    EXPECT_NO_THROW(positionOf(sink.bytes(), "11wb"));
    EXPECT_NO_THROW(positionOf(sink.bytes(), "ix11"));
}

TEST(AviFileWriter, AllThreeSoundRecordsAreWrittenAtTheirSizes) {
    const auto formatSize = [](WaveRecord record) {
        MemorySink sink;
        AviFileWriter writer(sink, {}, std::nullopt, {{.format = {}, .record = record}});
        writer.finish();
        return u32At(sink.bytes(), positionOf(sink.bytes(), "strf") + 4);
    };
    EXPECT_EQ(formatSize(WaveRecord::pcm16), 16U);
    EXPECT_EQ(formatSize(WaveRecord::ex18), 18U);
    EXPECT_EQ(formatSize(WaveRecord::extensible40), 40U);
}

}  // namespace
