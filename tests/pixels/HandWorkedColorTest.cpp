// Colours worked out by hand from the recommendations' own numbers (Kr, Kb, nominal levels), as expected in the host's
// buffer. They check the reference converter as well as the importer.
#include "pixels/Delivery.h"
#include "pixels/SourcePictures.h"

#include "support/TempFolder.h"

namespace pixels {

namespace {

class HandWorkedColor : public ::testing::Test {
protected:
    // The first group of pixels of a one-colour picture.
    Row delivered(const standin::StreamInfo& stream, std::initializer_list<std::uint16_t> color, PrPixelFormat format) {
        standin::StreamInfo info = stream;
        info.width = 6;
        info.height = 1;
        return deliveredPicture(info, flat(info, color), format);
    }

    Row deliveredPicture(const standin::StreamInfo& info, const standin::Picture& picture, PrPixelFormat format,
                         std::uint32_t row = 0) {
        writeClip(m_folder.folder() / "clip.avi", info, {picture});
        hostkit::FrameClip clip(m_importer.session(), m_folder.folder() / "clip.avi");
        return bytesOfRow(clip.frame(0, format), row, rowPixelBytes(hostFormat(format), 1));
    }

    static constexpr standin::StreamInfo stream(std::uint32_t type, std::uint32_t colorSpace, std::uint32_t range) {
        return {type, 0, 0, colorSpace, range};
    }

    TempFolder m_folder;
    LoadedImporter m_importer;
};

const standin::StreamInfo kRgb8 = {101, 0, 0, kRec709, kFull};

// --- Computer RGB into video -------------------------------------------------------------------------------------

TEST_F(HandWorkedColor, WhiteIs235InVideoRange) {
    EXPECT_EQ(delivered(kRgb8, {255, 255, 255}, PrPixelFormat_YUYV_422_8u_709), (Row{235, 128, 235, 128}));
}

TEST_F(HandWorkedColor, BlackIs16InVideoRange) {
    EXPECT_EQ(delivered(kRgb8, {0, 0, 0}, PrPixelFormat_UYVY_422_8u_601), (Row{128, 16, 128, 16}));
}

TEST_F(HandWorkedColor, RedBecomes81_90_240InRec601) {      // 16 + 219 * 0.299 = 81.5, just below
    EXPECT_EQ(delivered(kRgb8, {255, 0, 0}, PrPixelFormat_VUYX_4444_8u), (Row{240, 90, 81, 255}));
}

TEST_F(HandWorkedColor, RedBecomes63_102_240InRec709) {     // 16 + 219 * 0.2126 = 62.56
    EXPECT_EQ(delivered(kRgb8, {255, 0, 0}, PrPixelFormat_VUYX_4444_8u_709), (Row{240, 102, 63, 255}));
}

TEST_F(HandWorkedColor, WhiteIs940And512InV210) {           // U Y V, Y U Y, V Y U, Y V Y
    EXPECT_EQ(delivered(kRgb8, {255, 255, 255}, PrPixelFormat_V210_422_10u_709),
              (Row{0x00, 0xB2, 0x0E, 0x20, 0xAC, 0x03, 0xC8, 0x3A, 0x00, 0xB2, 0x0E, 0x20, 0xAC, 0x03, 0xC8, 0x3A}));
}

// --- Video into computer RGB -------------------------------------------------------------------------------------

TEST_F(HandWorkedColor, Rec601RedBecomesRgbRed) {           // R = 255 * (65 / 219 + 1.402 / 2) = 254.4
    EXPECT_EQ(delivered(stream(103, kRec601, kLimited), {81, 90, 240}, PrPixelFormat_BGRX_4444_8u),
              (Row{0, 0, 254, 255}));
}

// G = 255 * (47 / 219 + 0.1873 * 26 / 224 - 0.4681 / 2) = 0.58
TEST_F(HandWorkedColor, Rec709RedBecomesRgbRed) {
    EXPECT_EQ(delivered(stream(103, kRec709, kLimited), {63, 102, 240}, PrPixelFormat_BGRX_4444_8u),
              (Row{0, 1, 255, 255}));
}

TEST_F(HandWorkedColor, FullRangeWhiteIs255InRgb) {
    EXPECT_EQ(delivered(stream(103, kRec709, kFull), {255, 128, 128}, PrPixelFormat_XRGB_4444_8u),
              (Row{255, 255, 255, 255}));
}

TEST_F(HandWorkedColor, TenBitWhiteFillsTheTenBitWord) {
    EXPECT_EQ(delivered(stream(118, kRec709, kLimited), {940, 512, 512}, PrPixelFormat_RGB_444_10u),
              (Row{0xFC, 0xFF, 0xFF, 0xFF}));
}

TEST_F(HandWorkedColor, GreyHasEqualRgb) {                // 255 * (126 - 16) / 219 = 128.08
    EXPECT_EQ(delivered(stream(107, kRec709, kLimited), {126}, PrPixelFormat_BGRX_4444_8u), (Row{128, 128, 128, 255}));
}

// --- Video into video --------------------------------------------------------------------------------------------

TEST_F(HandWorkedColor, Rec601RedBecomesRec709Red) {
    EXPECT_EQ(delivered(stream(103, kRec601, kLimited), {81, 90, 240}, PrPixelFormat_VUYX_4444_8u_709),
              (Row{240, 102, 62, 255}));
}

TEST_F(HandWorkedColor, GreyIsTheSameInBothMatrices) {
    EXPECT_EQ(delivered(stream(103, kRec601, kLimited), {100, 128, 128}, PrPixelFormat_VUYX_4444_8u_709),
              (Row{128, 128, 100, 255}));
}

TEST_F(HandWorkedColor, FullRangeVideoIsCompressedToVideoRange) {      // chroma 255: 128 + 127 * 224 / 255 = 239.6
    EXPECT_EQ(delivered(stream(103, kRec709, kFull), {255, 128, 255}, PrPixelFormat_VUYX_4444_8u_709),
              (Row{240, 128, 235, 255}));
}

TEST_F(HandWorkedColor, VideoBeyondTheNominalLimitsIsKept) {
    EXPECT_EQ(delivered(stream(103, kRec709, kLimited), {255, 1, 254}, PrPixelFormat_VUYX_4444_8u_709),
              (Row{254, 1, 255, 255}));
}

TEST_F(HandWorkedColor, TenBitVideoIsRoundedToEight) {                 // 942 / 4 = 235.5, 401 / 4 = 100.25
    EXPECT_EQ(delivered(stream(118, kRec709, kLimited), {942, 401, 1023}, PrPixelFormat_VUYX_4444_8u_709),
              (Row{255, 100, 236, 255}));
}

TEST_F(HandWorkedColor, NeighboursShareTheMeanOfTheirChromaRoundedUp) {
    const standin::StreamInfo info = {103, 2, 1, kRec709, kLimited};
    standin::Picture picture = flat(info, {50, 100, 200});
    picture.planes[1].samples[1] = 101;
    picture.planes[2].samples[1] = 205;
    EXPECT_EQ(deliveredPicture(info, picture, PrPixelFormat_YUYV_422_8u_709), (Row{50, 101, 50, 203}));
}

// --- Depth, alpha and orientation --------------------------------------------------------------------------------

TEST_F(HandWorkedColor, SixteenBitWhiteIs32768) {                      // 0x8000
    EXPECT_EQ(delivered(kRgb8, {255, 255, 255}, PrPixelFormat_BGRX_4444_16u), (Row{0, 128, 0, 128, 0, 128, 0, 128}));
}

TEST_F(HandWorkedColor, FourteenBitMiddleIs16385) {                    // 8192 * 32768 / 16383 = 16385.0002, 0x4001
    EXPECT_EQ(delivered(stream(113, kRec709, kFull), {8192, 0, 16383}, PrPixelFormat_BGRX_4444_16u),
              (Row{0, 128, 0, 0, 1, 64, 0, 128}));
}

TEST_F(HandWorkedColor, TwelveBitRgbIsRoundedToEight) {                // 2048 * 255 / 4095 = 127.5, just above
    EXPECT_EQ(delivered(stream(111, kRec709, kFull), {2048, 0, 4095}, PrPixelFormat_BGRX_4444_8u),
              (Row{255, 0, 128, 255}));
}

TEST_F(HandWorkedColor, EightBitAlphaIsScaledTo32768) {                // 128 * 32768 / 255 = 16448.3, 0x4040
    EXPECT_EQ(delivered(stream(102, kRec709, kFull), {0, 0, 0, 128}, PrPixelFormat_BGRA_4444_16u),
              (Row{0, 0, 0, 0, 0, 0, 64, 64}));
}

TEST_F(HandWorkedColor, FourteenBitAlphaIsRoundedToEight) {            // 8192 * 255 / 16383 = 127.51
    EXPECT_EQ(delivered(stream(114, kRec709, kFull), {0, 0, 0, 8192}, PrPixelFormat_ARGB_4444_8u), (Row{128, 0, 0, 0}));
}

TEST_F(HandWorkedColor, AStreamWithoutAlphaIsOpaque) {
    EXPECT_EQ(delivered(kRgb8, {1, 2, 3}, PrPixelFormat_BGRA_4444_8u), (Row{3, 2, 1, 255}));
}

TEST_F(HandWorkedColor, AFormatWithoutAlphaIsOpaque) {
    EXPECT_EQ(delivered(stream(102, kRec709, kFull), {1, 2, 3, 4}, PrPixelFormat_BGRX_4444_8u), (Row{3, 2, 1, 255}));
}

TEST_F(HandWorkedColor, TheBottomRowComesFirstInMemory) {
    const standin::StreamInfo info = {101, 1, 2, kRec709, kFull};
    standin::Picture picture = flat(info, {0, 0, 0});
    picture.planes[0].samples[0] = 255;     // red above
    picture.planes[2].samples[1] = 255;     // blue below
    EXPECT_EQ(deliveredPicture(info, picture, PrPixelFormat_BGRX_4444_8u, 0), (Row{255, 0, 0, 255}));
    EXPECT_EQ(deliveredPicture(info, picture, PrPixelFormat_BGRX_4444_8u, 1), (Row{0, 0, 255, 255}));
}

}  // namespace

}  // namespace pixels
