// Which requests a stream accepts, and the returned descriptions.
#include "StandinFixture.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace standin::test {
namespace {

class Request : public StandinTest {
protected:
    Result checked(const QuorvaneFormat& wanted) {
        QuorvaneFormat output;
        return query(encodeExtraData(stream(104, 640, 360)), &wanted, output);
    }
};

TEST_F(Request, EveryStreamAcceptsEveryDecodeType) {
    for (const std::uint32_t streamType : kStreamTypes) {
        for (const std::uint32_t type : kDecodeTypes) {
            for (const std::uint32_t colorSpace : {kRec601, kRec709}) {
                const QuorvaneFormat wanted = request(type, kQuorvaneFlip, colorSpace);
                QuorvaneFormat output;
                EXPECT_EQ(Result::kOk, query(encodeExtraData(stream(streamType, 640, 360)), &wanted, output))
                    << streamType << " to " << type;
            }
        }
    }
}

TEST_F(Request, NoOtherTypeNumberIsAccepted) {
    for (std::uint32_t type = 0; type < 200; ++type) {
        const bool isKnown = std::count(std::begin(kDecodeTypes), std::end(kDecodeTypes), type) == 1;
        EXPECT_EQ(isKnown ? Result::kOk : Result::kRequestType, checked(request(type))) << type;
    }
}

TEST_F(Request, TheFixedWordsMustBe254And1And0) {
    QuorvaneFormat wanted = request(4);
    wanted.word2 = 0;
    EXPECT_EQ(Result::kRequestWords, checked(wanted));
    wanted = request(4);
    wanted.word3 = 0;
    EXPECT_EQ(Result::kRequestWords, checked(wanted));
    wanted = request(4);
    wanted.word8 = 1;
    EXPECT_EQ(Result::kRequestWords, checked(wanted));
}

TEST_F(Request, DimensionsMustBe0) {
    QuorvaneFormat wanted = request(4);
    wanted.width = 640;
    EXPECT_EQ(Result::kRequestDimensions, checked(wanted));
    wanted = request(4);
    wanted.height = 360;
    EXPECT_EQ(Result::kRequestDimensions, checked(wanted));
}

TEST_F(Request, AnUnknownFlagIsRefused) { EXPECT_EQ(Result::kRequestFlags, checked(request(31, 4))); }

TEST_F(Request, OnlySixteenBitTypesScaleTo32768) {
    for (const std::uint32_t type : kDecodeTypes)
        EXPECT_EQ(type == 31 || type == 32 ? Result::kOk : Result::kRequestScale, checked(request(type, 2))) << type;
}

TEST_F(Request, UnknownColorSpacesAreRefused) {
    EXPECT_EQ(Result::kRequestColorSpace, checked(request(4, 0, 0)));
    EXPECT_EQ(Result::kRequestColorSpace, checked(request(2, 0, 3)));
}

TEST_F(Request, UnknownRangesAreRefused) {
    QuorvaneFormat wanted = request(4);
    wanted.range = 0;
    EXPECT_EQ(Result::kRequestRange, checked(wanted));
    wanted.range = 3;
    EXPECT_EQ(Result::kRequestRange, checked(wanted));
}

TEST_F(Request, RgbIsRefusedInLimitedRange) {
    QuorvaneFormat wanted = request(2);
    wanted.range = kLimited;
    EXPECT_EQ(Result::kRequestRgbRange, checked(wanted));
}

TEST_F(Request, YuvIsAcceptedInFullRange) {
    QuorvaneFormat wanted = request(4);
    wanted.range = kFull;
    EXPECT_EQ(Result::kOk, checked(wanted));
}

TEST_F(Request, WithoutOneTheAnswerDescribesTheStream) {
    QuorvaneFormat output;
    ASSERT_EQ(Result::kOk, query(encodeExtraData(stream(118, 641, 361, kRec601, kFull)), nullptr, output));
    EXPECT_EQ(641u, output.width);
    EXPECT_EQ(361u, output.height);
    EXPECT_EQ(254u, output.word2);
    EXPECT_EQ(1u, output.word3);
    EXPECT_EQ(118u, output.type);
    EXPECT_EQ(0u, output.flags);
    EXPECT_EQ(kRec601, output.colorSpace);
    EXPECT_EQ(kFull, output.range);
    EXPECT_EQ(65536u, output.word8);
}

TEST_F(Request, WithOneTheAnswerDescribesTheDeliveredFormat) {
    const QuorvaneFormat wanted = request(31, kQuorvaneFlip | kQuorvaneRange32768);
    QuorvaneFormat output;
    ASSERT_EQ(Result::kOk, query(encodeExtraData(stream(104, 641, 361, kRec601)), &wanted, output));
    EXPECT_EQ(641u, output.width);
    EXPECT_EQ(361u, output.height);
    EXPECT_EQ(254u, output.word2);
    EXPECT_EQ(1u, output.word3);
    EXPECT_EQ(31u, output.type);
    EXPECT_EQ(3u, output.flags);
    EXPECT_EQ(kRec709, output.colorSpace);
    EXPECT_EQ(kFull, output.range);
    EXPECT_EQ(65536u, output.word8);
}

TEST_F(Request, BeginAnswersAsTheQueryDoes) {
    const Bytes extraData = encodeExtraData(stream(104, 641, 361));
    const QuorvaneFormat wanted = request(5, kQuorvaneFlip, kRec601);
    QuorvaneFormat fromQuery = preparedOutput();
    QuorvaneFormat fromBegin = preparedOutput();
    ASSERT_EQ(0u, quorvane_decompress_query(m_handle, extraData.data(), 28, &wanted, &fromQuery));
    ASSERT_EQ(0u, quorvane_decompress_begin(m_handle, extraData.data(), 28, &wanted, &fromBegin));
    EXPECT_EQ(0, std::memcmp(&fromQuery, &fromBegin, sizeof fromQuery));
    EXPECT_EQ(5u, fromBegin.type);
}

TEST_F(Request, ARefusedOneLeavesTheOutputUnchanged) {
    const QuorvaneFormat wanted = request(3);
    const QuorvaneFormat before = preparedOutput();
    QuorvaneFormat output;
    ASSERT_EQ(Result::kRequestType, query(encodeExtraData(stream(104, 4, 4)), &wanted, output));
    EXPECT_EQ(0, std::memcmp(&before, &output, sizeof before));
}

}  // namespace
}  // namespace standin::test
