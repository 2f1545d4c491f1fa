// Unpacks decoded bytes, pixel by pixel, independently of the library's packing code.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace standin::test {

// Components of a pixel: R G B A or Y U V A. A is the fourth component, 0 if the type has none.
using Pixel = std::array<std::uint16_t, 4>;

// The `width` * `height` pixels of a decode type in rows without padding. Both pixels of a 4:2:2 pair get the pair's
// chroma.
std::vector<Pixel> unpacked(std::uint32_t type, const std::vector<std::uint8_t>& bytes, std::uint32_t width,
                            std::uint32_t height);

}  // namespace standin::test
