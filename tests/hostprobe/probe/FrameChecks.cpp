// The PPix Creator Suite and the PPix Suite.
#include "probe/Complaints.h"
#include "probe/Expectations.h"
#include "probe/FormatFacts.h"
#include "probe/Names.h"
#include "probe/SuiteChecks.h"

#include <cstring>
#include <vector>

namespace hostprobe {

namespace {

constexpr std::uintptr_t kAlignment = 16;

// One pixel, odd sides, a whole number of every format's groups, and a frame that does not start at 0.
constexpr csSDK_int32 kBounds[][4] = {{0, 0, 1, 1}, {0, 0, 37, 5}, {0, 0, 96, 8}, {8, 4, 40, 20}};

prRect rectangle(const csSDK_int32 (&sides)[4]) {
    prRect bounds;
    bounds.left = sides[0];
    bounds.top = sides[1];
    bounds.right = sides[2];
    bounds.bottom = sides[3];
    return bounds;
}

csSDK_int32 paddedRowBytes(csSDK_int32 tight, RowPadding padding) {
    switch (padding) {
        case RowPadding::None: return tight;
        case RowPadding::Thirteen: return tight + 13;
        case RowPadding::To128: break;
    }
    return (tight + 127) / 128 * 128;
}

// One frame of a given shape, tried out from creation to disposal.
class FrameTrial {
public:
    FrameTrial(const PrSDKPPixCreatorSuite& creator, const PrSDKPPixSuite& frames,
               const PrSDKImageProcessingSuite* image, const FormatFacts& facts, const prRect& bounds)
        : m_creator(creator), m_frames(frames), m_image(image), m_facts(facts), m_bounds(bounds),
          m_width(bounds.right - bounds.left), m_height(bounds.bottom - bounds.top),
          m_shape(formatName(facts.format) + ", " + std::to_string(m_width) + " x " + std::to_string(m_height)) {}

    void run() {
        const prSuiteError error =
            m_creator.CreatePPix(&m_frame, PrPPixBufferAccess_WriteOnly, m_facts.format, &m_bounds);
        if (!expect(error >= 0 && m_frame, Sentence::FrameRefused, {m_shape})) {
            return;
        }
        checkShape();
        checkFacts();
        if (checkRows() && checkPixels()) {
            fill();
            checkClone();
        }
        expectGood("Dispose", m_frames.Dispose(m_frame));
    }

private:
    void checkShape() const {
        PrPixelFormat format = PrPixelFormat_Invalid;
        if (expectGood("GetPixelFormat", m_frames.GetPixelFormat(m_frame, &format))) {
            expect(format == m_facts.format, Sentence::FrameFormat, {m_shape});
        }
        prRect bounds;
        if (expectGood("GetBounds", m_frames.GetBounds(m_frame, &bounds))) {
            expect(std::memcmp(&bounds, &m_bounds, sizeof(bounds)) == 0, Sentence::FrameBounds, {m_shape});
        }
    }

    void checkFacts() const {
        csSDK_uint32 num = 0;
        csSDK_uint32 den = 0;
        if (expectGood("GetPixelAspectRatio", m_frames.GetPixelAspectRatio(m_frame, &num, &den))) {
            expect(num != 0 && den != 0, Sentence::PixelAspect, {m_shape, std::to_string(num), std::to_string(den)});
        }
        csSDK_int32 milliseconds = 0;
        if (expectGood("GetRenderTime", m_frames.GetRenderTime(m_frame, &milliseconds))) {
            expect(milliseconds >= 0, Sentence::RenderTime, {m_shape, std::to_string(milliseconds)});
        }
        csSDK_size_t keyBytes = 0;
        if (expectGood("GetUniqueKeySize", m_frames.GetUniqueKeySize(&keyBytes)) &&
            expect(keyBytes != 0, Sentence::KeySize, {std::to_string(keyBytes)})) {
            std::vector<unsigned char> key(static_cast<std::size_t>(keyBytes));
            expectGood("GetUniqueKey", m_frames.GetUniqueKey(m_frame, key.data(), keyBytes));
        }
    }

    // Returns false if the frame cannot be written to by what it says of its rows.
    bool checkRows() {
        if (!expectGood("GetRowBytes", m_frames.GetRowBytes(m_frame, &m_rowBytes))) {
            return false;
        }
        const csSDK_int32 tight = m_facts.tightRowBytes(m_width);
        const csSDK_int32 length = m_rowBytes < 0 ? -m_rowBytes : m_rowBytes;
        if (!expect(length >= tight, Sentence::RowsTooShort, {m_shape, std::to_string(m_rowBytes)})) {
            return false;
        }
        const csSDK_int32 wanted = expected().rows ? paddedRowBytes(tight, *expected().rows) : length;
        expect(length == wanted, Sentence::RowPolicy, {m_shape, std::to_string(m_rowBytes), std::to_string(wanted)});
        checkSizes(length);
        return m_rowBytes > 0;
    }

    void checkSizes(csSDK_int32 length) const {
        if (!m_image) {
            return;
        }
        csSDK_int32 oneRow = 0;
        csSDK_int32 all = 0;
        const auto ask = m_image->GetSizeForPixelBuffer;
        if (expectGood("GetSizeForPixelBuffer", ask(m_facts.format, m_width, 1, &oneRow)) &&
            expectGood("GetSizeForPixelBuffer", ask(m_facts.format, m_width, m_height, &all)) &&
            expect(oneRow == length, Sentence::RowSize, {m_shape, std::to_string(oneRow), std::to_string(length)})) {
            expect(all >= length * m_height, Sentence::FrameSize,
                   {m_shape, std::to_string(all), std::to_string(length * m_height)});
        }
    }

    bool checkPixels() {
        char* readable = nullptr;
        m_frames.GetPixels(m_frame, PrPPixBufferAccess_ReadOnly, &readable);
        expect(!readable, Sentence::ReadablePixels, {m_shape});
        return expectGood("GetPixels", m_frames.GetPixels(m_frame, PrPPixBufferAccess_WriteOnly, &m_pixels)) &&
               expect(m_pixels, Sentence::NoPixels, {m_shape, "write"}) &&
               expect(reinterpret_cast<std::uintptr_t>(m_pixels) % kAlignment == 0, Sentence::PixelsMisaligned,
                      {m_shape});
    }

    // Up to the last byte of the last row: the host's own guards show a buffer that is smaller than it said.
    void fill() {
        for (std::size_t i = 0; i < bytes(); ++i) {
            m_pixels[i] = static_cast<char>(i * 11 + 3);
        }
    }

    void checkClone() const {
        PPixHand clone = nullptr;
        if (!expectGood("ClonePPix", m_creator.ClonePPix(m_frame, &clone, PrPPixBufferAccess_ReadOnly))) {
            return;
        }
        char* pixels = nullptr;
        csSDK_int32 rowBytes = 0;
        m_frames.GetPixels(clone, PrPPixBufferAccess_ReadOnly, &pixels);
        m_frames.GetRowBytes(clone, &rowBytes);
        if (expect(pixels, Sentence::NoPixels, {m_shape, "read"})) {
            expect(clone != m_frame && rowBytes == m_rowBytes && std::memcmp(pixels, m_pixels, bytes()) == 0,
                   Sentence::CloneDiffers, {m_shape});
        }
        if (clone != m_frame) {
            expectGood("Dispose", m_frames.Dispose(clone));
        }
    }

    std::size_t bytes() const { return static_cast<std::size_t>(m_rowBytes) * static_cast<std::size_t>(m_height); }

    const PrSDKPPixCreatorSuite& m_creator;
    const PrSDKPPixSuite& m_frames;
    const PrSDKImageProcessingSuite* m_image;
    const FormatFacts& m_facts;
    const prRect m_bounds;
    csSDK_int32 m_width;
    csSDK_int32 m_height;
    std::string m_shape;
    PPixHand m_frame = nullptr;
    csSDK_int32 m_rowBytes = 0;
    char* m_pixels = nullptr;
};

void checkReadOnlyIsRefused(const PrSDKPPixCreatorSuite& creator, const PrSDKPPixSuite& frames) {
    const prRect bounds = rectangle(kBounds[0]);
    PPixHand frame = nullptr;
    creator.CreatePPix(&frame, PrPPixBufferAccess_ReadOnly, PrPixelFormat_BGRA_4444_8u, &bounds);
    if (!expect(!frame, Sentence::ReadOnlyFrame)) {
        frames.Dispose(frame);
    }
}

}  // namespace

void checkFrameSuites(const PrSDKPPixCreatorSuite& creator, const PrSDKPPixSuite& frames,
                      const PrSDKImageProcessingSuite* image) {
    checkReadOnlyIsRefused(creator, frames);
    for (const FormatFacts& facts : kFormatFacts) {
        for (const auto& sides : kBounds) {
            FrameTrial(creator, frames, image, facts, rectangle(sides)).run();
        }
    }
}

}  // namespace hostprobe
