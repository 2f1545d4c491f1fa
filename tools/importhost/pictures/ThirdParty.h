// The functions of stb in use. stb is header-only: declared here, compiled once.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace importhost {

struct TextQuad {
    float left, top, right, bottom;
};

// ASCII text as filled rectangles in units of the font's smallest size; lines are 12 units apart.
std::vector<TextQuad> textQuads(const std::string& text);
int textUnits(const std::string& text);             // its width

// Resizes 8-bit RGB without padding, filtered in linear light.
std::vector<std::uint8_t> resizeRgb(const std::vector<std::uint8_t>& pixels, int width, int height, int newWidth,
                                    int newHeight);

}  // namespace importhost
