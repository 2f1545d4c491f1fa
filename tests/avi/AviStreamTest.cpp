#include "SampleFiles.h"
#include "support/FaultFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <stdexcept>

namespace {

using namespace aviwriter;
using samples::Parsed;

Parsed streamOfSizes(const std::vector<std::uint32_t>& sizes) {
    std::vector<Idx1Entry> entries;
    for (const std::uint32_t size : sizes) {
        entries.push_back({.length = size});
    }
    return Parsed(samples::idx1File({}, entries));
}

std::vector<std::uint8_t> extraDataOf(const StreamHeader& header, const Bytes& format) {
    Parsed parsed(riff("AVI ", {samples::hdrl({list("strl", {strh(header), strf(format)})})}));
    return parsed.stream(0).formatExtraData();
}

TEST(FormatExtraData, OfVideoBeginsAfter40Bytes) {
    EXPECT_EQ(extraDataOf({.type = "vids"}, filled(40) + u8(1) + u8(2)), (Bytes{1, 2}));
}

TEST(FormatExtraData, OfVideoIsEmptyAtExactly40Bytes) {
    EXPECT_EQ(extraDataOf({.type = "vids"}, filled(40, 9)), Bytes{});
}

TEST(FormatExtraData, OfVideoIsEmptyBelow40Bytes) {
    EXPECT_EQ(extraDataOf({.type = "vids"}, filled(39, 9)), Bytes{});
}

TEST(FormatExtraData, OfSoundBeginsAfter18Bytes) {
    EXPECT_EQ(extraDataOf({.type = "auds"}, filled(18) + u8(1) + u8(2)), (Bytes{1, 2}));
}

TEST(FormatExtraData, OfSoundIsEmptyAtExactly18Bytes) {
    EXPECT_EQ(extraDataOf({.type = "auds"}, filled(18, 9)), Bytes{});
}

TEST(FormatExtraData, OfAnyOtherTypeIsTheWholeFormat) {
    EXPECT_EQ(extraDataOf({.type = "txts"}, u8(1) + u8(2)), (Bytes{1, 2}));
}

TEST(AviStream, AChunkPastTheEndIsOutOfRange) {
    const Parsed parsed = streamOfSizes({1, 2});
    EXPECT_EQ(parsed.stream(0).chunk(1).size, 2u);
    EXPECT_THROW(parsed.stream(0).chunk(2), std::out_of_range);
}

TEST(AviStream, TotalBytesIsTheSumOfAllSizes) {
    EXPECT_EQ(streamOfSizes({4000, 0, 4000}).stream(0).totalBytes(), 8000u);
}

TEST(AviStream, TotalBytesOfAnEmptyListIsZero) {
    EXPECT_EQ(streamOfSizes({}).stream(0).totalBytes(), 0u);
}

TEST(FindChunkByBytePosition, GivesTheChunkThatHoldsTheByte) {
    const Parsed parsed = streamOfSizes({10, 20, 30});
    EXPECT_EQ(parsed.stream(0).findChunkByBytePosition(0), 0u);
    EXPECT_EQ(parsed.stream(0).findChunkByBytePosition(9), 0u);
    EXPECT_EQ(parsed.stream(0).findChunkByBytePosition(10), 1u);
    EXPECT_EQ(parsed.stream(0).findChunkByBytePosition(29), 1u);
    EXPECT_EQ(parsed.stream(0).findChunkByBytePosition(59), 2u);
}

TEST(FindChunkByBytePosition, FindsNothingFromTheEndOn) {
    const Parsed parsed = streamOfSizes({10, 20, 30});
    EXPECT_EQ(parsed.stream(0).findChunkByBytePosition(60), std::nullopt);
    EXPECT_EQ(parsed.stream(0).findChunkByBytePosition(INT64_MAX), std::nullopt);
}

TEST(FindChunkByBytePosition, FindsNothingInAnEmptyList) {
    EXPECT_EQ(streamOfSizes({}).stream(0).findChunkByBytePosition(0), std::nullopt);
}

TEST(FindChunkByBytePosition, FindsNothingAtANegativePosition) {
    const Parsed parsed = streamOfSizes({10});
    EXPECT_EQ(parsed.stream(0).findChunkByBytePosition(-1), std::nullopt);
    EXPECT_EQ(parsed.stream(0).findChunkByBytePosition(INT64_MIN), std::nullopt);
}

TEST(FindChunkByBytePosition, PassesOverEmptyChunks) {
    const Parsed parsed = streamOfSizes({4000, 0, 4000});
    EXPECT_EQ(parsed.stream(0).findChunkByBytePosition(4000), 2u);
    EXPECT_EQ(parsed.stream(0).findChunkByBytePosition(3999), 0u);
}

TEST(FindChunkByBytePosition, NeverGivesAnEmptyChunkAtTheEnds) {
    const Parsed parsed = streamOfSizes({0, 0, 5, 0});
    EXPECT_EQ(parsed.stream(0).findChunkByBytePosition(0), 2u);
    EXPECT_EQ(parsed.stream(0).findChunkByBytePosition(5), std::nullopt);
}

TEST(FindChunkByBytePosition, FindsNothingWhenAllChunksAreEmpty) {
    EXPECT_EQ(streamOfSizes({0, 0}).stream(0).findChunkByBytePosition(0), std::nullopt);
}

TEST(FindChunkByBytePosition, ReadsTheOpenDmlListWhenThatIsInUse) {
    Parsed parsed(samples::openDmlFile({{{10, 20}}}));
    EXPECT_EQ(parsed.stream(0).findChunkByBytePosition(8), 0u);
    EXPECT_EQ(parsed.stream(0).findChunkByBytePosition(10), 1u);
}

TEST(FindChunkByBytePosition, SearchesAcrossBlocksOfALongList) {
    Parsed parsed(samples::idx1File({}, std::vector<Idx1Entry>(140'000, {.length = 3})));
    for (const std::int64_t pos : {0, 196'607, 196'608, 196'610, 393'216, 419'999}) {
        EXPECT_EQ(parsed.stream(0).findChunkByBytePosition(pos), static_cast<std::size_t>(pos / 3)) << pos;
    }
    EXPECT_EQ(parsed.stream(0).findChunkByBytePosition(420'000), std::nullopt);
}

// Sound is read by following the list from the chunk that the lookup gives.
TEST(AviStream, BytesThatRunAcrossThreeChunksAreReadInThreeSteps) {
    const Bytes media = chunk("00wb", {0, 1, 2, 3}) + chunk("00wb", {4, 5}) + chunk("00wb", {6, 7, 8, 9});
    // In list order the second chunk of the file comes last.
    const Bytes bytes = riff("AVI ", {samples::hdrl({samples::audioStrl()}), list("movi", {media}),
                                      idx1({{.chunkId = "00wb", .offset = 4, .length = 4},
                                            {.chunkId = "00wb", .offset = 26, .length = 4},
                                            {.chunkId = "00wb", .offset = 16, .length = 2}})});
    Parsed parsed(bytes);
    fileio::FaultFile file(parsed.file);
    const AviStream& stream = parsed.stream(0);

    const std::int64_t start = 3;
    Bytes read(6);
    std::uint64_t done = 0;
    std::optional<std::size_t> found = stream.findChunkByBytePosition(start);
    ASSERT_TRUE(found.has_value());
    for (std::size_t i = *found; done < read.size() && i < stream.chunkCount(); ++i) {
        const AviChunk& piece = stream.chunk(i);
        const std::uint64_t inside = static_cast<std::uint64_t>(start) + done - piece.startByte;
        const std::uint64_t count = std::min<std::uint64_t>(read.size() - done, piece.size - inside);
        ASSERT_TRUE(file.seek(static_cast<std::int64_t>(piece.offset + inside)));
        done += file.read(read.data() + done, count);
    }
    EXPECT_EQ(read, (Bytes{3, 6, 7, 8, 9, 4}));
    EXPECT_EQ(file.reads().size(), 3u);
    EXPECT_EQ(file.seekCount(), 3u);
}

}  // namespace
