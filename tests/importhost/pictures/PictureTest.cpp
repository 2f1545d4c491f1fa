#include "importhost/pictures/FrameWriters.h"
#include "importhost/pictures/Picture.h"

#include <gtest/gtest.h>

using namespace importhost;

namespace {

using Bytes = std::vector<std::uint8_t>;
using Components = std::vector<std::uint16_t>;

// A frame over plain bytes, bottom row first.
hostkit::FrameView frame(PrPixelFormat format, csSDK_int32 width, csSDK_int32 height, csSDK_int32 rowBytes,
                         Bytes& bytes) {
    hostkit::FrameView view;
    view.format = format;
    view.bounds.right = width;
    view.bounds.bottom = height;
    view.rowBytes = rowBytes;
    view.pixels = bytes.data();
    view.size = bytes.size();
    return view;
}

Components componentsOf(PrPixelFormat format, csSDK_int32 width, Bytes bytes) {
    const auto picture = pictureOf(frame(format, width, 1, static_cast<csSDK_int32>(bytes.size()), bytes));
    return picture ? picture->components : Components{};
}

TEST(Picture, TheBottomRowOfMemoryIsTheTopRowOfThePicture) {
    Bytes bytes = {1, 2, 3, 255, 0, 0, 4, 5, 6, 255, 0, 0};
    const auto picture = pictureOf(frame(PrPixelFormat_BGRX_4444_8u, 1, 2, 6, bytes));
    EXPECT_EQ(picture->components, (Components{6, 5, 4, 3, 2, 1}));
}

TEST(Picture, BgraIsEightBitsWithAlpha) {
    Bytes bytes = {10, 20, 30, 40};
    const auto picture = pictureOf(frame(PrPixelFormat_BGRA_4444_8u, 1, 1, 4, bytes));
    EXPECT_EQ(picture->bits, 8);
    EXPECT_TRUE(picture->hasAlpha);
    EXPECT_EQ(picture->components, (Components{30, 20, 10, 40}));
}

TEST(Picture, ArgbHasItsAlphaFirst) {
    EXPECT_EQ(componentsOf(PrPixelFormat_ARGB_4444_8u, 1, {40, 30, 20, 10}), (Components{30, 20, 10, 40}));
}

TEST(Picture, XrgbHasNoAlpha) {
    EXPECT_EQ(componentsOf(PrPixelFormat_XRGB_4444_8u, 1, {40, 30, 20, 10}), (Components{30, 20, 10}));
}

TEST(Picture, LimitedRangeReachesBlackAndWhite) {
    EXPECT_EQ(componentsOf(PrPixelFormat_YUYV_422_8u_709, 2, {16, 128, 235, 128}),
              (Components{0, 0, 0, 255, 255, 255}));
}

// The 75 % bars' red as 8 bits round it: red 191.1, green -0.3, blue 0.6, and 191.3, 0.0, 0.6 in the other matrix.
TEST(Picture, Rec601RedIsRed) {
    EXPECT_EQ(componentsOf(PrPixelFormat_YUYV_422_8u_601, 2, {65, 100, 65, 212}),
              (Components{191, 0, 1, 191, 0, 1}));
}

TEST(Picture, Rec709RedIsRed) {
    EXPECT_EQ(componentsOf(PrPixelFormat_UYVY_422_8u_709, 2, {109, 51, 212, 51}),
              (Components{191, 0, 1, 191, 0, 1}));
}

TEST(Picture, TheTwoMatricesDiffer) {
    EXPECT_NE(componentsOf(PrPixelFormat_YUYV_422_8u_601, 2, {65, 100, 65, 212}),
              componentsOf(PrPixelFormat_YUYV_422_8u_709, 2, {65, 100, 65, 212}));
}

TEST(Picture, AnOddWidthTakesHalfOfTheLastPair) {
    EXPECT_EQ(componentsOf(PrPixelFormat_UYVY_422_8u_601, 3, {128, 16, 128, 235, 128, 235, 128, 16}),
              (Components{0, 0, 0, 255, 255, 255, 255, 255, 255}));
}

TEST(Picture, VuyaKeepsItsAlpha) {
    EXPECT_EQ(componentsOf(PrPixelFormat_VUYA_4444_8u_709, 1, {128, 128, 235, 77}), (Components{255, 255, 255, 77}));
}

TEST(Picture, VuyxHasNoAlpha) {
    EXPECT_EQ(componentsOf(PrPixelFormat_VUYX_4444_8u, 1, {128, 128, 16, 77}), (Components{0, 0, 0}));
}

// Lumas 64, 940, 64, 940, 64, 940 with neutral chroma of 512.
TEST(Picture, V210HasSixPixelsInSixteenBytes) {
    EXPECT_EQ(componentsOf(PrPixelFormat_V210_422_10u_709, 6,
                           {0x00, 0x02, 0x01, 0x20, 0xAC, 0x03, 0x08, 0x04, 0x00, 0xB2, 0x0E, 0x20, 0x40, 0x00, 0xC8,
                            0x3A}),
              (Components{0, 0, 0, 65535, 65535, 65535, 0, 0, 0, 65535, 65535, 65535, 0, 0, 0, 65535, 65535, 65535}));
}

// Chroma of the three pairs: neutral, neutral, U 512 and V 960.
TEST(Picture, V210GivesEachPairItsOwnChroma) {
    const Components picture =
        componentsOf(PrPixelFormat_V210_422_10u_601, 6,
                     {0x00, 0x02, 0x01, 0x20, 0xAC, 0x03, 0x08, 0x04, 0x00, 0xB2, 0x0E, 0x20, 0x40, 0x00, 0xCF, 0x3A});
    EXPECT_EQ(picture[9], 65535);
    EXPECT_EQ(picture[10], 65535);
    EXPECT_EQ(picture[12], 45940);      // red of the fifth pixel: 1.402 x 448 / 896 of full intensity
    EXPECT_EQ(picture[13], 0);
    EXPECT_EQ(picture[16], 42135);      // green of the sixth: full less 1.402 x 0.299 / 0.587 x 448 / 896
}

TEST(Picture, Rgb1HasRedInItsHighestBits) {
    EXPECT_EQ(componentsOf(PrPixelFormat_RGB_444_10u, 3, {0, 0, 0xC0, 0xFF, 0, 0xF0, 0x3F, 0, 0xFC, 0x0F, 0, 0}),
              (Components{65535, 0, 0, 0, 65535, 0, 0, 0, 65535}));
}

TEST(Picture, SixteenBitsAreFullAt32768) {
    Bytes bytes = {0x00, 0x80, 0x00, 0x40, 0x00, 0x00, 0x00, 0x20};
    const auto picture = pictureOf(frame(PrPixelFormat_BGRA_4444_16u, 1, 1, 8, bytes));
    EXPECT_EQ(picture->bits, 16);
    EXPECT_EQ(picture->components, (Components{0, 32768, 65535, 16384}));
}

TEST(Picture, SixteenBitsBeyondFullAreClipped) {
    EXPECT_EQ(componentsOf(PrPixelFormat_BGRX_4444_16u, 1, {0xFF, 0xFF, 0, 0, 0, 0, 0, 0}), (Components{0, 0, 65535}));
}

TEST(Picture, AFormatWithoutAConversionGivesNoPicture) {
    Bytes bytes(16);
    EXPECT_EQ(pictureOf(frame(PrPixelFormat_BGRA_4444_32f, 1, 1, 16, bytes)), std::nullopt);
    EXPECT_FALSE(isPictureFormat(PrPixelFormat_BGRA_4444_32f));
}

TEST(Rows, StartAtTheTopAndHaveNoPadding) {
    Bytes bytes = {1, 2, 3, 4, 99, 5, 6, 7, 8, 99};
    EXPECT_EQ(rowsOf(frame(PrPixelFormat_BGRA_4444_8u, 1, 2, 5, bytes)), (Bytes{5, 6, 7, 8, 1, 2, 3, 4}));
}

TEST(Checksum, IsTheCrc32OfTheRows) {
    Bytes bytes = {'5', '6', '7', '8', 0xCD, '1', '2', '3', '4', 0xCD};
    EXPECT_EQ(checksumLine(frame(PrPixelFormat_BGRA_4444_8u, 1, 2, 5, bytes), 7), "000007  bgra  1x2  9ae0daaf");
}

}  // namespace
