#include "importhost/pictures/ContactSheet.h"

#include "importhost/pictures/Canvas.h"

#include <algorithm>
#include <cmath>

namespace importhost {

namespace {

constexpr Ink kBackground = {24, 26, 30};
constexpr Ink kFrame = {58, 62, 70};
constexpr Ink kMissing = {44, 30, 32};
constexpr Ink kTitle = {238, 240, 244};
constexpr Ink kLabel = {190, 196, 206};
constexpr Ink kFaint = {132, 140, 152};
constexpr Ink kAlarm = {236, 112, 99};

constexpr int kMargin = 24;
constexpr int kGap = 20;
constexpr int kTitleSize = 3;
constexpr int kTextSize = 2;
constexpr int kTitleLine = 34;
constexpr int kTextLine = 24;
constexpr int kHeaderHeight = kTitleLine + kTextLine + 14;
constexpr int kCaptionHeight = 26;

// Truncates a text that is too long.
std::string fitted(std::string text, int width, int size) {
    if (Canvas::textWidth(text, size) <= width) {
        return text;
    }
    while (!text.empty() && Canvas::textWidth(text + "...", size) > width) {
        text.pop_back();
    }
    return text + "...";
}

void drawTile(Canvas& canvas, const SheetTile& tile, int x, int y, const SheetLayout& layout) {
    canvas.fill(x - 1, y - 1, layout.tileWidth + 2, layout.tileHeight + 2, kFrame);
    if (tile.picture) {
        canvas.picture(x, y, layout.tileWidth, layout.tileHeight, *tile.picture);
    } else {
        canvas.fill(x, y, layout.tileWidth, layout.tileHeight, kMissing);
        const std::string note = fitted(tile.note, layout.tileWidth - 16, kTextSize);
        canvas.text(x + (layout.tileWidth - Canvas::textWidth(note, kTextSize)) / 2, y + layout.tileHeight / 2 - 7,
                    note, kTextSize, kAlarm);
    }
    const int captionY = y + layout.tileHeight + 8;
    const int timeWidth = Canvas::textWidth(tile.time, kTextSize);
    canvas.text(x, captionY, tile.label, kTextSize, kLabel);
    // Narrow tiles show only the number.
    if (Canvas::textWidth(tile.label, kTextSize) + timeWidth + 8 <= layout.tileWidth) {
        canvas.text(x + layout.tileWidth - timeWidth, captionY, tile.time, kTextSize, kFaint);
    }
}

}  // namespace

int tileHeightFor(int tileWidth, int frameWidth, int frameHeight) {
    if (frameWidth <= 0 || frameHeight <= 0) {
        return tileWidth;
    }
    const double height = static_cast<double>(tileWidth) * frameHeight / frameWidth;
    return std::clamp(static_cast<int>(std::lround(height)), 1, 4 * tileWidth);
}

Picture drawSheet(const std::string& title, const std::string& subtitle, const std::vector<SheetTile>& tiles,
                  const SheetLayout& layout) {
    const int count = static_cast<int>(tiles.size());
    const int columns = std::clamp(count, 1, layout.columns);
    const int rows = (count + columns - 1) / columns;
    const int stepX = layout.tileWidth + kGap;
    const int stepY = layout.tileHeight + kCaptionHeight + kGap;
    const int width = 2 * kMargin + columns * stepX - kGap;
    const int headerHeight = title.empty() && subtitle.empty() ? 0 : kHeaderHeight;
    Canvas canvas(width, 2 * kMargin + headerHeight + rows * stepY - kGap, kBackground);
    canvas.text(kMargin, kMargin, fitted(title, width - 2 * kMargin, kTitleSize), kTitleSize, kTitle);
    canvas.text(kMargin, kMargin + kTitleLine, fitted(subtitle, width - 2 * kMargin, kTextSize), kTextSize, kFaint);
    for (int i = 0; i < count; ++i) {
        drawTile(canvas, tiles[static_cast<std::size_t>(i)], kMargin + i % columns * stepX,
                 kMargin + headerHeight + i / columns * stepY, layout);
    }
    return canvas.result();
}

}  // namespace importhost
