#include "HostSuites.h"

#include <algorithm>
#include <set>

using namespace hostkit;

namespace {

using Sentences = std::vector<std::string>;

prRect rectangle(csSDK_int32 width, csSDK_int32 height) {
    prRect rect;
    rect.right = width;
    rect.bottom = height;
    return rect;
}

class Frames : public testing::Test {
protected:
    explicit Frames(const char* profile = "editor-11") : host(hostProfile(profile)) {}

    PPixHand make(PrPixelFormat format = PrPixelFormat_BGRA_4444_8u, csSDK_int32 width = 8, csSDK_int32 height = 6) {
        PPixHand frame = nullptr;
        const prRect bounds = rectangle(width, height);
        EXPECT_EQ(creator.CreatePPix(&frame, PrPPixBufferAccess_WriteOnly, format, &bounds), 0);
        return frame;
    }

    csSDK_int32 rowBytesOf(PPixHand frame) {
        csSDK_int32 bytes = 0;
        EXPECT_EQ(ppix.GetRowBytes(frame, &bytes), 0);
        return bytes;
    }

    Host host;
    const PrSDKPPixCreatorSuite& creator = suiteOf<PrSDKPPixCreatorSuite>(host, kPrSDKPPixCreatorSuite);
    const PrSDKPPixSuite& ppix = suiteOf<PrSDKPPixSuite>(host, kPrSDKPPixSuite);
};

struct TightFrames : Frames {
    TightFrames() : Frames("tight-rows") {}
};

struct OddFrames : Frames {
    OddFrames() : Frames("odd-rows") {}
};

TEST_F(Frames, RowsAreRoundedUpTo128Bytes) {
    EXPECT_EQ(rowBytesOf(make(PrPixelFormat_BGRA_4444_8u, 720, 2)), 2944);
    EXPECT_EQ(rowBytesOf(make(PrPixelFormat_BGRA_4444_8u, 320, 2)), 1280);
}

TEST_F(TightFrames, RowsOfEveryOfferedFormatHaveTheirExactBytes) {
    EXPECT_EQ(rowBytesOf(make(PrPixelFormat_YUYV_422_8u_601, 7, 2)), 16);
    EXPECT_EQ(rowBytesOf(make(PrPixelFormat_UYVY_422_8u_709, 8, 2)), 16);
    EXPECT_EQ(rowBytesOf(make(PrPixelFormat_VUYA_4444_8u, 7, 2)), 28);
    EXPECT_EQ(rowBytesOf(make(PrPixelFormat_BGRX_4444_8u, 7, 2)), 28);
    EXPECT_EQ(rowBytesOf(make(PrPixelFormat_V210_422_10u_601, 7, 2)), 32);
    EXPECT_EQ(rowBytesOf(make(PrPixelFormat_RGB_444_10u, 7, 2)), 28);
    EXPECT_EQ(rowBytesOf(make(PrPixelFormat_BGRA_4444_16u, 7, 2)), 56);
}

TEST_F(OddFrames, RowsStartAtOddAddresses) {
    EXPECT_EQ(rowBytesOf(make(PrPixelFormat_BGRA_4444_16u, 8, 2)), 77);
}

TEST_F(Frames, ANewFrameIsFilledWithAMark) {
    const FrameView view = host.frames().view(make()).value();
    EXPECT_EQ(view.size, 768u);
    EXPECT_EQ(std::count(view.pixels, view.pixels + view.size, 0xCD), 768);
}

TEST_F(Frames, PixelsAre16ByteAligned) {
    char* pixels = nullptr;
    EXPECT_EQ(ppix.GetPixels(make(), PrPPixBufferAccess_WriteOnly, &pixels), 0);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(pixels) % 16, 0u);
}

TEST_F(Frames, AWriteOnlyFrameHasNoPixelsToRead) {
    char* pixels = reinterpret_cast<char*>(&host);
    EXPECT_EQ(ppix.GetPixels(make(), PrPPixBufferAccess_ReadOnly, &pixels), 0);
    EXPECT_EQ(pixels, nullptr);
}

TEST_F(Frames, ImpossibleFramesAreRefused) {
    struct {
        PrPPixBufferAccess access;
        PrPixelFormat format;
        csSDK_int32 height;
    } const impossible[] = {{PrPPixBufferAccess_ReadOnly, PrPixelFormat_BGRA_4444_8u, 6},
                            {PrPPixBufferAccess_WriteOnly, PrPixelFormat_BGRA_4444_8u, 0},
                            {PrPPixBufferAccess_WriteOnly, PrPixelFormat_Invalid, 6}};
    for (const auto& each : impossible) {
        PPixHand frame = reinterpret_cast<PPixHand>(&host);
        const prRect bounds = rectangle(8, each.height);
        EXPECT_LT(creator.CreatePPix(&frame, each.access, each.format, &bounds), 0) << each.format << each.height;
        EXPECT_EQ(frame, nullptr);
    }
}

TEST_F(Frames, AFrameTellsItsShape) {
    const PPixHand frame = make(PrPixelFormat_YUYV_422_8u_709, 8, 6);
    prRect bounds;
    PrPixelFormat format = PrPixelFormat_Invalid;
    EXPECT_EQ(ppix.GetBounds(frame, &bounds), 0);
    EXPECT_EQ(ppix.GetPixelFormat(frame, &format), 0);
    EXPECT_EQ(bounds.right, 8);
    EXPECT_EQ(bounds.bottom, 6);
    EXPECT_EQ(format, PrPixelFormat_YUYV_422_8u_709);
}

TEST_F(Frames, ALeakedFrameIsAProblem) {
    make();
    EXPECT_EQ(host.frames().problems(), Sentences{"A frame (bgra, 8 x 6) was never disposed."});
    EXPECT_EQ(host.frames().alive(), 1);
}

TEST_F(Frames, ADisposedFrameIsNoProblem) {
    EXPECT_EQ(ppix.Dispose(make()), 0);
    EXPECT_EQ(host.frames().problems(), Sentences{});
    EXPECT_EQ(host.frames().created(), 1);
    EXPECT_EQ(host.frames().disposed(), 1);
}

TEST_F(Frames, AnOverrunShowsWhenTheFrameIsDisposed) {
    const PPixHand frame = make();
    host.frames().view(frame)->pixels[768] = 0;
    ppix.Dispose(frame);
    EXPECT_EQ(host.violations(), Sentences{"A frame (bgra, 8 x 6) was overrun."});
}

TEST_F(Frames, DisposingTwiceFails) {
    const PPixHand frame = make();
    ppix.Dispose(frame);
    EXPECT_LT(ppix.Dispose(frame), 0);
    EXPECT_EQ(host.violations(), Sentences{"A frame was disposed that the host never gave out, or twice."});
}

TEST_F(Frames, UsingADisposedFrameFails) {
    const PPixHand frame = make();
    ppix.Dispose(frame);
    csSDK_int32 bytes = 0;
    EXPECT_LT(ppix.GetRowBytes(frame, &bytes), 0);
    EXPECT_EQ(host.violations(),
              Sentences{"A frame was used that the host never gave out, or after it was disposed."});
}

TEST_F(Frames, EveryPackedFormatHasASizeForEveryWidth) {
    for (const PixelFormatRow& row : pixelFormats()) {
        if (row.layout == PixelLayout::Packed) {
            EXPECT_TRUE(frameBytes(row, 1, 1, RowBytesPolicy::Tight).has_value()) << row.name;
        }
    }
}

TEST_F(Frames, AFrameTooBigForItsSizeFieldIsRefused) {
    const PixelFormatRow& row = *findPixelFormat(PrPixelFormat_BGRA_4444_32f);
    EXPECT_EQ(frameBytes(row, 1 << 20, 1 << 20, RowBytesPolicy::Tight), std::nullopt);
}

TEST(PixelFormatTable, HoldsEveryFormatOnce) {
    std::set<csSDK_uint32> codes;
    for (const PixelFormatRow& row : pixelFormats()) {
        codes.insert(row.format);
    }
    EXPECT_EQ(codes.size(), pixelFormats().size());
}

TEST(PixelFormatTable, AnUnknownCodeHasNoName) {
    EXPECT_EQ(pixelFormatName(0x61726762), "PrPixelFormat_BGRA_4444_8u");
    EXPECT_EQ(pixelFormatName(1), "????");
}

}  // namespace
