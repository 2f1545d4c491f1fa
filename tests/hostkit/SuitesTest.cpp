#include "HostSuites.h"

#include <algorithm>

using namespace hostkit;

namespace {

class Suites : public testing::Test {
protected:
    // The two channels' samples in turn, after a conversion of two from each.
    using Samples = std::vector<float>;
    template <class Sample>
    Samples floatsOf(prSuiteError (*convert)(const Sample*, float**, csSDK_uint32, csSDK_uint32),
                     const std::vector<Sample>& source) {
        float left[2] = {};
        float right[2] = {};
        float* channels[2] = {left, right};
        EXPECT_EQ(convert(source.data(), channels, 2, 2), 0);
        return {left[0], right[0], left[1], right[1]};
    }

    Host host;
    const PrSDKAudioSuite& audio = suiteOf<PrSDKAudioSuite>(host, kPrSDKAudioSuite);
    const PrSDKTimeSuite& time = suiteOf<PrSDKTimeSuite>(host, kPrSDKTimeSuite);
    const PrSDKImageProcessingSuite& images =
        suiteOf<PrSDKImageProcessingSuite>(host, kPrSDKImageProcessingSuite, 2);
};

TEST_F(Suites, EightBitSoundIsSigned) {
    EXPECT_EQ(floatsOf<char>(audio.UninterleaveAndConvertFrom8BitInteger, {-128, 127, 64, 0}),
              (Samples{-1.0f, 127.0f / 128.0f, 0.5f, 0.0f}));
}

TEST_F(Suites, SixteenBitSoundIsDividedBy32768) {
    EXPECT_EQ(floatsOf<csSDK_int16>(audio.UninterleaveAndConvertFrom16BitInteger, {-32768, 32767, 1, -1}),
              (Samples{-1.0f, 32767.0f / 32768.0f, 1.0f / 32768.0f, -1.0f / 32768.0f}));
}

TEST_F(Suites, TwentyFourBitSoundIsPacked) {
    EXPECT_EQ(floatsOf<char>(audio.UninterleaveAndConvertFrom24BitInteger,
                             {0, 0, -128, -1, -1, 127, 1, 0, 0, -1, -1, -1}),
              (Samples{-1.0f, 8388607.0f / 8388608.0f, 1.0f / 8388608.0f, -1.0f / 8388608.0f}));
}

TEST_F(Suites, ThirtyTwoBitSoundIsDividedByItsRange) {
    EXPECT_EQ(floatsOf<csSDK_int32>(audio.UninterleaveAndConvertFrom32BitInteger,
                                    {-2147483647 - 1, 1 << 30, 0, -(1 << 30)}),
              (Samples{-1.0f, 0.5f, 0.0f, -0.5f}));
}

TEST_F(Suites, SoundBeyondTheRangeIsClipped) {
    const float up[1] = {2.0f};
    const float down[1] = {-2.0f};
    const float* source[2] = {up, down};
    short out[2] = {};
    EXPECT_EQ(audio.ConvertAndInterleaveTo16BitInteger(source, out, 2, 1), 0);
    EXPECT_EQ(out[0], 32767);
    EXPECT_EQ(out[1], -32768);
}

TEST_F(Suites, TwentyFourBitSoundIsPackedAgain) {
    const float half[1] = {0.5f};
    const float* source[1] = {half};
    char out[3] = {};
    EXPECT_EQ(audio.ConvertAndInterleaveTo24BitInteger(source, out, 1, 1), 0);
    EXPECT_EQ(std::string(out, 3), std::string("\0\0\x40", 3));
}

TEST_F(Suites, TicksPerSecondAreTheHosts) {
    PrTime ticks = 0;
    EXPECT_EQ(time.GetTicksPerSecond(&ticks), 0);
    EXPECT_EQ(ticks, 254016000000);
}

TEST_F(Suites, TicksPerVideoFrameFollowTheRate) {
    PrTime ticks = 0;
    EXPECT_EQ(time.GetTicksPerVideoFrame(4, &ticks), 0);
    EXPECT_EQ(ticks, 8475667200);
    EXPECT_LT(time.GetTicksPerVideoFrame(0, &ticks), 0);
}

TEST_F(Suites, TicksPerAudioSampleSayWhetherTheyAreRounded) {
    PrTime ticks = 0;
    EXPECT_EQ(time.GetTicksPerAudioSample(48000.0f, &ticks), 0);
    EXPECT_EQ(ticks, 5292000);
    EXPECT_EQ(time.GetTicksPerAudioSample(11.0f, &ticks), 0x00020000);
    EXPECT_EQ(ticks, 23092363636);
}

struct FormatFacts {
    PrPixelFormat format;
    prBool isCompressed, hasAlpha, isTopLeft;
    csSDK_int32 bytesOf128Pixels;
};

TEST_F(Suites, TheHostKnowsItsPixelFormats) {
    const FormatFacts facts[] = {
        {PrPixelFormat_BGRA_4444_8u, 0, 1, 0, 512},
        {PrPixelFormat_BGRX_4444_8u, 0, 0, 0, 512},
        {PrPixelFormat_VUYP_4444_8u, 0, 1, 0, 512},
        {PrPixelFormat_BGRA_4444_16u, 0, 1, 0, 1024},
        {PrPixelFormat_ARGB_4444_32f_Linear, 0, 1, 0, 2048},
        {PrPixelFormat_YUYV_422_8u_601, 0, 0, 0, 256},
        {PrPixelFormat_UYVY_422_32f_601, 0, 0, 0, 1024},
        {PrPixelFormat_V210_422_10u_601, 0, 0, 0, 384},
        {PrPixelFormat_RGB_444_10u, 0, 0, 0, 512},
        {PrPixelFormat_YUV_420_MPEG2_FRAME_PICTURE_PLANAR_8u_601, 0, 0, 1, 256},
        {PrPixelFormat_PALDV25, 1, 0, 1, 144000},
    };
    for (const FormatFacts& wanted : facts) {
        prBool compressed = -1;
        prBool alpha = -1;
        prBool topLeft = -1;
        csSDK_int32 bytes = -1;
        EXPECT_EQ(images.FormatIsCompressed(wanted.format, &compressed), 0);
        EXPECT_EQ(images.FormatHasAlpha(wanted.format, &alpha), 0);
        EXPECT_EQ(images.FormatIsOriginTopLeft(wanted.format, &topLeft), 0);
        EXPECT_EQ(images.GetSizeForPixelBuffer(wanted.format, 128, 1, &bytes), 0);
        EXPECT_EQ(compressed, wanted.isCompressed) << pixelFormatName(wanted.format);
        EXPECT_EQ(alpha, wanted.hasAlpha) << pixelFormatName(wanted.format);
        EXPECT_EQ(topLeft, wanted.isTopLeft) << pixelFormatName(wanted.format);
        EXPECT_EQ(bytes, wanted.bytesOf128Pixels) << pixelFormatName(wanted.format);
    }
}

TEST_F(Suites, TheInvalidFormatIsAnInvalidParameter) {
    prBool answer = -1;
    EXPECT_EQ(static_cast<csSDK_uint32>(images.FormatHasAlpha(PrPixelFormat_Invalid, &answer)), 0x80000001u);
    EXPECT_EQ(answer, -1);
}

TEST_F(Suites, AnErrorEventIsKeptAsText) {
    std::u16string title = u"Title";
    std::u16string text = u"Text \u20ac";
    const auto& errors = suiteOf<PrSDKErrorSuite3>(host, kPrSDKErrorSuite, 3);
    EXPECT_EQ(errors.SetEventStringUnicode(3, title.data(), text.data()), 0);
    EXPECT_EQ(host.errorEvents(), (std::vector<ErrorEvent>{{3, "Title", "Text \xE2\x82\xAC"}}));
}

TEST_F(Suites, TheCacheSuiteHasFourteenFunctions) {
    const auto& cache = suiteOf<PrSDKPPixCacheSuite>(host, kPrSDKPPixCacheSuite, 6);
    EXPECT_EQ(std::count(std::begin(cache.functions), std::end(cache.functions), nullptr), 0);
    cache.functions[13]();
    EXPECT_EQ(host.calls().count(HostCall::PPixCacheCall), 1);
}

}  // namespace
