#include "standin/DecodeTypes.h"

#include "standin/Bytes.h"

namespace standin {
namespace {

std::uint8_t byteOf(std::uint16_t sample) {
    return static_cast<std::uint8_t>(sample);
}

// Chroma of two pixels: the mean, halves rounded up.
std::uint32_t pairMean(const std::uint16_t* samples) {
    return (std::uint32_t{samples[0]} + samples[1] + 1) / 2;
}

// ---- Four bytes per pixel; a name lists the component of each byte, lowest address first.
// The template arguments are the positions of components 0, 1, 2 and alpha.
template <int First, int Second, int Third, int Alpha>
void packBytes(const PixelRow& row, std::uint8_t* out) {
    for (std::size_t i = 0; i < row.count; ++i, out += 4) {
        out[First] = byteOf(row.color[0][i]);
        out[Second] = byteOf(row.color[1][i]);
        out[Third] = byteOf(row.color[2][i]);
        out[Alpha] = byteOf(row.alpha[i]);
    }
}

constexpr auto packBgra = packBytes<2, 1, 0, 3>;
constexpr auto packArgb = packBytes<1, 2, 3, 0>;
constexpr auto packVuya = packBytes<2, 1, 0, 3>;

// ---- Two pixels in four bytes. The template arguments are the positions of the first pixel's Y, U, the second pixel's
// Y, and V.
template <int Y0, int U, int Y1, int V>
void packPairs(const PixelRow& row, std::uint8_t* out) {
    for (std::size_t i = 0; i < row.count; i += 2, out += 4) {
        out[Y0] = byteOf(row.color[0][i]);
        out[Y1] = byteOf(row.color[0][i + 1]);
        out[U] = static_cast<std::uint8_t>(pairMean(&row.color[1][i]));
        out[V] = static_cast<std::uint8_t>(pairMean(&row.color[2][i]));
    }
}

constexpr auto packYuyv = packPairs<0, 1, 2, 3>;
constexpr auto packUyvy = packPairs<1, 0, 3, 2>;

// ---- v210: six pixels as twelve 10-bit samples, three per word, lowest bits first.
void packV210(const PixelRow& row, std::uint8_t* out) {
    for (std::size_t i = 0; i < row.count; i += 6, out += 16) {
        const std::uint16_t* y = &row.color[0][i];
        const std::uint16_t* u = &row.color[1][i];
        const std::uint16_t* v = &row.color[2][i];
        store32(out, pairMean(u) | std::uint32_t{y[0]} << 10 | pairMean(v) << 20);
        store32(out + 4, y[1] | pairMean(u + 2) << 10 | std::uint32_t{y[2]} << 20);
        store32(out + 8, pairMean(v + 2) | std::uint32_t{y[3]} << 10 | pairMean(u + 4) << 20);
        store32(out + 12, y[4] | pairMean(v + 4) << 10 | std::uint32_t{y[5]} << 20);
    }
}

// ---- 10-bit RGB in one word. Where the components are is not published; these positions are this library's own.
constexpr int kRgb10RedBit = 22;
constexpr int kRgb10GreenBit = 12;
constexpr int kRgb10BlueBit = 2;

void packRgb10(const PixelRow& row, std::uint8_t* out) {
    for (std::size_t i = 0; i < row.count; ++i, out += 4)
        store32(out, std::uint32_t{row.color[0][i]} << kRgb10RedBit | std::uint32_t{row.color[1][i]} << kRgb10GreenBit
                         | std::uint32_t{row.color[2][i]} << kRgb10BlueBit);
}

// ---- 16 bits per component
void packBgra16(const PixelRow& row, std::uint8_t* out) {
    for (std::size_t i = 0; i < row.count; ++i, out += 8) {
        store16(out, row.color[2][i]);
        store16(out + 2, row.color[1][i]);
        store16(out + 4, row.color[0][i]);
        store16(out + 6, row.alpha[i]);
    }
}

constexpr DecodeType kDecodeTypes[] = {
    // number, name, rgb, alpha, bits, pixels and bytes of a group, encoded as, packer
    {4, "YUYV", false, false, 8, 2, 4, 104, packYuyv},
    {5, "UYVY", false, false, 8, 2, 4, 104, packUyvy},
    {50, "VUYA", false, true, 8, 1, 4, 106, packVuya},
    {49, "VUYX", false, false, 8, 1, 4, 103, packVuya},
    {2, "BGRA", true, true, 8, 1, 4, 102, packBgra},
    {19, "ARGB", true, true, 8, 1, 4, 102, packArgb},
    {1, "BGRX", true, false, 8, 1, 4, 101, packBgra},
    {16, "XRGB", true, false, 8, 1, 4, 101, packArgb},
    {11, "v210", false, false, 10, 6, 16, 108, packV210},
    {15, "RGB10", true, false, 10, 1, 4, 109, packRgb10},
    {31, "BGRA16", true, true, 16, 1, 8, 114, packBgra16},
    {32, "BGRX16", true, false, 16, 1, 8, 113, packBgra16},
};

}  // namespace

std::span<const DecodeType> decodeTypes() {
    return kDecodeTypes;
}

const DecodeType* findDecodeType(std::uint32_t number) {
    for (const DecodeType& type : kDecodeTypes) {
        if (type.number == number)
            return &type;
    }
    return nullptr;
}

std::uint32_t packedRowBytes(const DecodeType& type, std::uint32_t width) {
    return (width + type.groupPixels - 1) / type.groupPixels * type.groupBytes;
}

}  // namespace standin
