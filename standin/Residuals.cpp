#include "standin/Residuals.h"

namespace standin {
namespace {

// Differences wrap at the bit depth. 0, -1, 1, -2, 2 ... are folded to 0, 1, 2, 3, 4 ..., so that small ones of either
// sign have a zero high byte.
constexpr std::uint32_t fold(std::uint32_t difference, std::uint32_t bitDepth) {
    const std::uint32_t mask = (1u << bitDepth) - 1;
    const bool isNegative = (difference >> (bitDepth - 1) & 1) != 0;
    return (isNegative ? ~(difference << 1) : difference << 1) & mask;
}

constexpr std::uint32_t unfold(std::uint32_t folded) {
    return (folded >> 1) ^ (0u - (folded & 1));
}

static_assert(fold(0, 8) == 0 && fold(0xFF, 8) == 1 && fold(1, 8) == 2 && fold(0x80, 8) == 255 && fold(127, 8) == 254);
static_assert((unfold(255) & 0xFF) == 0x80 && unfold(254) == 127 && (unfold(1) & 0xFF) == 0xFF);

// The first sample of a row is predicted by the one above it, the first of the picture by mid-scale.
std::uint32_t rowPredictor(const Plane& plane, std::uint32_t bitDepth, std::size_t rowStart) {
    return rowStart == 0 ? 1u << (bitDepth - 1) : plane.samples[rowStart - plane.width];
}

}  // namespace

std::size_t residualBytes(const Plane& plane, std::uint32_t bitDepth) {
    return std::size_t{plane.width} * plane.height * (bitDepth > 8 ? 2 : 1);
}

std::vector<std::uint8_t> toResiduals(const Plane& plane, std::uint32_t bitDepth) {
    const std::size_t count = std::size_t{plane.width} * plane.height;
    std::vector<std::uint8_t> residuals(residualBytes(plane, bitDepth));
    for (std::size_t rowStart = 0; rowStart < count; rowStart += plane.width) {
        std::uint32_t left = rowPredictor(plane, bitDepth, rowStart);
        for (std::size_t i = rowStart; i < rowStart + plane.width; ++i) {
            const std::uint32_t folded = fold(plane.samples[i] - left, bitDepth);
            residuals[i] = static_cast<std::uint8_t>(folded);
            if (bitDepth > 8)
                residuals[count + i] = static_cast<std::uint8_t>(folded >> 8);
            left = plane.samples[i];
        }
    }
    return residuals;
}

void fromResiduals(std::span<const std::uint8_t> residuals, std::uint32_t bitDepth, Plane& plane) {
    const std::size_t count = std::size_t{plane.width} * plane.height;
    const std::uint32_t mask = (1u << bitDepth) - 1;
    const std::uint8_t* low = residuals.data();
    const std::uint8_t* high = bitDepth > 8 ? low + count : nullptr;
    plane.samples.resize(count);
    std::uint16_t* samples = plane.samples.data();
    for (std::size_t rowStart = 0; rowStart < count; rowStart += plane.width) {
        std::uint32_t left = rowPredictor(plane, bitDepth, rowStart);
        const std::size_t rowEnd = rowStart + plane.width;
        for (std::size_t i = rowStart; i < rowEnd; ++i) {
            const std::uint32_t folded = high ? low[i] | static_cast<std::uint32_t>(high[i]) << 8 : low[i];
            left = (left + unfold(folded)) & mask;
            samples[i] = static_cast<std::uint16_t>(left);
        }
    }
}

}  // namespace standin
