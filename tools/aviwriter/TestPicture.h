// A moving test picture that a person can check at a glance: an arrow pointing up and the word TOP at the top left, the
// type's code in the middle and the frame number at the top right; colour bars; a grey ramp; a box and a disc that move
// in every frame; patches R, G and B; for types with alpha, a strip that fades out; and a white frame of one pixel
// along all four edges. Pictures too small for letters omit them; the three patches at the bottom left still show which
// way up they are.
#pragma once

#include "aviwriter/Canvas.h"
#include "standin/Encoder.h"

#include <cstdint>

namespace aviwriter {

class TestPicture {
public:
    // Draws everything that does not move. Throws std::invalid_argument for an unknown type or a picture without
    // pixels.
    explicit TestPicture(const standin::StreamInfo& info);

    // The picture with this number, from 0; depends on nothing else. Thread-safe.
    standin::Picture frame(std::uint32_t number) const;

    // The same picture before its conversion to the type's components.
    Canvas drawing(std::uint32_t number) const;

private:
    standin::StreamInfo m_info;
    Canvas m_still;
};

}  // namespace aviwriter
