#include "importhost/pictures/ThirdParty.h"

#include <stdexcept>

#define STB_IMAGE_RESIZE_IMPLEMENTATION
#define STB_IMAGE_RESIZE_STATIC
#include <stb/stb_image_resize.h>

#include <stb/stb_easy_font.h>

namespace importhost {

namespace {

// The font library needs writable text, and supports only ASCII.
std::string asciiOf(const std::string& text) {
    std::string ascii;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte >= 0x80 && byte < 0xC0) {
            continue;       // a continuation byte of a character that already has its '?'
        }
        ascii.push_back(byte >= 0x20 && byte < 0x7F ? character : '?');
    }
    return ascii;
}

struct Vertex {
    float x, y, z;
    unsigned char colour[4];
};
static_assert(sizeof(Vertex) == 16);

}  // namespace

std::vector<TextQuad> textQuads(const std::string& text) {
    std::string ascii = asciiOf(text);
    // A letter takes 270 bytes on average, but a short text of wide letters takes more; the font library drops what
    // does not fit.
    constexpr std::size_t kQuadsPerLetter = 16;
    std::vector<Vertex> vertices(ascii.size() * kQuadsPerLetter * 4);
    const int count = stb_easy_font_print(0.0f, 0.0f, ascii.data(), nullptr, vertices.data(),
                                          static_cast<int>(vertices.size() * sizeof(Vertex)));
    std::vector<TextQuad> quads;
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
        const Vertex& topLeft = vertices[4 * i];
        const Vertex& bottomRight = vertices[4 * i + 2];
        quads.push_back({topLeft.x, topLeft.y, bottomRight.x, bottomRight.y});
    }
    return quads;
}

int textUnits(const std::string& text) {
    std::string ascii = asciiOf(text);
    return stb_easy_font_width(ascii.data());
}

std::vector<std::uint8_t> resizeRgb(const std::vector<std::uint8_t>& pixels, int width, int height, int newWidth,
                                    int newHeight) {
    std::vector<std::uint8_t> resized(static_cast<std::size_t>(newWidth) * static_cast<std::size_t>(newHeight) * 3);
    if (!stbir_resize_uint8_srgb(pixels.data(), width, height, 0, resized.data(), newWidth, newHeight, 0, 3,
                                 STBIR_ALPHA_CHANNEL_NONE, 0)) {
        throw std::runtime_error("A picture could not be scaled.");
    }
    return resized;
}

}  // namespace importhost
