// Source pictures that cover all cases of a conversion. They are the same on every system.
#pragma once

#include "standin/Encoder.h"

#include <cstdint>

namespace pixels {

// Every sample is a random code of the type.
standin::Picture noise(const standin::StreamInfo& info, std::uint32_t seed);

// Samples rise from 0 to the largest code along each row, differently in each plane.
standin::Picture ramp(const standin::StreamInfo& info);

// Every sample is a random choice from the codes at which ranges begin and end.
standin::Picture limits(const standin::StreamInfo& info, std::uint32_t seed);

// One value per plane.
standin::Picture flat(const standin::StreamInfo& info, std::initializer_list<std::uint16_t> values);

}  // namespace pixels
