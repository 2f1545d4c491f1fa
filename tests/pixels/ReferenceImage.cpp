#include "pixels/ReferenceImage.h"

#include "pixels/ReferenceColors.h"

#include <algorithm>

namespace pixels {

namespace {

struct Pixel {
    Codes color = {};
    std::uint32_t alpha = 0;
};

std::uint32_t sampleAt(const standin::Plane& plane, std::uint32_t x, std::uint32_t y) {
    return plane.samples[std::size_t{y} * plane.width + x];
}

// The stream's own components of a pixel; chroma of a subsampled stream belongs to all pixels that it covers.
Codes componentsAt(const standin::TypeLayout& layout, const standin::Picture& picture, std::uint32_t x,
                   std::uint32_t y) {
    Codes codes = {sampleAt(picture.planes[0], x, y)};
    for (std::size_t i = 1; i < 3; ++i) {
        if (layout.planeCount == 1) {
            codes[i] = 1U << (layout.bitDepth - 1);
        } else if (layout.rgb) {
            codes[i] = sampleAt(picture.planes[i], x, y);
        } else {
            codes[i] = sampleAt(picture.planes[i], x / layout.xSubsampling, y / layout.ySubsampling);
        }
    }
    return codes;
}

void put16(Row& row, std::uint32_t value) {
    row.push_back(static_cast<std::uint8_t>(value & 255));
    row.push_back(static_cast<std::uint8_t>(value >> 8));
}

void put32(Row& row, std::uint32_t value) {
    put16(row, value & 65535);
    put16(row, value >> 16);
}

void putBytes(Row& row, std::initializer_list<std::uint32_t> values) {
    for (const std::uint32_t value : values) {
        row.push_back(static_cast<std::uint8_t>(value));
    }
}

// The chroma that two neighbours share, U or V depending on `component`.
std::uint32_t shared(const Pixel* pair, std::size_t component) {
    return (pair[0].color[component] + pair[1].color[component] + 1) / 2;
}

std::uint32_t word(std::uint32_t low, std::uint32_t middle, std::uint32_t high) {
    return low | middle << 10 | high << 20;
}

void putV210(Row& row, const Pixel* p) {
    const auto y = [p](std::size_t i) { return p[i].color[0]; };
    const auto u = [p](std::size_t i) { return shared(p + 2 * i, 1); };
    const auto v = [p](std::size_t i) { return shared(p + 2 * i, 2); };
    put32(row, word(u(0), y(0), v(0)));
    put32(row, word(y(1), u(1), y(2)));
    put32(row, word(v(1), y(3), u(2)));
    put32(row, word(y(4), v(2), y(5)));
}

std::size_t groupPixels(Packing packing) {
    switch (packing) {
        case Packing::yuyv:
        case Packing::uyvy: return 2;
        case Packing::v210: return 6;
        default: return 1;
    }
}

void putGroup(Row& row, Packing packing, const Pixel* p) {
    const auto& [first, second, third] = p->color;
    switch (packing) {
        case Packing::yuyv: return putBytes(row, {first, shared(p, 1), p[1].color[0], shared(p, 2)});
        case Packing::uyvy: return putBytes(row, {shared(p, 1), first, shared(p, 2), p[1].color[0]});
        case Packing::vuya:
        case Packing::bgra: return putBytes(row, {third, second, first, p->alpha});
        case Packing::argb: return putBytes(row, {p->alpha, first, second, third});
        case Packing::v210: return putV210(row, p);
        case Packing::rgb10: return put32(row, first << 22 | second << 12 | third << 2);
        case Packing::bgra16:
            for (const std::uint32_t value : {third, second, first, p->alpha}) {
                put16(row, value);
            }
            return;
    }
}

Row packed(std::vector<Pixel> pixels, Packing packing) {
    const std::size_t group = groupPixels(packing);
    pixels.resize((pixels.size() + group - 1) / group * group, pixels.back());
    Row row;
    for (std::size_t x = 0; x < pixels.size(); x += group) {
        putGroup(row, packing, &pixels[x]);
    }
    return row;
}

}  // namespace

std::vector<Row> referenceRows(const standin::StreamInfo& stream, const standin::Picture& picture,
                               const HostFormat& format) {
    const standin::TypeLayout layout = standin::typeLayout(stream.type);
    const ReferenceColors colors(stream, format);
    std::vector<Row> rows;
    for (std::uint32_t y = 0; y < stream.height; ++y) {
        std::vector<Pixel> pixels;
        for (std::uint32_t x = 0; x < stream.width; ++x) {
            const bool keepsAlpha = layout.alpha && format.hasAlpha;
            pixels.push_back({colors.convert(componentsAt(layout, picture, x, y)),
                              keepsAlpha ? convertAlpha(sampleAt(picture.planes[3], x, y), layout.bitDepth, format)
                                         : format.white});
        }
        rows.push_back(packed(std::move(pixels), format.packing));
    }
    std::reverse(rows.begin(), rows.end());
    return rows;
}

}  // namespace pixels
