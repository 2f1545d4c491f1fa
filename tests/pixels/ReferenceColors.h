// A second implementation of the stand-in codec's colour arithmetic, based on docs/standin-codec.md and not on the
// code.
#pragma once

#include "pixels/HostFormats.h"
#include "standin/Encoder.h"

#include <array>
#include <cstdint>

namespace pixels {

using Codes = std::array<std::uint32_t, 3>;     // R G B or Y U V

// Converts the codes of a stream to those of a host format. Immutable, thread-safe.
class ReferenceColors {
public:
    ReferenceColors(const standin::StreamInfo& stream, const HostFormat& format);

    Codes convert(const Codes& input) const;

private:
    std::array<std::array<std::int64_t, 3>, 3> m_factor = {};
    std::array<std::int64_t, 3> m_offset = {};
    std::int64_t m_white;
};

// Converts an alpha code of `bits` bits to the code in `format`.
std::uint32_t convertAlpha(std::uint32_t alpha, std::uint32_t bits, const HostFormat& format);

}  // namespace pixels
