// Converts the codes of one picture to those of another: depth, range, matrix, RGB and YUV, all as one affine map in
// fixed point, so that every machine computes the same codes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace standin {

// How the codes of the three colour components represent colours. Components are R, G, B or Y, Cb, Cr.
struct CodeSpace {
    bool rgb = false;
    std::uint32_t colorSpace = 0;   // 1 Rec.601, 2 Rec.709; ignored for RGB
    std::uint32_t range = 0;        // 1 limited, 2 full
    std::uint32_t bitDepth = 0;
    std::uint32_t maxCode = 0;      // the largest code; in full range it represents 1
};

class ColorTransform {
public:
    ColorTransform(const CodeSpace& source, const CodeSpace& target);

    // Converts `count` colours in place; each array holds one component.
    void apply(const std::array<std::uint16_t*, 3>& components, std::size_t count) const;

private:
    void applyMatrix(const std::array<std::uint16_t*, 3>& components, std::size_t count) const;
    void applyScale(std::uint16_t* samples, std::size_t row, std::size_t count) const;
    bool isUnchanged(std::size_t row) const;   // for a diagonal map: this component's codes stay the same
    std::uint16_t quantised(std::int64_t fixed) const;

    std::array<std::array<std::int64_t, 3>, 3> m_factors{};   // 32 fraction bits
    std::array<std::int64_t, 3> m_offsets{};                  // 32 fraction bits, including one half for rounding
    std::int64_t m_maxCode;
    bool m_isDiagonal = false;
};

// Scales `count` alpha codes from one maximum to another, rounding to nearest. Alpha is always full range.
void scaleAlpha(std::uint16_t* samples, std::size_t count, std::uint32_t sourceMax, std::uint32_t targetMax);

}  // namespace standin
