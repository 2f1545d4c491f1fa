#include "standin/ColorTransform.h"

#include <algorithm>
#include <cmath>

namespace standin {
namespace {

using Matrix = std::array<std::array<double, 3>, 3>;

constexpr int kFractionBits = 32;
constexpr std::int64_t kOne = std::int64_t{1} << kFractionBits;
constexpr std::int64_t kHalf = kOne / 2;
constexpr Matrix kIdentity = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

// Weights of red, green and blue in luma.
struct Weights {
    double red, green, blue;
};

Weights weightsOf(std::uint32_t colorSpace) {
    return colorSpace == 1 ? Weights{0.299, 0.587, 0.114} : Weights{0.2126, 0.7152, 0.0722};
}

Matrix yuvToRgb(std::uint32_t colorSpace) {
    const Weights w = weightsOf(colorSpace);
    const double redOfCr = 2 * (1 - w.red);
    const double blueOfCb = 2 * (1 - w.blue);
    return {{{1, 0, redOfCr}, {1, -blueOfCb * w.blue / w.green, -redOfCr * w.red / w.green}, {1, blueOfCb, 0}}};
}

Matrix rgbToYuv(std::uint32_t colorSpace) {
    const Weights w = weightsOf(colorSpace);
    const double cb = 2 * (1 - w.blue);
    const double cr = 2 * (1 - w.red);
    return {{{w.red, w.green, w.blue},
             {-w.red / cb, -w.green / cb, (1 - w.blue) / cb},
             {(1 - w.red) / cr, -w.green / cr, -w.blue / cr}}};
}

Matrix product(const Matrix& a, const Matrix& b) {
    Matrix result{};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column)
            result[row][column] = a[row][0] * b[0][column] + a[row][1] * b[1][column] + a[row][2] * b[2][column];
    }
    return result;
}

bool hasSameColors(const CodeSpace& a, const CodeSpace& b) {
    return a.rgb == b.rgb && (a.rgb || a.colorSpace == b.colorSpace);
}

// The matrix between normalised colours: R, G, B, Y from 0 to 1, Cb and Cr from -1/2 to 1/2.
Matrix colorMatrix(const CodeSpace& source, const CodeSpace& target) {
    if (hasSameColors(source, target))
        return kIdentity;
    const Matrix fromSource = source.rgb ? kIdentity : yuvToRgb(source.colorSpace);
    const Matrix toTarget = target.rgb ? kIdentity : rgbToYuv(target.colorSpace);
    return product(toTarget, fromSource);
}

// A component's code is zero + scale * value.
struct Coding {
    std::int64_t zero;
    double scale;
};

Coding codingOf(const CodeSpace& space, std::size_t component) {
    const std::int64_t eighth = std::int64_t{1} << (space.bitDepth - 8);   // one 8-bit step at this depth
    const bool isChroma = !space.rgb && component > 0;
    if (space.range == 1)
        return isChroma ? Coding{128 * eighth, 224.0 * static_cast<double>(eighth)}
                        : Coding{16 * eighth, 219.0 * static_cast<double>(eighth)};
    return {isChroma ? 128 * eighth : 0, static_cast<double>(space.maxCode)};
}

// YUV codes are shifted to another depth, in full range too: black, white and grey then have the same leading bits at
// every depth, and widening is exact.
bool isShift(const CodeSpace& source, const CodeSpace& target) {
    return !source.rgb && hasSameColors(source, target) && source.range == target.range;
}

std::int64_t toFixed(double value) {
    return static_cast<std::int64_t>(std::floor(std::ldexp(value, kFractionBits) + 0.5));
}

bool isDiagonal(const std::array<std::array<std::int64_t, 3>, 3>& m) {
    return m[0][1] == 0 && m[0][2] == 0 && m[1][0] == 0 && m[1][2] == 0 && m[2][0] == 0 && m[2][1] == 0;
}

}  // namespace

ColorTransform::ColorTransform(const CodeSpace& source, const CodeSpace& target) : m_maxCode(target.maxCode) {
    const Matrix matrix = colorMatrix(source, target);
    const double shift = std::ldexp(1.0, static_cast<int>(target.bitDepth) - static_cast<int>(source.bitDepth));
    for (std::size_t row = 0; row < 3; ++row) {
        const Coding out = codingOf(target, row);
        m_offsets[row] = out.zero * kOne + kHalf;
        for (std::size_t column = 0; column < 3; ++column) {
            const Coding in = codingOf(source, column);
            const double scale = isShift(source, target) ? shift : out.scale / in.scale;
            m_factors[row][column] = toFixed(matrix[row][column] * scale);
            m_offsets[row] -= m_factors[row][column] * in.zero;
        }
    }
    m_isDiagonal = isDiagonal(m_factors);
}

void ColorTransform::apply(const std::array<std::uint16_t*, 3>& components, std::size_t count) const {
    if (!m_isDiagonal)
        return applyMatrix(components, count);
    for (std::size_t row = 0; row < 3; ++row) {
        if (!isUnchanged(row))
            applyScale(components[row], row, count);
    }
}

bool ColorTransform::isUnchanged(std::size_t row) const {
    return m_factors[row][row] == kOne && m_offsets[row] == kHalf;
}

void ColorTransform::applyMatrix(const std::array<std::uint16_t*, 3>& components, std::size_t count) const {
    for (std::size_t i = 0; i < count; ++i) {
        const std::int64_t in[3] = {components[0][i], components[1][i], components[2][i]};
        for (std::size_t row = 0; row < 3; ++row) {
            const auto& factors = m_factors[row];
            components[row][i] =
                quantised(factors[0] * in[0] + factors[1] * in[1] + factors[2] * in[2] + m_offsets[row]);
        }
    }
}

void ColorTransform::applyScale(std::uint16_t* samples, std::size_t row, std::size_t count) const {
    const std::int64_t factor = m_factors[row][row];
    const std::int64_t offset = m_offsets[row];
    for (std::size_t i = 0; i < count; ++i)
        samples[i] = quantised(factor * samples[i] + offset);
}

std::uint16_t ColorTransform::quantised(std::int64_t fixed) const {
    return static_cast<std::uint16_t>(std::clamp<std::int64_t>(fixed >> kFractionBits, 0, m_maxCode));
}

void scaleAlpha(std::uint16_t* samples, std::size_t count, std::uint32_t sourceMax, std::uint32_t targetMax) {
    for (std::size_t i = 0; i < count; ++i)
        samples[i] = static_cast<std::uint16_t>((samples[i] * targetMax * 2 + sourceMax) / (sourceMax * 2));
}

}  // namespace standin
