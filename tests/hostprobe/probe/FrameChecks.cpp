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
        if (error < 0 || !m_frame) {
            complain(Sentence::FrameRefused, {m_shape});
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
    bool expectGood(const char* function, prSuiteError error) const {
        if (error < 0) {
            complain(Sentence::CallFailed, {function, std::to_string(error)});
        }
        return error >= 0;
    }

    void checkShape() const {
        PrPixelFormat format = PrPixelFormat_Invalid;
        if (expectGood("GetPixelFormat", m_frames.GetPixelFormat(m_frame, &format)) && format != m_facts.format) {
            complain(Sentence::FrameFormat, {m_shape});
        }
        prRect bounds;
        if (expectGood("GetBounds", m_frames.GetBounds(m_frame, &bounds)) &&
            std::memcmp(&bounds, &m_bounds, sizeof(bounds)) != 0) {
            complain(Sentence::FrameBounds, {m_shape});
        }
    }

    void checkFacts() const {
        csSDK_uint32 num = 0;
        csSDK_uint32 den = 0;
        if (expectGood("GetPixelAspectRatio", m_frames.GetPixelAspectRatio(m_frame, &num, &den)) &&
            (num == 0 || den == 0)) {
            complain(Sentence::PixelAspect, {m_shape, std::to_string(num), std::to_string(den)});
        }
        csSDK_int32 milliseconds = 0;
        if (expectGood("GetRenderTime", m_frames.GetRenderTime(m_frame, &milliseconds)) && milliseconds < 0) {
            complain(Sentence::RenderTime, {m_shape, std::to_string(milliseconds)});
        }
        csSDK_size_t keyBytes = 0;
        if (!expectGood("GetUniqueKeySize", m_frames.GetUniqueKeySize(&keyBytes))) {
            return;
        }
        if (keyBytes == 0) {
            complain(Sentence::KeySize, {std::to_string(keyBytes)});
            return;
        }
        std::vector<unsigned char> key(static_cast<std::size_t>(keyBytes));
        expectGood("GetUniqueKey", m_frames.GetUniqueKey(m_frame, key.data(), keyBytes));
    }

    // False when the frame cannot be written to by what it says of its rows.
    bool checkRows() {
        if (!expectGood("GetRowBytes", m_frames.GetRowBytes(m_frame, &m_rowBytes))) {
            return false;
        }
        const csSDK_int32 tight = m_facts.tightRowBytes(m_width);
        const csSDK_int32 length = m_rowBytes < 0 ? -m_rowBytes : m_rowBytes;
        if (length < tight) {
            complain(Sentence::RowsTooShort, {m_shape, std::to_string(m_rowBytes)});
            return false;
        }
        const csSDK_int32 wanted = expected().rows ? paddedRowBytes(tight, *expected().rows) : length;
        if (length != wanted) {
            complain(Sentence::RowPolicy, {m_shape, std::to_string(m_rowBytes), std::to_string(wanted)});
        }
        checkSizes(length);
        return m_rowBytes > 0;
    }

    void checkSizes(csSDK_int32 length) const {
        if (!m_image) {
            return;
        }
        csSDK_int32 oneRow = 0;
        csSDK_int32 all = 0;
        if (!expectGood("GetSizeForPixelBuffer",
                        m_image->GetSizeForPixelBuffer(m_facts.format, m_width, 1, &oneRow)) ||
            !expectGood("GetSizeForPixelBuffer",
                        m_image->GetSizeForPixelBuffer(m_facts.format, m_width, m_height, &all))) {
            return;
        }
        if (oneRow != length) {
            complain(Sentence::RowSize, {m_shape, std::to_string(oneRow), std::to_string(length)});
        } else if (all < length * m_height) {
            complain(Sentence::FrameSize, {m_shape, std::to_string(all), std::to_string(length * m_height)});
        }
    }

    bool checkPixels() {
        char* readable = nullptr;
        m_frames.GetPixels(m_frame, PrPPixBufferAccess_ReadOnly, &readable);
        if (readable) {
            complain(Sentence::ReadablePixels, {m_shape});
        }
        if (!expectGood("GetPixels", m_frames.GetPixels(m_frame, PrPPixBufferAccess_WriteOnly, &m_pixels))) {
            return false;
        }
        if (!m_pixels) {
            complain(Sentence::NoPixels, {m_shape, "write"});
            return false;
        }
        if (reinterpret_cast<std::uintptr_t>(m_pixels) % kAlignment != 0) {
            complain(Sentence::PixelsMisaligned, {m_shape});
            return false;
        }
        return true;
    }

    // Up to the very last byte of the last row: the host's own guards tell when it lent less than it said.
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
        if (!pixels) {
            complain(Sentence::NoPixels, {m_shape, "read"});
        } else if (clone == m_frame || rowBytes != m_rowBytes || std::memcmp(pixels, m_pixels, bytes()) != 0) {
            complain(Sentence::CloneDiffers, {m_shape});
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
    if (frame) {
        complain(Sentence::ReadOnlyFrame);
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
