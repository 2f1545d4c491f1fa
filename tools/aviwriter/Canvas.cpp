#include "aviwriter/Canvas.h"

#include <stb/stb_easy_font.h>

#include <algorithm>

namespace aviwriter {

namespace {

struct Vertex {   // as written by the font library
    float x;
    float y;
    float z;
    float color;
};

}  // namespace

Canvas::Canvas(std::uint32_t width, std::uint32_t height)
    : m_width(static_cast<int>(width)), m_height(static_cast<int>(height)),
      m_pixels(std::size_t{width} * height) {
}

void Canvas::dot(int x, int y, Color color) {
    if (x >= 0 && x < m_width && y >= 0 && y < m_height) {
        m_pixels[index(x, y)] = color;
    }
}

void Canvas::fill(int x, int y, int width, int height, Color color) {
    const int left = std::max(x, 0);
    const int right = std::min(x + width, m_width);
    for (int row = std::max(y, 0); row < std::min(y + height, m_height); ++row) {
        for (int column = left; column < right; ++column) {
            m_pixels[index(column, row)] = color;
        }
    }
}

void Canvas::frame(Color color) {
    fill(0, 0, m_width, 1, color);
    fill(0, m_height - 1, m_width, 1, color);
    fill(0, 0, 1, m_height, color);
    fill(m_width - 1, 0, 1, m_height, color);
}

void Canvas::disc(int centreX, int centreY, int radius, Color color) {
    for (int y = -radius; y <= radius; ++y) {
        for (int x = -radius; x <= radius; ++x) {
            if (x * x + y * y <= radius * radius + radius) {   // the added radius rounds the four poles
                dot(centreX + x, centreY + y, color);
            }
        }
    }
}

void Canvas::upArrow(int x, int y, int width, int height, Color color) {
    const int head = height / 2;
    for (int row = 0; row < head; ++row) {
        const int half = (width * (row + 1)) / (2 * head);
        fill(x + width / 2 - half, y + row, 2 * half, 1, color);
    }
    const int stem = width / 3;
    fill(x + (width - stem) / 2, y + head, stem, height - head, color);
}

void Canvas::text(int x, int y, int scale, const std::string& characters, Color color) {
    std::string copy = characters;                      // the font library needs it writable
    std::vector<Vertex> vertices(copy.size() * 4 * 16 + 4);   // no letter has more than 16 strokes
    const int quads = stb_easy_font_print(0, 0, copy.data(), nullptr, vertices.data(),
                                          static_cast<int>(vertices.size() * sizeof(Vertex)));
    for (int quad = 0; quad < quads; ++quad) {
        const Vertex& first = vertices[static_cast<std::size_t>(quad) * 4];
        const Vertex& opposite = vertices[static_cast<std::size_t>(quad) * 4 + 2];
        fill(x + scale * static_cast<int>(first.x), y + scale * static_cast<int>(first.y),
             scale * static_cast<int>(opposite.x - first.x), scale * static_cast<int>(opposite.y - first.y), color);
    }
}

int textWidth(const std::string& characters) {
    std::string copy = characters;
    return stb_easy_font_width(copy.data());
}

}  // namespace aviwriter
