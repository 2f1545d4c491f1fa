#include "aviwriter/TestPicture.h"

#include "aviwriter/ToPicture.h"
#include "aviwriter/Types.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>

namespace aviwriter {

namespace {

constexpr std::uint16_t kFull = 0xFFFF;
constexpr std::uint16_t kThreeQuarters = 0xBFFF;

constexpr Color kWhite{kFull, kFull, kFull};
constexpr Color kBlack{0, 0, 0};
constexpr Color kGround{0x1800, 0x1A00, 0x2000};
constexpr Color kMotionGround{0x3000, 0x3600, 0x4200};
constexpr Color kBox{0xF000, 0x8800, 0x1800};
constexpr Color kDisc{0x3000, 0xD800, 0xE800};

constexpr std::uint32_t kBoxPeriod = 50;     // frames until a shape is back at its start
constexpr std::uint32_t kDiscPeriod = 36;

// The picture's bands from top to bottom, as the percentage of the height at which each ends.
struct Bands {
    int title;
    int bars;
    int ramp;
    int motion;
    int patches;
};

Bands bandsOf(const Canvas& canvas) {
    const int h = canvas.height();
    return {h * 16 / 100, h * 44 / 100, h * 56 / 100, h * 80 / 100, h};
}

int titleScale(const Canvas& canvas) {
    return std::min(bandsOf(canvas).title / (2 * kTextHeight), canvas.width() / 100);
}

void drawTitle(Canvas& canvas, const std::string& code) {
    const int scale = titleScale(canvas);
    const int height = scale * kTextHeight;
    const int y = (bandsOf(canvas).title - height) / 2;
    canvas.upArrow(4 * scale, y, 7 * scale, height, kWhite);
    canvas.text(14 * scale, y, scale, "TOP", kWhite);
    canvas.text((canvas.width() - scale * textWidth(code)) / 2, y, scale, code, kDisc);
}

void drawFrameNumber(Canvas& canvas, std::uint32_t number) {
    std::string digits = std::to_string(number);
    digits.insert(0, digits.size() < 4 ? 4 - digits.size() : 0, '0');
    const int scale = titleScale(canvas);
    const int y = (bandsOf(canvas).title - scale * kTextHeight) / 2;
    canvas.text(canvas.width() - scale * (textWidth(digits) + 4), y, scale, digits, kWhite);
}

void drawBars(Canvas& canvas) {
    constexpr std::uint16_t on = kThreeQuarters;
    constexpr std::array<Color, 8> bars = {{{on, on, on}, {on, on, 0}, {0, on, on}, {0, on, 0},
                                           {on, 0, on}, {on, 0, 0}, {0, 0, on}, {0, 0, 0}}};
    const Bands bands = bandsOf(canvas);
    for (int i = 0; i < 8; ++i) {
        const int left = canvas.width() * i / 8;
        const int right = canvas.width() * (i + 1) / 8;
        canvas.fill(left, bands.title, right - left, bands.bars - bands.title, bars[static_cast<std::size_t>(i)]);
    }
}

// Each row is offset by a fraction of a pixel from the one above, so that all rows together have far more levels than
// the picture is wide: deep types show all their code values.
void drawRamp(Canvas& canvas) {
    const Bands bands = bandsOf(canvas);
    const std::int64_t rows = bands.ramp - bands.bars;
    const std::int64_t last = std::max<std::int64_t>(canvas.width() * rows - 1, 1);
    for (int y = 0; y < rows; ++y) {
        for (int x = 0; x < canvas.width(); ++x) {
            const auto level = static_cast<std::uint16_t>((x * rows + y) * kFull / last);
            canvas.dot(x, bands.bars + y, {level, level, level});
        }
    }
}

// Position in frame `number` of something that moves 0 ... length ... 0 within `period` frames.
int backAndForth(std::uint32_t number, std::uint32_t period, int length) {
    const std::uint32_t phase = number % period;
    const std::uint32_t way = std::min(phase, period - phase);
    return static_cast<int>(std::int64_t{length} * 2 * way / period);
}

void drawMotion(Canvas& canvas, std::uint32_t number) {
    const Bands bands = bandsOf(canvas);
    const int height = bands.motion - bands.ramp;
    const int side = height * 5 / 8;
    const int radius = height / 4;
    canvas.fill(backAndForth(number, kBoxPeriod, canvas.width() - side), bands.ramp + (height - side) / 2, side, side,
                kBox);
    canvas.disc(canvas.width() - 1 - radius - backAndForth(number, kDiscPeriod, canvas.width() - 2 * radius),
                bands.ramp + radius + backAndForth(number, kDiscPeriod / 3, height - 2 * radius - 1), radius, kDisc);
}

void drawCentred(Canvas& canvas, int left, int top, int width, int height, const std::string& words, Color color) {
    const int scale = std::min(height / (2 * kTextHeight), width / (textWidth(words) + 4));
    canvas.text(left + (width - scale * textWidth(words)) / 2, top + (height - scale * kTextHeight) / 2, scale, words,
                color);
}

void drawPatches(Canvas& canvas) {
    constexpr std::array<Color, 3> colors = {{{kFull, 0, 0}, {0, kFull, 0}, {0, 0, kFull}}};
    constexpr std::array<const char*, 3> letters = {"R", "G", "B"};
    const int top = bandsOf(canvas).motion;
    const int width = canvas.width() / 10;
    for (int i = 0; i < 3; ++i) {
        const auto n = static_cast<std::size_t>(i);
        canvas.fill(i * width, top, width, canvas.height() - top, colors[n]);
        drawCentred(canvas, i * width, top, width, canvas.height() - top, letters[n], n == 1 ? kBlack : kWhite);
    }
}

void drawAlphaStrip(Canvas& canvas, int left, int width) {
    const int top = bandsOf(canvas).motion;
    const int height = canvas.height() - top;
    for (int x = 0; x < width; ++x) {
        const auto alpha = static_cast<std::uint16_t>(std::int64_t{kFull} * x / std::max(width - 1, 1));
        canvas.fill(left + x, top, 1, height, {kBox.r, kBox.g, kBox.b, alpha});
    }
    drawCentred(canvas, left, top, width, height, "ALPHA", kBlack);
}

void drawDescription(Canvas& canvas, int left, int width, const standin::StreamInfo& info) {
    const int top = bandsOf(canvas).motion;
    const int height = (canvas.height() - top) / 2;
    const std::string coding = std::to_string(info.width) + "x" + std::to_string(info.height) +
                               (info.colorSpace == 1 ? " Rec.601" : " Rec.709") +
                               (info.range == 1 ? " limited" : " full");
    drawCentred(canvas, left, top, width, height, typeWords(info.type), kWhite);
    drawCentred(canvas, left, top + height, width, height, coding, kWhite);
}

Canvas drawStill(const standin::StreamInfo& info) {
    if (info.width == 0 || info.height == 0) {
        throw std::invalid_argument("a picture needs at least one pixel");
    }
    Canvas canvas(info.width, info.height);
    const Bands bands = bandsOf(canvas);
    canvas.fill(0, 0, canvas.width(), canvas.height(), kGround);
    canvas.fill(0, bands.ramp, canvas.width(), bands.motion - bands.ramp, kMotionGround);
    drawTitle(canvas, typeCode(info.type));
    drawBars(canvas);
    drawRamp(canvas);
    drawPatches(canvas);
    int left = canvas.width() / 10 * 3;
    if (standin::typeLayout(info.type).alpha) {
        drawAlphaStrip(canvas, left, canvas.width() / 4);
        left += canvas.width() / 4;
    }
    drawDescription(canvas, left, canvas.width() - left, info);
    return canvas;
}

}  // namespace

TestPicture::TestPicture(const standin::StreamInfo& info) : m_info(info), m_still(drawStill(info)) {
}

standin::Picture TestPicture::frame(std::uint32_t number) const {
    return toPicture(drawing(number), m_info);
}

Canvas TestPicture::drawing(std::uint32_t number) const {
    Canvas canvas = m_still;
    drawFrameNumber(canvas, number);
    drawMotion(canvas, number);
    canvas.frame(kWhite);
    return canvas;
}

}  // namespace aviwriter
