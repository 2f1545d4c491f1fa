// An 8-bit RGB picture to draw on: rectangles, text, scaled pictures.
#pragma once

#include "importhost/pictures/Picture.h"

#include <cstdint>
#include <string>

namespace importhost {

struct Ink {
    std::uint8_t red, green, blue;
};

class Canvas {
public:
    Canvas(int width, int height, Ink background);

    // Parts outside the canvas are clipped.
    void fill(int x, int y, int width, int height, Ink ink);

    // Letters are `size` * 7 pixels high; non-ASCII characters appear as '?'.
    void text(int x, int y, const std::string& text, int size, Ink ink);
    static int textWidth(const std::string& text, int size);

    // Draws a picture scaled to the rectangle. Transparent parts show a checkerboard.
    void picture(int x, int y, int width, int height, const Picture& picture);

    const Picture& result() const { return m_picture; }

private:
    Picture m_picture;
};

}  // namespace importhost
