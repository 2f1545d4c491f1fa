// Colours: standard values, and every conversion compared with the textbook formulas in floating point.
#include "StandinFixture.h"
#include "Unpacked.h"

#include <algorithm>
#include <cmath>

namespace standin::test {
namespace {

class Color : public StandinTest {
protected:
    // The pixel that a flat picture becomes.
    Pixel converted(const StreamInfo& info, const std::vector<std::uint16_t>& values, const QuorvaneFormat& wanted) {
        return unpacked(wanted.type, decoded(info, flatPicture(info, values), wanted), info.width, info.height)[0];
    }

    Pixel rgbTo(const QuorvaneFormat& wanted, std::uint16_t r, std::uint16_t g, std::uint16_t b) {
        return converted(stream(101, 2, 1, kRec709, kFull), {r, g, b}, wanted);
    }

    Pixel yuvToBgra(std::uint32_t colorSpace, std::uint16_t y, std::uint16_t u, std::uint16_t v) {
        return converted(stream(103, 1, 1, colorSpace), {y, u, v}, request(2));
    }
};

TEST_F(Color, LimitedBlackAndWhiteFillTheRangeOfRgb) {
    EXPECT_EQ((Pixel{0, 0, 0, 255}), yuvToBgra(kRec709, 16, 128, 128));
    EXPECT_EQ((Pixel{255, 255, 255, 255}), yuvToBgra(kRec709, 235, 128, 128));
    EXPECT_EQ((Pixel{128, 128, 128, 255}), yuvToBgra(kRec601, 126, 128, 128));
}

TEST_F(Color, CodesBeyondBlackAndWhiteAreClamped) {
    EXPECT_EQ((Pixel{0, 0, 0, 255}), yuvToBgra(kRec709, 0, 128, 128));
    EXPECT_EQ((Pixel{255, 255, 255, 255}), yuvToBgra(kRec709, 255, 128, 128));
}

TEST_F(Color, PrimariesOfRec709) {
    EXPECT_EQ((Pixel{63, 102, 240, 255}), rgbTo(request(49), 255, 0, 0));
    EXPECT_EQ((Pixel{173, 42, 26, 255}), rgbTo(request(49), 0, 255, 0));
    EXPECT_EQ((Pixel{32, 240, 118, 255}), rgbTo(request(49), 0, 0, 255));
}

TEST_F(Color, PrimariesOfRec601) {
    EXPECT_EQ((Pixel{81, 90, 240, 255}), rgbTo(request(49, 0, kRec601), 255, 0, 0));
    EXPECT_EQ((Pixel{145, 54, 34, 255}), rgbTo(request(49, 0, kRec601), 0, 255, 0));
    EXPECT_EQ((Pixel{41, 240, 110, 255}), rgbTo(request(49, 0, kRec601), 0, 0, 255));
}

TEST_F(Color, PrimariesOfRec709InTenBits) {
    EXPECT_EQ((Pixel{250, 409, 960, 0}), rgbTo(request(11), 255, 0, 0));
    EXPECT_EQ((Pixel{940, 512, 512, 0}), rgbTo(request(11), 255, 255, 255));
}

TEST_F(Color, RedOfRec601IsNotDecodedAsRec709) {
    EXPECT_EQ((Pixel{254, 0, 0, 255}), yuvToBgra(kRec601, 81, 90, 240));
    EXPECT_EQ((Pixel{255, 24, 0, 255}), yuvToBgra(kRec709, 81, 90, 240));
}

TEST_F(Color, RedChangesItsCodesFromRec601ToRec709) {
    EXPECT_EQ((Pixel{62, 102, 240, 255}),
              converted(stream(103, 1, 1, kRec601), {81, 90, 240}, request(49, 0, kRec709)));
    EXPECT_EQ((Pixel{82, 90, 240, 255}),
              converted(stream(103, 1, 1, kRec709), {63, 102, 240}, request(49, 0, kRec601)));
}

TEST_F(Color, GreyKeepsItsCodeWithAnyMatrix) {
    for (std::uint16_t y = 0; y < 256; ++y) {
        const Pixel pixel = converted(stream(107, 1, 1, kRec601), {y}, request(49, 0, kRec709));
        ASSERT_EQ((Pixel{y, 128, 128, 255}), pixel);
    }
}

TEST_F(Color, TenBitYuvIsRoundedToEight) {
    const StreamInfo info = stream(118, 1, 1);
    EXPECT_EQ((Pixel{128, 128, 129, 255}), converted(info, {513, 511, 514}, request(49)));
    EXPECT_EQ((Pixel{255, 0, 1, 255}), converted(info, {1023, 1, 2}, request(49)));
}

TEST_F(Color, FullRangeYuvWidensByShiftingToo) {
    QuorvaneFormat wanted = request(11);
    wanted.range = kFull;
    EXPECT_EQ((Pixel{1020, 512, 4, 0}), converted(stream(103, 1, 1, kRec709, kFull), {255, 128, 1}, wanted));
}

TEST_F(Color, FullRangeYuvIsConvertedToLimitedRange) {
    const StreamInfo info = stream(103, 1, 1, kRec709, kFull);
    EXPECT_EQ((Pixel{235, 128, 240, 255}), converted(info, {255, 128, 255}, request(49)));
    EXPECT_EQ((Pixel{16, 16, 128, 255}), converted(info, {0, 0, 128}, request(49)));
}

TEST_F(Color, LimitedRgbIsConvertedToFullRange) {
    EXPECT_EQ((Pixel{0, 255, 128, 255}), converted(stream(101, 1, 1, kRec709, kLimited), {16, 235, 126}, request(2)));
}

TEST_F(Color, TheColorSpaceOfAnRgbTargetMakesNoDifference) {
    const StreamInfo info = stream(103, 16, 16, kRec601);
    const Picture picture = randomPicture(info, 3);
    EXPECT_EQ(decoded(info, picture, request(2, 0, kRec601)), decoded(info, picture, request(2, 0, kRec709)));
}

TEST_F(Color, EveryFullRangeRgbCodeIsRoundedToNearest) {
    const StreamInfo info = stream(113, 16384, 1, kRec709, kFull);
    Picture picture = makePicture(info);
    for (std::uint32_t x = 0; x < 16384; ++x)
        picture.planes[0].samples[x] = static_cast<std::uint16_t>(x);
    const std::vector<Pixel> eight = unpacked(1, decoded(info, picture, request(1)), 16384, 1);
    const std::vector<Pixel> sixteen = unpacked(32, decoded(info, picture, request(32, 2)), 16384, 1);
    for (std::uint32_t x = 0; x < 16384; ++x) {
        ASSERT_EQ((2 * x * 255 + 16383) / (2 * 16383), eight[x][0]) << x;
        ASSERT_EQ((2 * x * 32768 + 16383) / (2 * 16383), sixteen[x][0]) << x;
    }
}

// ---- Against the formulas

struct Rgb {
    double r, g, b;
};

struct Yuv {
    double y, u, v;
};

struct Weights {
    double r, b;
};

Weights weights(std::uint32_t colorSpace) {
    return colorSpace == kRec601 ? Weights{0.299, 0.114} : Weights{0.2126, 0.0722};
}

Rgb toRgb(const Yuv& c, std::uint32_t colorSpace) {
    const auto [wr, wb] = weights(colorSpace);
    const double r = c.y + c.v * 2 * (1 - wr);
    const double b = c.y + c.u * 2 * (1 - wb);
    return {r, (c.y - wr * r - wb * b) / (1 - wr - wb), b};
}

Yuv toYuv(const Rgb& c, std::uint32_t colorSpace) {
    const auto [wr, wb] = weights(colorSpace);
    const double y = wr * c.r + (1 - wr - wb) * c.g + wb * c.b;
    return {y, (c.b - y) / (2 * (1 - wb)), (c.r - y) / (2 * (1 - wr))};
}

double fromLuma(double code, std::uint32_t range, double bits) {
    const double step = std::exp2(bits - 8);
    return range == kLimited ? (code / step - 16) / 219 : code / (std::exp2(bits) - 1);
}

double fromChroma(double code, std::uint32_t range, double bits) {
    const double step = std::exp2(bits - 8);
    return range == kLimited ? (code / step - 128) / 224 : (code - 128 * step) / (std::exp2(bits) - 1);
}

// The expected pixel in 8-bit VUYX of limited range, and in 16-bit RGB of full range.
struct Expected {
    double vuyx[3];
    double rgb16[3];
};

Expected expectedOf(const StreamInfo& info, const Pixel& c, std::uint32_t targetColorSpace) {
    const TypeLayout layout = typeLayout(info.type);
    const double bits = layout.bitDepth;
    Rgb rgb{};
    if (layout.rgb)
        rgb = {fromLuma(c[0], info.range, bits), fromLuma(c[1], info.range, bits), fromLuma(c[2], info.range, bits)};
    else
        rgb = toRgb({fromLuma(c[0], info.range, bits), fromChroma(c[1], info.range, bits),
                     fromChroma(c[2], info.range, bits)}, info.colorSpace);
    const Yuv yuv = toYuv(rgb, targetColorSpace);
    return {{16 + 219 * yuv.y, 128 + 224 * yuv.u, 128 + 224 * yuv.v},
            {rgb.r * 65535, rgb.g * 65535, rgb.b * 65535}};
}

// True if no other code is nearer to the exact value; a tie may go either way in fixed point.
bool isNearest(double exact, double max, std::uint16_t code) {
    return std::abs(std::clamp(exact, 0.0, max) - code) <= 0.5001;
}

std::size_t wrongPixels(const StreamInfo& info, std::uint32_t targetColorSpace, const Picture& picture,
                        const std::vector<Pixel>& vuyx, const std::vector<Pixel>& rgb16) {
    std::size_t wrong = 0;
    for (std::size_t p = 0; p < vuyx.size(); ++p) {
        Pixel source{};
        for (std::size_t i = 0; i < 3; ++i)
            source[i] = picture.planes[i].samples[p];
        const Expected expected = expectedOf(info, source, targetColorSpace);
        for (std::size_t i = 0; i < 3; ++i)
            wrong += !isNearest(expected.vuyx[i], 255, vuyx[p][i]) || !isNearest(expected.rgb16[i], 65535, rgb16[p][i]);
    }
    return wrong;
}

TEST_F(Color, EveryConversionReturnsTheNearestCode) {
    for (const std::uint32_t type : {101u, 103u, 109u, 111u, 113u, 118u}) {
        for (const std::uint32_t colorSpace : {kRec601, kRec709}) {
            for (const std::uint32_t range : {kLimited, kFull}) {
                for (const std::uint32_t targetColorSpace : {kRec601, kRec709}) {
                    const StreamInfo info = stream(type, 64, 64, colorSpace, range);
                    const Picture picture = randomPicture(info, type);
                    const auto vuyx = unpacked(49, decoded(info, picture, request(49, 0, targetColorSpace)), 64, 64);
                    const auto rgb16 = unpacked(32, decoded(info, picture, request(32, 0, targetColorSpace)), 64, 64);
                    EXPECT_EQ(0u, wrongPixels(info, targetColorSpace, picture, vuyx, rgb16))
                        << type << ", " << colorSpace << " to " << targetColorSpace << ", range " << range;
                }
            }
        }
    }
}

}  // namespace
}  // namespace standin::test
