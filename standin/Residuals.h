// Converts a plane to the bytes to be compressed: the difference of each sample from its left neighbour.
#pragma once

#include "standin/Encoder.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace standin {

// Size in bytes of a plane's residuals: one per sample of up to 8 bits, two for deeper ones.
std::size_t residualBytes(const Plane& plane, std::uint32_t bitDepth);

std::vector<std::uint8_t> toResiduals(const Plane& plane, std::uint32_t bitDepth);

// The inverse; `plane` already has its shape, and `residuals` holds exactly residualBytes. Any bytes decode to samples
// within the bit depth.
void fromResiduals(std::span<const std::uint8_t> residuals, std::uint32_t bitDepth, Plane& plane);

}  // namespace standin
