// The stand-in codec's colour arithmetic once more, written from docs/standin-codec.md and not from the codec.
#pragma once

#include "pixels/HostFormats.h"
#include "standin/Encoder.h"

#include <array>
#include <cstdint>

namespace pixels {

using Codes = std::array<std::uint32_t, 3>;     // R G B or Y U V

// From the codes of a stream to those of a host format. Immutable, safe on any thread.
class ReferenceColors {
public:
    ReferenceColors(const standin::StreamInfo& stream, const HostFormat& format);

    Codes convert(const Codes& input) const;

private:
    std::array<std::array<std::int64_t, 3>, 3> m_factor = {};
    std::array<std::int64_t, 3> m_offset = {};
    std::int64_t m_white;
};

// The code of an alpha of `bits` bits in a format.
std::uint32_t convertAlpha(std::uint32_t alpha, std::uint32_t bits, const HostFormat& format);

}  // namespace pixels
