#include "pixels/ReferenceColors.h"

#include <algorithm>
#include <cmath>

namespace pixels {

namespace {

constexpr double kOne = 4294967296.0;                       // 32 fraction bits
constexpr std::int64_t kHalf = std::int64_t{1} << 31;

using Matrix = std::array<std::array<double, 3>, 3>;

struct Weights {
    double r;
    double g;
    double b;
};

constexpr Weights weightsOf(std::uint32_t colorSpace) {
    return colorSpace == kRec601 ? Weights{0.299, 0.587, 0.114} : Weights{0.2126, 0.7152, 0.0722};
}

Matrix rgbFromYuv(std::uint32_t colorSpace) {
    const auto [r, g, b] = weightsOf(colorSpace);
    return {{{1, 0, 2 * (1 - r)},
             {1, -2 * b * (1 - b) / g, -2 * r * (1 - r) / g},
             {1, 2 * (1 - b), 0}}};
}

Matrix yuvFromRgb(std::uint32_t colorSpace) {
    const auto [r, g, b] = weightsOf(colorSpace);
    return {{{r, g, b},
             {-r / (2 * (1 - b)), -g / (2 * (1 - b)), 0.5},
             {0.5, -g / (2 * (1 - r)), -b / (2 * (1 - r))}}};
}

Matrix product(const Matrix& left, const Matrix& right) {
    Matrix result = {};
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j) {
            for (std::size_t k = 0; k < 3; ++k) {
                result[i][j] += left[i][k] * right[k][j];
            }
        }
    }
    return result;
}

constexpr Matrix kIdentity = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

// Maps the values of a component (0 to 1, chroma -1/2 to 1/2) to codes.
struct Scale {
    std::int64_t zero;      // code of the value 0
    std::int64_t unit;      // codes per 1
};

Scale scaleOf(bool isChroma, std::uint32_t bits, std::uint32_t white, std::uint32_t range) {
    const std::int64_t step = std::int64_t{1} << (bits - 8);
    if (range == kLimited) {
        return isChroma ? Scale{128 * step, 224 * step} : Scale{16 * step, 219 * step};
    }
    return {isChroma ? 128 * step : 0, white};
}

Matrix colorMatrix(bool fromRgb, std::uint32_t streamColorSpace, const HostFormat& format) {
    if (fromRgb) {
        return format.isRgb ? kIdentity : yuvFromRgb(format.colorSpace);
    }
    if (format.isRgb) {
        return rgbFromYuv(streamColorSpace);
    }
    return streamColorSpace == format.colorSpace
               ? kIdentity
               : product(yuvFromRgb(format.colorSpace), rgbFromYuv(streamColorSpace));
}

}  // namespace

ReferenceColors::ReferenceColors(const standin::StreamInfo& stream, const HostFormat& format) : m_white(format.white) {
    const standin::TypeLayout layout = standin::typeLayout(stream.type);
    const std::uint32_t streamWhite = (1U << layout.bitDepth) - 1;
    const Matrix matrix = colorMatrix(layout.rgb, stream.colorSpace, format);
    const bool onlyDepthDiffers = !layout.rgb && !format.isRgb && stream.colorSpace == format.colorSpace &&
                                  stream.range == format.range;
    for (std::size_t i = 0; i < 3; ++i) {
        const Scale out = scaleOf(!format.isRgb && i > 0, format.bits, format.white, format.range);
        m_offset[i] = (out.zero << 32) + kHalf;
        for (std::size_t j = 0; j < 3; ++j) {
            const Scale in = scaleOf(!layout.rgb && j > 0, layout.bitDepth, streamWhite, stream.range);
            const double gain = onlyDepthDiffers
                                    ? std::ldexp(matrix[i][j], static_cast<int>(format.bits) -
                                                                   static_cast<int>(layout.bitDepth))
                                    : matrix[i][j] * static_cast<double>(out.unit) / static_cast<double>(in.unit);
            m_factor[i][j] = static_cast<std::int64_t>(std::floor(gain * kOne + 0.5));
            m_offset[i] -= m_factor[i][j] * in.zero;
        }
    }
}

Codes ReferenceColors::convert(const Codes& input) const {
    Codes output = {};
    for (std::size_t i = 0; i < 3; ++i) {
        std::int64_t sum = m_offset[i];
        for (std::size_t j = 0; j < 3; ++j) {
            sum += m_factor[i][j] * static_cast<std::int64_t>(input[j]);
        }
        output[i] = static_cast<std::uint32_t>(std::clamp<std::int64_t>(sum >> 32, 0, m_white));
    }
    return output;
}

std::uint32_t convertAlpha(std::uint32_t alpha, std::uint32_t bits, const HostFormat& format) {
    const std::uint64_t opaque = (1U << bits) - 1;
    return static_cast<std::uint32_t>((2 * std::uint64_t{alpha} * format.white + opaque) / (2 * opaque));
}

}  // namespace pixels
