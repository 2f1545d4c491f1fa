#include "SampleFiles.h"

#include <gtest/gtest.h>

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

TEST(FindChunkByBytePosition, FindsTheChunkThatHoldsTheByte) {
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

TEST(FindChunkByBytePosition, SkipsEmptyChunks) {
    const Parsed parsed = streamOfSizes({4000, 0, 4000});
    EXPECT_EQ(parsed.stream(0).findChunkByBytePosition(4000), 2u);
    EXPECT_EQ(parsed.stream(0).findChunkByBytePosition(3999), 0u);
}

TEST(FindChunkByBytePosition, NeverFindsAnEmptyChunkAtTheEnds) {
    const Parsed parsed = streamOfSizes({0, 0, 5, 0});
    EXPECT_EQ(parsed.stream(0).findChunkByBytePosition(0), 2u);
    EXPECT_EQ(parsed.stream(0).findChunkByBytePosition(5), std::nullopt);
}

TEST(FindChunkByBytePosition, FindsNothingWhenAllChunksAreEmpty) {
    EXPECT_EQ(streamOfSizes({0, 0}).stream(0).findChunkByBytePosition(0), std::nullopt);
}

TEST(FindChunkByBytePosition, UsesTheOpenDmlListIfItIsActive) {
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

}  // namespace
