// The stream's extra data is checked field by field.
#include "StandinFixture.h"

#include <algorithm>
#include <stdexcept>

namespace standin::test {
namespace {

class ExtraData : public StandinTest {
protected:
    Result checked(std::size_t offset, std::vector<std::uint8_t> replacement) {
        Bytes bytes = encodeExtraData(stream(104, 640, 360));
        std::copy(replacement.begin(), replacement.end(), bytes.begin() + static_cast<std::ptrdiff_t>(offset));
        QuorvaneFormat output;
        return query(bytes, nullptr, output);
    }
};

TEST_F(ExtraData, HasTwentyEightBytesInAFixedOrder) {
    const Bytes expected = {'Q', 'S', 'X', '1',   1, 0, 0, 0,      // magic, version
                            104, 0, 0, 0,         0x80, 2, 0, 0,   // type, width
                            0x68, 1, 0, 0,        2, 0, 0, 0,      // height, colour space
                            1, 0, 0, 0};                           // range
    EXPECT_EQ(expected, encodeExtraData(stream(104, 640, 360, kRec709, kLimited)));
}

TEST_F(ExtraData, AnUnknownMagicIsRefused) { EXPECT_EQ(Result::kExtraDataMagic, checked(0, {'q'})); }
TEST_F(ExtraData, AnotherVersionIsRefused) { EXPECT_EQ(Result::kExtraDataVersion, checked(4, {2})); }
TEST_F(ExtraData, AnUnknownTypeIsRefused) { EXPECT_EQ(Result::kExtraDataType, checked(8, {117})); }
TEST_F(ExtraData, ADecodeTypeIsNoCompressedType) { EXPECT_EQ(Result::kExtraDataType, checked(8, {4})); }
TEST_F(ExtraData, AWidthOf0IsRefused) { EXPECT_EQ(Result::kExtraDataDimensions, checked(12, {0, 0})); }
TEST_F(ExtraData, AHeightOf0IsRefused) { EXPECT_EQ(Result::kExtraDataDimensions, checked(16, {0, 0})); }
TEST_F(ExtraData, AWidthOf16385IsRefused) { EXPECT_EQ(Result::kExtraDataDimensions, checked(12, {0x01, 0x40})); }
TEST_F(ExtraData, AHugeHeightIsRefused) { EXPECT_EQ(Result::kExtraDataDimensions, checked(16, {0, 0, 0, 0xFF})); }
TEST_F(ExtraData, AnUnknownColorSpaceIsRefused) { EXPECT_EQ(Result::kExtraDataColorSpace, checked(20, {3})); }
TEST_F(ExtraData, ColorSpace0IsRefused) { EXPECT_EQ(Result::kExtraDataColorSpace, checked(20, {0})); }
TEST_F(ExtraData, AnUnknownRangeIsRefused) { EXPECT_EQ(Result::kExtraDataRange, checked(24, {3})); }
TEST_F(ExtraData, Range0IsRefused) { EXPECT_EQ(Result::kExtraDataRange, checked(24, {0})); }

TEST_F(ExtraData, TheLargestAreaIsAcceptedAndOneMoreRowIsNot) {
    EXPECT_EQ(Result::kOk, checked(12, {0x00, 0x40, 0, 0, 0x00, 0x10}));                     // 16384 x 4096
    EXPECT_EQ(Result::kExtraDataDimensions, checked(12, {0x00, 0x40, 0, 0, 0x01, 0x10}));    // 16384 x 4097
}

TEST_F(ExtraData, EveryOtherSizeIsRefused) {
    const Bytes good = encodeExtraData(stream(104, 640, 360));
    for (std::size_t size = 0; size < 64; ++size) {
        Bytes bytes = good;
        bytes.resize(size);
        bytes.shrink_to_fit();
        QuorvaneFormat output;
        EXPECT_EQ(size == 28 ? Result::kOk : Result::kExtraDataSize, query(bytes, nullptr, output)) << size;
    }
}

TEST_F(ExtraData, IsCheckedByBeginToo) {
    const Bytes bytes(28, 0);
    const QuorvaneFormat wanted = request(4);
    QuorvaneFormat output = preparedOutput();
    EXPECT_EQ(0x80004102u, quorvane_decompress_begin(m_handle, bytes.data(), 28, &wanted, &output));
}

TEST_F(ExtraData, IsCheckedByTheEncoderToo) {
    EXPECT_THROW(encodeExtraData(stream(117, 4, 4)), std::invalid_argument);
    EXPECT_THROW(encodeExtraData(stream(104, 0, 4)), std::invalid_argument);
    EXPECT_THROW(encodeExtraData(stream(104, 4, 4, 3)), std::invalid_argument);
    EXPECT_THROW(encodeExtraData(stream(104, 4, 4, 1, 0)), std::invalid_argument);
}

}  // namespace
}  // namespace standin::test
