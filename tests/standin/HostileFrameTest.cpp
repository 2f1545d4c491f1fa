// Frames that are truncated, damaged or have false sizes: each is refused, nothing is written, nothing crashes.
#include "StandinFixture.h"

#include "standin/Bytes.h"

#include <algorithm>
#include <random>
#include <zlib.h>

namespace standin::test {
namespace {

// Planes and buffers have exactly the stated size, so that the address sanitizer detects an overrun of one byte.
class HostileFrame : public StandinTest {
protected:
    void startWith(std::uint32_t type) {
        m_info = stream(type, 7, 5);
        m_frame = encodeFrame(m_info, randomPicture(m_info, 9));
        ASSERT_EQ(Result::kOk, begin(m_info, request(2)));
    }

    Result decompressed(const Bytes& frame) {
        Buffer buffer(28, 5);
        const Result result = decompress(frame, buffer);
        EXPECT_TRUE(result == Result::kOk || buffer.isUntouched());
        return result;
    }

    Result with32(std::size_t offset, std::uint32_t value) {
        Bytes frame = m_frame;
        store32(&frame.at(offset), value);
        return decompressed(frame);
    }

    StreamInfo m_info;
    Bytes m_frame;
};

// A grey frame with `data` as its plane data.
Bytes greyFrame(const StreamInfo& info, const Bytes& data) {
    Bytes frame(20 + data.size());
    std::copy_n("QSF1", 4, frame.begin());
    store32(&frame[4], static_cast<std::uint32_t>(frame.size()));
    store16(&frame[8], info.type);
    store16(&frame[10], 1);
    store16(&frame[12], info.width);
    store16(&frame[14], info.height);
    store32(&frame[16], static_cast<std::uint32_t>(data.size()));
    std::copy(data.begin(), data.end(), frame.begin() + 20);
    return frame;
}

Bytes deflated(const Bytes& bytes, int level) {
    uLongf size = compressBound(static_cast<uLong>(bytes.size()));
    Bytes result(size);
    EXPECT_EQ(Z_OK, compress2(result.data(), &size, bytes.data(), static_cast<uLong>(bytes.size()), level));
    result.resize(size);
    return result;
}

TEST_F(HostileFrame, TruncatedAtAnyByteIsRefusedAsTruncated) {
    for (const std::uint32_t type : {102u, 105u, 108u}) {
        startWith(type);
        for (std::size_t size = 0; size < m_frame.size(); ++size) {
            Bytes frame(m_frame.begin(), m_frame.begin() + static_cast<std::ptrdiff_t>(size));
            frame.reserve(1);   // a valid address even for no bytes
            EXPECT_EQ(Result::kFrameTruncated, decompressed(frame)) << type << ", " << size << " bytes";
        }
        ASSERT_EQ(Result::kOk, end());
    }
}

TEST_F(HostileFrame, OneByteTooManyIsRefused) {
    startWith(104);
    Bytes frame = m_frame;
    frame.push_back(0);
    EXPECT_EQ(Result::kFrameSizes, decompressed(frame));
}

TEST_F(HostileFrame, TruncatedWithAMatchingHeaderIsRefused) {
    startWith(104);
    for (std::size_t size = 28; size < m_frame.size(); ++size) {
        Bytes frame(m_frame.begin(), m_frame.begin() + static_cast<std::ptrdiff_t>(size));
        store32(&frame[4], static_cast<std::uint32_t>(size));
        EXPECT_EQ(Result::kFrameSizes, decompressed(frame)) << size;
    }
}

TEST_F(HostileFrame, EachHeaderFieldHasItsOwnCode) {
    startWith(104);
    EXPECT_EQ(Result::kFrameMagic, with32(0, 0x30304445));
    EXPECT_EQ(Result::kFrameTruncated, with32(4, static_cast<std::uint32_t>(m_frame.size()) + 1));
    EXPECT_EQ(Result::kFrameTruncated, with32(4, 0xFFFFFFFF));
    EXPECT_EQ(Result::kFrameSizes, with32(4, 0));
    EXPECT_EQ(Result::kFrameType, with32(8, 103 | 3u << 16));
    EXPECT_EQ(Result::kFrameType, with32(8, 104 | 4u << 16));
    EXPECT_EQ(Result::kFrameDimensions, with32(12, 8 | 5u << 16));
    EXPECT_EQ(Result::kFrameDimensions, with32(12, 7 | 6u << 16));
    EXPECT_EQ(Result::kFrameSizes, with32(16, 0xFFFFFFFF));
    EXPECT_EQ(Result::kFrameSizes, with32(20, 0));
    EXPECT_EQ(Result::kFrameSizes, with32(24, load32(&m_frame[24]) - 1));
}

// The unused bits in a deflate stream's last byte are not checked: fewer than eight per plane.
TEST_F(HostileFrame, AFlippedBitIsDetectedUnlessItChangesNothing) {
    for (const std::uint32_t type : {107u, 114u}) {
        startWith(type);
        Buffer expected(28, 5);
        ASSERT_EQ(Result::kOk, decompress(m_frame, expected));
        std::size_t unnoticed = 0;
        for (std::size_t bit = 0; bit < m_frame.size() * 8; ++bit) {
            Bytes frame = m_frame;
            frame[bit / 8] = static_cast<std::uint8_t>(frame[bit / 8] ^ 1u << bit % 8);
            Buffer buffer(28, 5);
            if (decompress(frame, buffer) != Result::kOk)
                continue;
            ++unnoticed;
            EXPECT_EQ(expected.bytes(), buffer.bytes()) << type << ", bit " << bit;
        }
        EXPECT_LE(unnoticed, 7u * typeLayout(type).planeCount);
        ASSERT_EQ(Result::kOk, end());
    }
}

TEST_F(HostileFrame, RandomDamageNeverCrashes) {
    std::mt19937 random(2024);
    std::size_t refused = 0;
    for (const std::uint32_t type : kStreamTypes) {
        startWith(type);
        for (int round = 0; round < 300; ++round) {
            Bytes frame = m_frame;
            for (auto changes = 1 + random() % 6; changes > 0; --changes)
                frame[random() % frame.size()] = static_cast<std::uint8_t>(random());
            refused += decompressed(frame) != Result::kOk;
        }
        EXPECT_EQ(Result::kOk, decompressed(m_frame)) << "the session is still usable, type " << type;
        ASSERT_EQ(Result::kOk, end());
    }
    EXPECT_GT(refused, 4700u) << "of 4800; in the others the damage wrote the same values";
}

TEST_F(HostileFrame, RandomBytesNeverCrash) {
    std::mt19937 random(77);
    startWith(104);
    for (int round = 0; round < 2000; ++round) {
        Bytes frame(random() % 200);
        for (std::uint8_t& byte : frame)
            byte = static_cast<std::uint8_t>(random());
        frame.reserve(1);
        EXPECT_NE(Result::kOk, decompressed(frame));
    }
}

TEST_F(HostileFrame, RandomExtraDataNeverCrashes) {
    std::mt19937 random(5);
    const Bytes good = encodeExtraData(stream(104, 7, 5));
    const QuorvaneFormat wanted = request(4);
    for (int round = 0; round < 5000; ++round) {
        Bytes bytes = good;
        for (auto changes = 1 + random() % 4; changes > 0; --changes)
            bytes[random() % bytes.size()] = static_cast<std::uint8_t>(random());
        QuorvaneFormat output;
        if (query(bytes, &wanted, output) == Result::kOk) {
            EXPECT_GE(output.width, 1u);
            EXPECT_LE(output.width, 16384u);
        }
    }
}

TEST_F(HostileFrame, AnyDeflateOfTheRightResidualsIsAccepted) {
    startWith(107);
    EXPECT_EQ(Result::kOk, decompressed(greyFrame(m_info, deflated(Bytes(35, 1), 0))));
    EXPECT_EQ(Result::kOk, decompressed(greyFrame(m_info, deflated(Bytes(35, 1), 9))));
}

TEST_F(HostileFrame, APlaneThatInflatesToMoreOrLessIsRefused) {
    startWith(107);
    EXPECT_EQ(Result::kFrameData, decompressed(greyFrame(m_info, deflated(Bytes(34, 1), 1))));
    EXPECT_EQ(Result::kFrameData, decompressed(greyFrame(m_info, deflated(Bytes(36, 1), 1))));
    EXPECT_EQ(Result::kFrameData, decompressed(greyFrame(m_info, deflated(Bytes(10000000, 1), 9))));
}

TEST_F(HostileFrame, BytesAfterTheDeflateStreamAreRefused) {
    startWith(107);
    Bytes data = deflated(Bytes(35, 1), 1);
    data.push_back(0);
    EXPECT_EQ(Result::kFrameData, decompressed(greyFrame(m_info, data)));
}

TEST_F(HostileFrame, APlaneWithoutDataIsRefused) {
    startWith(107);
    EXPECT_EQ(Result::kFrameTooSmall, decompressed(greyFrame(m_info, {})));
}

TEST_F(HostileFrame, AHugePictureInATinyFrameTakesNoMemory) {
    m_info = stream(107, 16384, 4096);
    ASSERT_EQ(Result::kOk, begin(m_info, request(4)));
    const Bytes frame = greyFrame(m_info, Bytes(60000, 0));
    // No such buffer exists; it would be written to only if the frame were valid.
    std::vector<QuorvanePlane> planes(4);
    planes[0] = {.address = 16, .rowBytes = 32768, .size = 32768u * 4096};
    EXPECT_EQ(0x80004307u, quorvane_decompress(m_handle, frame.data(), static_cast<std::uint32_t>(frame.size()),
                                               planes.data()));
}

TEST_F(HostileFrame, ResidualsBeyondTheBitDepthStayWithinIt) {
    m_info = stream(115, 6, 1);
    ASSERT_EQ(Result::kOk, begin(m_info, request(11)));
    Buffer buffer(16, 1);
    ASSERT_EQ(Result::kOk, decompress(greyFrame(m_info, deflated(Bytes(12, 0xFF), 1)), buffer));
    // z = 65535 is -32768, which is 0 modulo 1024: all samples are the predictor, 512.
    EXPECT_EQ((Bytes{0x00, 0x02, 0x08, 0x20}), buffer.row(0, 4));
}

}  // namespace
}  // namespace standin::test
