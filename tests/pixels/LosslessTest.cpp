// Samples that must arrive unchanged: read back from the host's buffer one by one and compared with the source, without
// any colour arithmetic.
#include "pixels/Delivery.h"
#include "pixels/SourcePictures.h"

#include "support/TempFolder.h"

namespace pixels {

namespace {

// Odd in both directions, and not a multiple of a v210 group.
constexpr std::uint32_t kWidth = 31;
constexpr std::uint32_t kHeight = 7;

class Lossless : public ::testing::Test {
protected:
    void deliver(std::uint32_t type, std::uint32_t range, PrPixelFormat format) {
        const standin::StreamInfo info = {type, kWidth, kHeight, kRec709, range};
        m_picture = noise(info, 77);
        writeClip(m_folder.folder() / "clip.avi", info, {m_picture});
        hostkit::FrameClip clip(m_importer.session(), m_folder.folder() / "clip.avi");
        const hostkit::FrameAnswer answer = clip.frame(0, format);
        const std::size_t bytes = rowPixelBytes(hostFormat(format), kWidth);
        for (std::uint32_t y = 0; y < kHeight; ++y) {
            m_rows.push_back(bytesOfRow(answer, kHeight - 1 - y, bytes));   // the lowest address is the bottom row
            ASSERT_EQ(m_rows.back().size(), bytes);
        }
    }

    std::uint32_t byteAt(std::uint32_t y, std::size_t byte) const { return m_rows[y][byte]; }

    std::uint32_t wordAt(std::uint32_t y, std::size_t word) const {
        const Row& row = m_rows[y];
        return row[4 * word] | row[4 * word + 1] << 8U | row[4 * word + 2] << 16U |
               static_cast<std::uint32_t>(row[4 * word + 3]) << 24U;
    }

    // A ten-bit component of a v210 row by its number; three are in a word.
    std::uint32_t v210At(std::uint32_t y, std::size_t component) const {
        return wordAt(y, component / 3) >> (10 * (component % 3)) & 1023;
    }

    // Compares one plane: `found` reads a component from the host's rows.
    template <class Found>
    void expectPlane(std::size_t plane, Found found, std::uint32_t xShared = 1, std::uint32_t yShared = 1) {
        const standin::Plane& samples = m_picture.planes[plane];
        for (std::uint32_t y = 0; y < kHeight; ++y) {
            for (std::uint32_t x = 0; x < kWidth; ++x) {
                const std::size_t place = std::size_t{y / yShared} * samples.width + x / xShared;
                ASSERT_EQ(found(y, x), samples.samples[place]) << "plane " << plane << ", " << x << " " << y;
            }
        }
    }

    void expectByte(std::size_t plane, std::size_t first) {
        expectPlane(plane, [=, this](auto y, auto x) { return byteAt(y, 4 * x + first); });
    }

    // Packed 4:2:2: luma in every second byte, chroma once per two pixels.
    void expectLuma(std::size_t first) {
        expectPlane(0, [=, this](auto y, auto x) { return byteAt(y, 2 * x + first); });
    }
    void expectSharedChroma(std::size_t plane, std::size_t first, std::uint32_t yShared) {
        expectPlane(plane, [=, this](auto y, auto x) { return byteAt(y, x / 2 * 4 + first); }, 2, yShared);
    }

    TempFolder m_folder;
    LoadedImporter m_importer;
    standin::Picture m_picture;
    std::vector<Row> m_rows;        // from the top of the picture
};

TEST_F(Lossless, EightBitRgbaArrivesUnchangedInBgra) {
    deliver(102, kFull, PrPixelFormat_BGRA_4444_8u);
    expectByte(2, 0);
    expectByte(1, 1);
    expectByte(0, 2);
    expectByte(3, 3);
}

TEST_F(Lossless, EightBitRgbaArrivesUnchangedInArgb) {
    deliver(102, kFull, PrPixelFormat_ARGB_4444_8u);
    expectByte(3, 0);
    expectByte(0, 1);
    expectByte(1, 2);
    expectByte(2, 3);
}

TEST_F(Lossless, EightBitRgbArrivesUnchangedInBgrx) {
    deliver(101, kFull, PrPixelFormat_BGRX_4444_8u);
    expectByte(2, 0);
    expectByte(1, 1);
    expectByte(0, 2);
}

TEST_F(Lossless, EightBitYuvaArrivesUnchangedInVuya) {
    deliver(106, kLimited, PrPixelFormat_VUYA_4444_8u_709);
    expectByte(2, 0);
    expectByte(1, 1);
    expectByte(0, 2);
    expectByte(3, 3);
}

TEST_F(Lossless, EightBitYuv444ArrivesUnchangedInVuyx) {
    deliver(103, kLimited, PrPixelFormat_VUYX_4444_8u_709);
    expectByte(2, 0);
    expectByte(1, 1);
    expectByte(0, 2);
}

TEST_F(Lossless, EightBitYuv422ArrivesUnchangedInYuyv) {
    deliver(104, kLimited, PrPixelFormat_YUYV_422_8u_709);
    expectLuma(0);
    expectSharedChroma(1, 1, 1);
    expectSharedChroma(2, 3, 1);
}

TEST_F(Lossless, EightBitYuv422ArrivesUnchangedInUyvy) {
    deliver(104, kLimited, PrPixelFormat_UYVY_422_8u_709);
    expectLuma(1);
    expectSharedChroma(1, 0, 1);
    expectSharedChroma(2, 2, 1);
}

TEST_F(Lossless, ChromaOfEightBitYuv420ServesTwoRows) {
    deliver(105, kLimited, PrPixelFormat_YUYV_422_8u_709);
    expectLuma(0);
    expectSharedChroma(1, 1, 2);
    expectSharedChroma(2, 3, 2);
}

TEST_F(Lossless, EightBitGreyArrivesUnchangedInLuma) {
    deliver(107, kLimited, PrPixelFormat_YUYV_422_8u_709);
    expectLuma(0);
}

TEST_F(Lossless, TenBitYuv422ArrivesUnchangedInV210) {
    deliver(108, kLimited, PrPixelFormat_V210_422_10u_709);
    // Components of a v210 row run U Y V Y, as in UYVY.
    expectPlane(0, [this](auto y, auto x) { return v210At(y, 2 * x + 1); });
    expectPlane(1, [this](auto y, auto x) { return v210At(y, x / 2 * 4); }, 2);
    expectPlane(2, [this](auto y, auto x) { return v210At(y, x / 2 * 4 + 2); }, 2);
}

TEST_F(Lossless, TenBitRgbArrivesUnchangedInTenBitRgb) {
    deliver(109, kFull, PrPixelFormat_RGB_444_10u);
    expectPlane(0, [this](auto y, auto x) { return wordAt(y, x) >> 22; });
    expectPlane(1, [this](auto y, auto x) { return wordAt(y, x) >> 12 & 1023; });
    expectPlane(2, [this](auto y, auto x) { return wordAt(y, x) >> 2 & 1023; });
}

}  // namespace

}  // namespace pixels
