// A picture to draw on: red, green, blue and alpha, 16 bits each.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace aviwriter {

struct Color {              // 0 ... 65535 each
    std::uint16_t r = 0;
    std::uint16_t g = 0;
    std::uint16_t b = 0;
    std::uint16_t a = 0xFFFF;

    bool operator==(const Color&) const = default;
};

// Coordinates are pixels from the top left corner. Anything outside the picture is clipped.
class Canvas {
public:
    Canvas(std::uint32_t width, std::uint32_t height);

    int width() const { return m_width; }
    int height() const { return m_height; }
    const Color& at(int x, int y) const { return m_pixels[index(x, y)]; }   // must be inside

    void dot(int x, int y, Color color);
    void fill(int x, int y, int width, int height, Color color);
    void frame(Color color);                                     // the outermost pixels on all four sides
    void disc(int centreX, int centreY, int radius, Color color);
    void upArrow(int x, int y, int width, int height, Color color);

    // Draws printable ASCII. `scale` is in pixels per font unit; capital letters are 7 units high.
    void text(int x, int y, int scale, const std::string& characters, Color color);

private:
    std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) + static_cast<std::size_t>(x);
    }

    int m_width;
    int m_height;
    std::vector<Color> m_pixels;
};

constexpr int kTextHeight = 7;                       // height of a capital letter in font units
int textWidth(const std::string& characters);        // in font units

}  // namespace aviwriter
