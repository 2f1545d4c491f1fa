#include "importhost/pictures/Picture.h"

#include "hostkit/host/PixelFormatTable.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace importhost {

namespace {

using hostkit::FrameView;

// One pixel at the format's own depth: R G B A, or Y U V A.
struct Sample {
    int first = 0, second = 0, third = 0;
    int alpha = 0;
};
using Unpack = void (*)(const std::uint8_t* row, int width, Sample* out);

// --- Memory layouts ---------------------------------------------------------------------------------------------

template <int first, int second, int third, int alpha>
void unpackBytes(const std::uint8_t* row, int width, Sample* out) {
    for (int x = 0; x < width; ++x, row += 4) {
        out[x] = {row[first], row[second], row[third], row[alpha]};
    }
}

// Two pixels share their chroma; the second pixel of an odd row's last pair is ignored.
template <int y0, int u, int y1, int v>
void unpackPairs(const std::uint8_t* row, int width, Sample* out) {
    for (int x = 0; x < width; ++x) {
        const std::uint8_t* pair = row + x / 2 * 4;
        out[x] = {pair[x % 2 == 0 ? y0 : y1], pair[u], pair[v], 0};
    }
}

std::uint32_t wordAt(const std::uint8_t* bytes) {
    return static_cast<std::uint32_t>(bytes[0]) | static_cast<std::uint32_t>(bytes[1]) << 8 |
           static_cast<std::uint32_t>(bytes[2]) << 16 | static_cast<std::uint32_t>(bytes[3]) << 24;
}

int tenBits(std::uint32_t word, int shift) { return static_cast<int>(word >> shift & 0x3FF); }

// Six pixels in four words of three components: U Y V, Y U Y, V Y U, Y V Y.
void unpackV210(const std::uint8_t* row, int width, Sample* out) {
    for (int x = 0; x < width; ++x) {
        int components[12];
        for (int i = 0; i < 12; ++i) {
            components[i] = tenBits(wordAt(row + x / 6 * 16 + i / 3 * 4), i % 3 * 10);
        }
        const int pair = x % 6 / 2 * 4;
        out[x] = {components[pair + (x % 2 == 0 ? 1 : 3)], components[pair], components[pair + 2], 0};
    }
}

void unpackRgb10(const std::uint8_t* row, int width, Sample* out) {
    for (int x = 0; x < width; ++x) {
        const std::uint32_t word = wordAt(row + 4 * x);
        out[x] = {tenBits(word, 22), tenBits(word, 12), tenBits(word, 2), 0};
    }
}

void unpackBgra16(const std::uint8_t* row, int width, Sample* out) {
    const auto value = [](const std::uint8_t* bytes) { return bytes[0] | bytes[1] << 8; };
    for (int x = 0; x < width; ++x, row += 8) {
        out[x] = {value(row + 4), value(row + 2), value(row), value(row + 6)};
    }
}

// --- Formats ----------------------------------------------------------------------------------------------------

enum class Colour { Rgb, Rec601, Rec709 };

struct PictureFormat {
    PrPixelFormat format;
    Unpack unpack;
    Colour colour;
    int full;               // value of full intensity
    bool hasAlpha;
};

constexpr auto kUnpackVuya = unpackBytes<2, 1, 0, 3>;
constexpr auto kUnpackBgra = unpackBytes<2, 1, 0, 3>;
constexpr auto kUnpackArgb = unpackBytes<1, 2, 3, 0>;
constexpr auto kUnpackYuyv = unpackPairs<0, 1, 2, 3>;
constexpr auto kUnpackUyvy = unpackPairs<1, 0, 3, 2>;

constexpr PictureFormat kPictureFormats[] = {
    {PrPixelFormat_YUYV_422_8u_601, kUnpackYuyv, Colour::Rec601, 255, false},
    {PrPixelFormat_YUYV_422_8u_709, kUnpackYuyv, Colour::Rec709, 255, false},
    {PrPixelFormat_UYVY_422_8u_601, kUnpackUyvy, Colour::Rec601, 255, false},
    {PrPixelFormat_UYVY_422_8u_709, kUnpackUyvy, Colour::Rec709, 255, false},
    {PrPixelFormat_VUYA_4444_8u, kUnpackVuya, Colour::Rec601, 255, true},
    {PrPixelFormat_VUYA_4444_8u_709, kUnpackVuya, Colour::Rec709, 255, true},
    {PrPixelFormat_VUYX_4444_8u, kUnpackVuya, Colour::Rec601, 255, false},
    {PrPixelFormat_VUYX_4444_8u_709, kUnpackVuya, Colour::Rec709, 255, false},
    {PrPixelFormat_BGRA_4444_8u, kUnpackBgra, Colour::Rgb, 255, true},
    {PrPixelFormat_ARGB_4444_8u, kUnpackArgb, Colour::Rgb, 255, true},
    {PrPixelFormat_BGRX_4444_8u, kUnpackBgra, Colour::Rgb, 255, false},
    {PrPixelFormat_XRGB_4444_8u, kUnpackArgb, Colour::Rgb, 255, false},
    {PrPixelFormat_V210_422_10u_601, unpackV210, Colour::Rec601, 1023, false},
    {PrPixelFormat_V210_422_10u_709, unpackV210, Colour::Rec709, 1023, false},
    {PrPixelFormat_RGB_444_10u, unpackRgb10, Colour::Rgb, 1023, false},
    {PrPixelFormat_BGRA_4444_16u, unpackBgra16, Colour::Rgb, 32768, true},
    {PrPixelFormat_BGRX_4444_16u, unpackBgra16, Colour::Rgb, 32768, false},
};

const PictureFormat* findFormat(csSDK_uint32 format) {
    const auto found = std::find_if(std::begin(kPictureFormats), std::end(kPictureFormats),
                                    [format](const PictureFormat& row) { return row.format == format; });
    return found == std::end(kPictureFormats) ? nullptr : found;
}

// --- Conversion -------------------------------------------------------------------------------------------------

std::uint16_t component(double intensity, int outFull) {
    return static_cast<std::uint16_t>(std::lround(std::clamp(intensity, 0.0, 1.0) * outFull));
}

struct Rgb {
    double red, green, blue;        // 0 ... 1 for values within range
};

// Limited range: luma from 16 to 235, chroma from 16 to 240 around 128, in 8-bit steps.
Rgb fromYuv(const Sample& sample, const PictureFormat& format) {
    const double step = (format.full + 1) / 256.0;
    const double y = (sample.first / step - 16.0) / 219.0;
    const double u = (sample.second / step - 128.0) / 224.0;
    const double v = (sample.third / step - 128.0) / 224.0;
    const double kr = format.colour == Colour::Rec601 ? 0.299 : 0.2126;
    const double kb = format.colour == Colour::Rec601 ? 0.114 : 0.0722;
    const double kg = 1.0 - kr - kb;
    const double red = y + 2.0 * (1.0 - kr) * v;
    const double blue = y + 2.0 * (1.0 - kb) * u;
    return {red, (y - kr * red - kb * blue) / kg, blue};
}

Rgb fromRgb(const Sample& sample, const PictureFormat& format) {
    const double full = format.full;
    return {sample.first / full, sample.second / full, sample.third / full};
}

void append(Picture& picture, const Sample& sample, const PictureFormat& format) {
    const int outFull = picture.bits == 8 ? 255 : 65535;
    const Rgb rgb = format.colour == Colour::Rgb ? fromRgb(sample, format) : fromYuv(sample, format);
    for (const double intensity : {rgb.red, rgb.green, rgb.blue}) {
        picture.components.push_back(component(intensity, outFull));
    }
    if (picture.hasAlpha) {
        picture.components.push_back(component(static_cast<double>(sample.alpha) / format.full, outFull));
    }
}

// Calls `use` for the rows in memory, from the picture's top row down.
template <class Use>
void forEachRow(const FrameView& frame, Use use) {
    const hostkit::PixelFormatRow* facts = hostkit::findPixelFormat(frame.format);
    const bool topLeft = facts && facts->isTopLeft;
    for (int y = 0; y < frame.height(); ++y) {
        const int row = topLeft ? y : frame.height() - 1 - y;
        use(frame.pixels + static_cast<std::ptrdiff_t>(row) * frame.rowBytes);
    }
}

}  // namespace

bool isPictureFormat(csSDK_uint32 format) { return findFormat(format) != nullptr; }

std::optional<Picture> pictureOf(const FrameView& frame) {
    const PictureFormat* format = findFormat(frame.format);
    if (!format) {
        return std::nullopt;
    }
    Picture picture{frame.width(), frame.height(), format->full == 255 ? 8 : 16, format->hasAlpha, {}};
    const auto pixels = static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
    picture.components.reserve(pixels * static_cast<std::size_t>(picture.channels()));
    std::vector<Sample> samples(static_cast<std::size_t>(picture.width));
    forEachRow(frame, [&](const std::uint8_t* row) {
        format->unpack(row, picture.width, samples.data());
        for (const Sample& sample : samples) {
            append(picture, sample, *format);
        }
    });
    return picture;
}

std::vector<std::uint8_t> rowsOf(const FrameView& frame) {
    const hostkit::PixelFormatRow* facts = hostkit::findPixelFormat(frame.format);
    const bool isPacked = facts && facts->layout == hostkit::PixelLayout::Packed;
    const auto tight = isPacked ? hostkit::tightRowBytes(*facts, frame.width()) : std::nullopt;
    if (!tight) {
        return {frame.pixels, frame.pixels + frame.size};
    }
    std::vector<std::uint8_t> bytes;
    bytes.reserve(static_cast<std::size_t>(*tight) * static_cast<std::size_t>(frame.height()));
    forEachRow(frame, [&](const std::uint8_t* row) { bytes.insert(bytes.end(), row, row + *tight); });
    return bytes;
}

}  // namespace importhost
