// Source pictures that reach every corner of a conversion. The same on every system.
#pragma once

#include "standin/Encoder.h"

#include <cstdint>

namespace pixels {

// Every sample drawn by lot from all codes of the type.
standin::Picture noise(const standin::StreamInfo& info, std::uint32_t seed);

// Samples that rise from 0 to the largest code along each row, and another way in each plane.
standin::Picture ramp(const standin::StreamInfo& info);

// Samples drawn by lot from the codes at which ranges begin and end.
standin::Picture limits(const standin::StreamInfo& info, std::uint32_t seed);

// One value per plane.
standin::Picture flat(const standin::StreamInfo& info, std::initializer_list<std::uint16_t> values);

}  // namespace pixels
