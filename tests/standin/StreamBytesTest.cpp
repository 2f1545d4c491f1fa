// Frames byte by byte, and refusals of the encoder.
#include "StandinFixture.h"

#include "standin/Bytes.h"

#include <stdexcept>
#include <zlib.h>

namespace standin::test {
namespace {

Bytes inflated(const Bytes& frame, std::size_t offset, std::size_t size) {
    Bytes bytes(size);
    uLongf written = static_cast<uLongf>(size);
    EXPECT_EQ(Z_OK, uncompress(bytes.data(), &written, &frame.at(offset), static_cast<uLong>(frame.size() - offset)));
    EXPECT_EQ(size, written);
    return bytes;
}

Picture grey(const StreamInfo& info, const std::vector<std::uint16_t>& samples) {
    Picture picture = makePicture(info);
    picture.planes[0].samples = samples;
    return picture;
}

TEST(StreamBytes, AFrameBeginsWithItsHeader) {
    const StreamInfo info = stream(104, 640, 2);
    const Bytes frame = encodeFrame(info, makePicture(info));
    EXPECT_EQ((Bytes{'Q', 'S', 'F', '1'}), Bytes(frame.begin(), frame.begin() + 4));
    EXPECT_EQ(frame.size(), load32(&frame[4]));
    EXPECT_EQ((Bytes{104, 0, 3, 0, 0x80, 2, 2, 0}), Bytes(frame.begin() + 8, frame.begin() + 16));
    EXPECT_EQ(frame.size(), 28 + load32(&frame[16]) + load32(&frame[20]) + load32(&frame[24]));
}

TEST(StreamBytes, EightBitResidualsAreFoldedDifferences) {
    const StreamInfo info = stream(107, 3, 2);
    // 130-128, 131-130, 129-131; first of the second row against the one above; wrapping 0-255 and 255-0
    const Bytes frame = encodeFrame(info, grey(info, {130, 131, 129, 255, 0, 255}));
    EXPECT_EQ((Bytes{4, 2, 3, 250, 2, 1}), inflated(frame, 20, 6));
}

TEST(StreamBytes, DeeperResidualsAreLowBytesThenHighBytes) {
    const StreamInfo info = stream(115, 2, 2);
    const Bytes frame = encodeFrame(info, grey(info, {1023, 511, 1023, 0}));
    // 511 -> 1022, -512 -> 1023, 0, 1 (wrapped) -> 2
    EXPECT_EQ((Bytes{0xFE, 0xFF, 0, 2, 3, 3, 0, 0}), inflated(frame, 20, 8));
}

TEST(StreamBytes, EncodingIsDeterministic) {
    const StreamInfo info = stream(114, 33, 17);
    EXPECT_EQ(encodeFrame(info, randomPicture(info, 4)), encodeFrame(info, randomPicture(info, 4)));
}

TEST(StreamBytes, SubsampledPlanesAreRoundedUp) {
    const Picture picture = makePicture(stream(105, 7, 5));
    ASSERT_EQ(3u, picture.planes.size());
    EXPECT_EQ(7u, picture.planes[0].width);
    EXPECT_EQ(4u, picture.planes[1].width);
    EXPECT_EQ(3u, picture.planes[2].height);
    EXPECT_EQ(12u, picture.planes[2].samples.size());
}

TEST(StreamBytes, LayoutsOfTheTypes) {
    EXPECT_EQ(1u, typeLayout(107).planeCount);
    EXPECT_EQ(4u, typeLayout(106).planeCount);
    EXPECT_TRUE(typeLayout(106).alpha);
    EXPECT_FALSE(typeLayout(106).rgb);
    EXPECT_EQ(14u, typeLayout(114).bitDepth);
    EXPECT_EQ(2u, typeLayout(105).ySubsampling);
    EXPECT_EQ(1u, typeLayout(108).ySubsampling);
    EXPECT_THROW(typeLayout(116), std::invalid_argument);
}

TEST(StreamBytes, ThePictureMustHaveTheStreamsShape) {
    const StreamInfo info = stream(104, 8, 8);
    EXPECT_THROW(encodeFrame(info, makePicture(stream(103, 8, 8))), std::invalid_argument);
    EXPECT_THROW(encodeFrame(info, makePicture(stream(107, 8, 8))), std::invalid_argument);
    Picture shortPlane = makePicture(info);
    shortPlane.planes[1].samples.pop_back();
    EXPECT_THROW(encodeFrame(info, shortPlane), std::invalid_argument);
}

TEST(StreamBytes, ASampleWithTooManyBitsIsRefused) {
    const StreamInfo info = stream(115, 2, 2);
    EXPECT_NO_THROW(encodeFrame(info, grey(info, {0, 0, 0, 1023})));
    EXPECT_THROW(encodeFrame(info, grey(info, {0, 0, 0, 1024})), std::invalid_argument);
}

}  // namespace
}  // namespace standin::test
