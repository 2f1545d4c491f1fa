// A plane as the bytes that are then compressed: each sample's difference from its left neighbour.
#pragma once

#include "standin/Encoder.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace standin {

// Bytes of a plane's residuals: one for each sample of up to 8 bits, two for deeper ones.
std::size_t residualBytes(const Plane& plane, std::uint32_t bitDepth);

std::vector<std::uint8_t> toResiduals(const Plane& plane, std::uint32_t bitDepth);

// The way back, into a plane that has its shape; `residuals` holds exactly residualBytes. Any bytes give samples
// within the bit depth.
void fromResiduals(std::span<const std::uint8_t> residuals, std::uint32_t bitDepth, Plane& plane);

}  // namespace standin
