#include "Unpacked.h"

#include "StandinFixture.h"

#include <stdexcept>

namespace standin::test {
namespace {

// Position of a sample in its group: the byte of a 32-bit word, the bit in that word, and the number of bits.
struct Place {
    std::size_t byte;
    int bit;
    int bits;
};

std::uint16_t sampleAt(const std::uint8_t* group, const Place& place) {
    std::uint32_t value = 0;
    for (int i = (place.bit + place.bits - 1) / 8; i >= 0; --i)
        value = value << 8 | group[place.byte + static_cast<std::size_t>(i)];
    return static_cast<std::uint16_t>(value >> place.bit & ((1u << place.bits) - 1));
}

Place byteAt(std::size_t byte) {
    return {byte, 0, 8};
}

// Y of six pixels, then U and V of three pairs.
constexpr Place kV210Y[6] = {{0, 10, 10}, {4, 0, 10}, {4, 20, 10}, {8, 10, 10}, {12, 0, 10}, {12, 20, 10}};
constexpr Place kV210U[3] = {{0, 0, 10}, {4, 10, 10}, {8, 20, 10}};
constexpr Place kV210V[3] = {{0, 20, 10}, {8, 0, 10}, {12, 10, 10}};

struct PixelPlaces {
    std::size_t groupBytes;
    std::array<Place, 4> components;
    bool hasFourth;
};

PixelPlaces placesOf(std::uint32_t type, std::uint32_t x) {
    const std::size_t odd = x % 2;
    switch (type) {
    case 4: return {4, {byteAt(odd * 2), byteAt(1), byteAt(3), {}}, false};
    case 5: return {4, {byteAt(1 + odd * 2), byteAt(0), byteAt(2), {}}, false};
    case 11: return {16, {kV210Y[x % 6], kV210U[x % 6 / 2], kV210V[x % 6 / 2], {}}, false};
    case 15: return {4, {Place{0, 22, 10}, Place{0, 12, 10}, Place{0, 2, 10}, {}}, false};
    case 50:
    case 49:
    case 2:
    case 1: return {4, {byteAt(2), byteAt(1), byteAt(0), byteAt(3)}, true};
    case 19:
    case 16: return {4, {byteAt(1), byteAt(2), byteAt(3), byteAt(0)}, true};
    case 31:
    case 32: return {8, {Place{4, 0, 16}, Place{2, 0, 16}, Place{0, 0, 16}, Place{6, 0, 16}}, true};
    default: throw std::invalid_argument("no decode type");
    }
}

std::uint32_t groupPixels(std::uint32_t type) {
    return type == 11 ? 6 : type == 4 || type == 5 ? 2 : 1;
}

Pixel pixelAt(std::uint32_t type, const std::uint8_t* row, std::uint32_t x) {
    const PixelPlaces places = placesOf(type, x);
    const std::uint8_t* group = row + x / groupPixels(type) * places.groupBytes;
    Pixel pixel{};
    for (std::size_t i = 0; i < (places.hasFourth ? 4u : 3u); ++i)
        pixel[i] = sampleAt(group, places.components[i]);
    return pixel;
}

}  // namespace

std::vector<Pixel> unpacked(std::uint32_t type, const std::vector<std::uint8_t>& bytes, std::uint32_t width,
                            std::uint32_t height) {
    const std::size_t rowBytes = neededRowBytes(type, width);
    if (bytes.size() != rowBytes * height)
        throw std::invalid_argument("not the bytes of tight rows");
    std::vector<Pixel> pixels;
    pixels.reserve(std::size_t{width} * height);
    for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t x = 0; x < width; ++x)
            pixels.push_back(pixelAt(type, bytes.data() + y * rowBytes, x));
    }
    return pixels;
}

}  // namespace standin::test
