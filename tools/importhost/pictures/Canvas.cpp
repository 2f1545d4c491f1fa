#include "importhost/pictures/Canvas.h"

#include "importhost/pictures/ThirdParty.h"

#include <algorithm>

namespace importhost {

namespace {

constexpr int kCheckerSquare = 8;
constexpr int kCheckerDark = 96;
constexpr int kCheckerLight = 144;

// 8-bit RGB, with a checkerboard under transparent parts.
std::vector<std::uint8_t> opaqueRgb(const Picture& picture) {
    const auto channels = static_cast<std::size_t>(picture.channels());
    const int shift = picture.bits - 8;
    std::vector<std::uint8_t> rgb;
    rgb.reserve(picture.components.size() / channels * 3);
    for (std::size_t pixel = 0; pixel < picture.components.size() / channels; ++pixel) {
        const std::uint16_t* component = &picture.components[pixel * channels];
        const int x = static_cast<int>(pixel % static_cast<std::size_t>(picture.width));
        const int y = static_cast<int>(pixel / static_cast<std::size_t>(picture.width));
        const int behind = (x / kCheckerSquare + y / kCheckerSquare) % 2 == 0 ? kCheckerDark : kCheckerLight;
        const int alpha = picture.hasAlpha ? component[3] >> shift : 255;
        for (int i = 0; i < 3; ++i) {
            rgb.push_back(static_cast<std::uint8_t>(((component[i] >> shift) * alpha + behind * (255 - alpha)) / 255));
        }
    }
    return rgb;
}

}  // namespace

Canvas::Canvas(int width, int height, Ink background) : m_picture{width, height, 8, false, {}} {
    m_picture.components.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3);
    fill(0, 0, width, height, background);
}

void Canvas::fill(int x, int y, int width, int height, Ink ink) {
    const int left = std::max(x, 0);
    const int right = std::min(x + width, m_picture.width);
    for (int row = std::max(y, 0); row < std::min(y + height, m_picture.height); ++row) {
        for (int column = left; column < right; ++column) {
            std::uint16_t* pixel =
                &m_picture.components[(static_cast<std::size_t>(row) * static_cast<std::size_t>(m_picture.width) +
                                       static_cast<std::size_t>(column)) * 3];
            pixel[0] = ink.red;
            pixel[1] = ink.green;
            pixel[2] = ink.blue;
        }
    }
}

void Canvas::text(int x, int y, const std::string& text, int size, Ink ink) {
    for (const TextQuad& quad : textQuads(text)) {
        const auto at = [size](float units) { return static_cast<int>(units) * size; };
        fill(x + at(quad.left), y + at(quad.top), at(quad.right - quad.left), at(quad.bottom - quad.top), ink);
    }
}

int Canvas::textWidth(const std::string& text, int size) { return textUnits(text) * size; }

void Canvas::picture(int x, int y, int width, int height, const Picture& picture) {
    const std::vector<std::uint8_t> scaled =
        resizeRgb(opaqueRgb(picture), picture.width, picture.height, width, height);
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            const std::uint8_t* pixel = &scaled[(static_cast<std::size_t>(row) * static_cast<std::size_t>(width) +
                                                 static_cast<std::size_t>(column)) * 3];
            fill(x + column, y + row, 1, 1, {pixel[0], pixel[1], pixel[2]});
        }
    }
}

}  // namespace importhost
