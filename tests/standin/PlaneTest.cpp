// The positions of rows in the buffer, and refused buffers.
#include "StandinFixture.h"

#include <algorithm>

namespace standin::test {
namespace {

class Planes : public StandinTest {
protected:
    StreamInfo m_info = stream(104, 7, 3);
    Picture m_picture = randomPicture(m_info, 5);
    Bytes m_frame = encodeFrame(m_info, m_picture);

    Result decompressInto(const std::vector<QuorvanePlane>& planes) {
        EXPECT_EQ(Result::kOk, begin(m_info, request(4)));
        return Result{quorvane_decompress(m_handle, m_frame.data(), static_cast<std::uint32_t>(m_frame.size()),
                                          planes.data())};
    }
};

TEST_F(Planes, FlipDeliversTheBottomRowFirst) {
    for (const std::uint32_t type : kDecodeTypes) {
        const std::uint32_t rowBytes = neededRowBytes(type, 7);
        const Bytes upright = decoded(m_info, m_picture, request(type));
        const Bytes flipped = decoded(m_info, m_picture, request(type, kQuorvaneFlip));
        Bytes expected;
        for (std::ptrdiff_t y = 2; y >= 0; --y)
            expected.insert(expected.end(), upright.begin() + y * rowBytes, upright.begin() + (y + 1) * rowBytes);
        EXPECT_EQ(expected, flipped) << type;
    }
}

TEST_F(Planes, BytesBetweenRowsAreLeftAlone) {
    for (const std::uint32_t type : kDecodeTypes) {
        const std::uint32_t needed = neededRowBytes(type, 7);
        const Bytes tight = decoded(m_info, m_picture, request(type));
        for (const std::uint32_t gap : {1u, 5u, 128u}) {
            Buffer buffer(needed + gap, 3);
            ASSERT_EQ(Result::kOk, begin(m_info, request(type)));
            ASSERT_EQ(Result::kOk, decompress(m_frame, buffer));
            ASSERT_EQ(Result::kOk, end());
            for (std::uint32_t y = 0; y < 3; ++y) {
                const auto first = tight.begin() + std::ptrdiff_t{y} * needed;
                Bytes expected(first, first + needed);
                expected.resize(needed + gap, 0xCD);
                EXPECT_EQ(expected, buffer.row(y, needed + gap)) << type << ", row " << y;
            }
        }
    }
}

TEST_F(Planes, EveryNeededByteIsWritten) {
    // Black contains no 0xCD, in RGB and in YUV, so any 0xCD was not written.
    const StreamInfo info = stream(107, 7, 3);
    const Picture black = flatPicture(info, {16});
    for (const std::uint32_t type : kDecodeTypes) {
        const Bytes bytes = decoded(info, black, request(type));
        EXPECT_EQ(0, std::count(bytes.begin(), bytes.end(), 0xCD)) << type;
    }
}

TEST_F(Planes, APlaneWithoutPaddingIsEnough) {
    Buffer buffer(16, 3);
    EXPECT_EQ(Result::kOk, decompressInto(buffer.planes()));
}

TEST_F(Planes, OneWithoutAddressIsRefused) {
    Buffer buffer(16, 3);
    auto planes = buffer.planes();
    planes[0].address = 0;
    EXPECT_EQ(Result::kPlaneAddress, decompressInto(planes));
}

TEST_F(Planes, TooFewRowBytesAreRefused) {
    for (const std::uint32_t type : kDecodeTypes) {
        Buffer buffer(neededRowBytes(type, 7) - 1, 4);
        ASSERT_EQ(Result::kOk, begin(m_info, request(type)));
        EXPECT_EQ(Result::kPlaneRowBytes, decompress(m_frame, buffer)) << type;
        EXPECT_TRUE(buffer.isUntouched());
        ASSERT_EQ(Result::kOk, end());
    }
}

TEST_F(Planes, ASizeBelowRowBytesTimesHeightIsRefused) {
    Buffer buffer(16, 3);
    auto planes = buffer.planes();
    planes[0].size -= 1;
    EXPECT_EQ(Result::kPlaneSize, decompressInto(planes));
    EXPECT_TRUE(buffer.isUntouched());
}

TEST_F(Planes, ASizeThatOverflowedIsRefused) {
    Buffer buffer(16, 3);
    auto planes = buffer.planes();
    planes[0].rowBytes = 0xFFFFFF00;   // a negative stride, and its product with the height in 32 bits
    planes[0].size = 0xFFFFFD00;
    EXPECT_EQ(Result::kPlaneSize, decompressInto(planes));
}

TEST_F(Planes, TheOtherThreeMustBeZero) {
    Buffer buffer(16, 3);
    auto planes = buffer.planes();
    planes[3].size = 1;
    EXPECT_EQ(Result::kPlaneUnused, decompressInto(planes));
    EXPECT_TRUE(buffer.isUntouched());
}

TEST_F(Planes, ARefusedPlaneLeavesTheSessionRunning) {
    Buffer buffer(16, 3);
    auto planes = buffer.planes();
    planes[1].address = planes[0].address;
    ASSERT_EQ(Result::kPlaneUnused, decompressInto(planes));
    EXPECT_EQ(Result::kOk, decompress(m_frame, buffer));
}

}  // namespace
}  // namespace standin::test
