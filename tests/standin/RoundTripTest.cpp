// Every compressed type is decoded without loss to a target that can hold it.
#include "StandinFixture.h"
#include "Unpacked.h"

#include <cmath>

namespace standin::test {
namespace {

struct Size {
    std::uint32_t width, height;
};

// One pixel, one row, one column, odd sizes, more and less than a group of six, and a real frame's size plus one.
constexpr Size kSizes[] = {{1, 1}, {1, 9}, {2, 2}, {9, 1}, {7, 5}, {12, 3}, {13, 2}, {641, 361}};

// The sample of component `i` that covers the pixel at (x, y); the chroma of grey is the middle code.
std::uint16_t sampleAt(const StreamInfo& info, const Picture& picture, std::size_t i, std::uint32_t x,
                       std::uint32_t y) {
    const TypeLayout layout = typeLayout(info.type);
    if (i >= picture.planes.size())
        return static_cast<std::uint16_t>(1u << (layout.bitDepth - 1));
    const bool isChroma = !layout.rgb && (i == 1 || i == 2);
    const Plane& plane = picture.planes[i];
    const std::uint32_t column = isChroma ? x / layout.xSubsampling : x;
    const std::uint32_t row = isChroma ? y / layout.ySubsampling : y;
    return plane.samples[std::size_t{row} * plane.width + column];
}

class RoundTrip : public StandinTest {
protected:
    using Inverse = std::uint16_t (*)(std::uint16_t);

    // Decodes random pictures of all sizes and compares the first `components` of each pixel after `inverse`.
    void expectUnchanged(std::uint32_t streamType, const QuorvaneFormat& wanted, std::size_t components,
                         std::uint32_t range, Inverse inverse = [](std::uint16_t code) { return code; }) {
        for (const Size& size : kSizes) {
            const StreamInfo info = stream(streamType, size.width, size.height, wanted.colorSpace, range);
            const Picture picture = randomPicture(info, streamType + size.width);
            const std::vector<Pixel> pixels =
                unpacked(wanted.type, decoded(info, picture, wanted), size.width, size.height);
            EXPECT_EQ(0u, differences(info, picture, pixels, components, inverse))
                << streamType << " to " << wanted.type << ", " << size.width << " x " << size.height;
        }
    }

private:
    static std::size_t differences(const StreamInfo& info, const Picture& picture, const std::vector<Pixel>& pixels,
                                   std::size_t components, Inverse inverse) {
        std::size_t count = 0;
        for (std::uint32_t y = 0; y < info.height; ++y) {
            for (std::uint32_t x = 0; x < info.width; ++x) {
                for (std::size_t i = 0; i < components; ++i) {
                    const std::uint16_t code = pixels[std::size_t{y} * info.width + x][i];
                    count += inverse(code) != sampleAt(info, picture, i, x, y);
                }
            }
        }
        return count;
    }
};

// Inverts the scaling of samples with `Bits` bits to 0 ... `Max`.
template <unsigned Bits, unsigned Max>
std::uint16_t scaledBack(std::uint16_t code) {
    return static_cast<std::uint16_t>(std::lround(code * double((1u << Bits) - 1) / Max));
}

TEST_F(RoundTrip, Rgb8) {
    expectUnchanged(101, request(1), 3, kFull);
    expectUnchanged(101, request(16), 3, kFull);
    expectUnchanged(101, request(2), 3, kFull);
    expectUnchanged(101, request(15), 3, kFull, scaledBack<8, 1023>);
}

TEST_F(RoundTrip, Rgba8) {
    expectUnchanged(102, request(2), 4, kFull);
    expectUnchanged(102, request(19), 4, kFull);
    expectUnchanged(102, request(31, kQuorvaneRange32768), 4, kFull, scaledBack<8, 32768>);
}

TEST_F(RoundTrip, Yuv444) {
    expectUnchanged(103, request(49), 3, kLimited);
    expectUnchanged(103, request(50, 0, kRec601), 3, kLimited);
}

TEST_F(RoundTrip, Yuv422) {
    expectUnchanged(104, request(4), 3, kLimited);
    expectUnchanged(104, request(5), 3, kLimited);
    expectUnchanged(104, request(4, 0, kRec601), 3, kLimited);
    expectUnchanged(104, request(49), 3, kLimited);
}

TEST_F(RoundTrip, Yuv422WidensToTenBitsByTwoZeroBits) {
    expectUnchanged(104, request(11), 3, kLimited, [](std::uint16_t code) {
        return static_cast<std::uint16_t>((code & 3) == 0 ? code >> 2 : 0xFFFF);
    });
}

TEST_F(RoundTrip, Yuv420) {
    expectUnchanged(105, request(4), 3, kLimited);
    expectUnchanged(105, request(5), 3, kLimited);
    expectUnchanged(105, request(49), 3, kLimited);
}

TEST_F(RoundTrip, Yuva4444) { expectUnchanged(106, request(50), 4, kLimited); }

TEST_F(RoundTrip, Grey8) {
    expectUnchanged(107, request(4), 3, kLimited);
    expectUnchanged(107, request(5), 3, kLimited);
    expectUnchanged(107, request(49), 3, kLimited);
}

TEST_F(RoundTrip, Yuv422Of10Bits) {
    expectUnchanged(108, request(11), 3, kLimited);
    expectUnchanged(108, request(11, 0, kRec601), 3, kLimited);
}

TEST_F(RoundTrip, Rgb10) {
    expectUnchanged(109, request(15), 3, kFull);
    expectUnchanged(109, request(32, kQuorvaneRange32768), 3, kFull, scaledBack<10, 32768>);
}

TEST_F(RoundTrip, Rgba10) { expectUnchanged(110, request(31, kQuorvaneRange32768), 4, kFull, scaledBack<10, 32768>); }
TEST_F(RoundTrip, Rgb12) { expectUnchanged(111, request(32, kQuorvaneRange32768), 3, kFull, scaledBack<12, 32768>); }
TEST_F(RoundTrip, Rgba12) { expectUnchanged(112, request(31), 4, kFull, scaledBack<12, 65535>); }
TEST_F(RoundTrip, Rgb14) { expectUnchanged(113, request(32, kQuorvaneRange32768), 3, kFull, scaledBack<14, 32768>); }

TEST_F(RoundTrip, Rgba14) {
    expectUnchanged(114, request(31, kQuorvaneRange32768), 4, kFull, scaledBack<14, 32768>);
    expectUnchanged(114, request(31), 4, kFull, scaledBack<14, 65535>);
}

TEST_F(RoundTrip, Grey10) { expectUnchanged(115, request(11), 3, kLimited); }

TEST_F(RoundTrip, FullRangeYuvStaysUnchangedInFullRange) {
    QuorvaneFormat wanted = request(4);
    wanted.range = kFull;
    expectUnchanged(104, wanted, 3, kFull);
}

// No YUV target holds 4:4:4 of 10 bits; 16-bit RGB does, for colours that exist in RGB.
TEST_F(RoundTrip, Yuv444Of10BitsThroughRgb) {
    const StreamInfo info = stream(118, 40, 30, kRec709, kLimited);
    Picture picture = randomPicture(info, 7);
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::uint16_t& sample : picture.planes[i].samples)
            sample = static_cast<std::uint16_t>(i == 0 ? 450 + sample % 100 : 462 + sample % 100);
    }
    const std::vector<Pixel> pixels = unpacked(32, decoded(info, picture, request(32)), 40, 30);
    for (std::size_t p = 0; p < pixels.size(); ++p) {
        const double r = pixels[p][0] / 65535.0, g = pixels[p][1] / 65535.0, b = pixels[p][2] / 65535.0;
        const double y = 0.2126 * r + 0.7152 * g + 0.0722 * b;
        ASSERT_EQ(picture.planes[0].samples[p], std::lround(64 + 876 * y)) << p;
        ASSERT_EQ(picture.planes[1].samples[p], std::lround(512 + 896 * (b - y) / 1.8556)) << p;
        ASSERT_EQ(picture.planes[2].samples[p], std::lround(512 + 896 * (r - y) / 1.5748)) << p;
    }
}

TEST_F(RoundTrip, FramesOfOneSessionAreIndependent) {
    const StreamInfo info = stream(104, 8, 4);
    const Picture first = randomPicture(info, 1);
    const Picture second = randomPicture(info, 2);
    const Bytes expected = decoded(info, second, request(4));
    Buffer buffer(16, 4);
    ASSERT_EQ(Result::kOk, begin(info, request(4)));
    ASSERT_EQ(Result::kOk, decompress(encodeFrame(info, first), buffer));
    ASSERT_EQ(Result::kOk, decompress(encodeFrame(info, second), buffer));
    EXPECT_EQ(expected, buffer.bytes());
}

}  // namespace
}  // namespace standin::test
