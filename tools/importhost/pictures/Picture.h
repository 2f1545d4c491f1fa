// A frame as a picture: top row first, RGB or RGB with alpha, 8 or 16 bits per component.
#pragma once

#include "hostkit/host/FrameStore.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace importhost {

struct Picture {
    int width = 0;
    int height = 0;
    int bits = 8;                               // 8 or 16
    bool hasAlpha = false;
    std::vector<std::uint16_t> components;      // R G B (A), with `bits` significant bits each

    int channels() const { return hasAlpha ? 4 : 3; }
};

// True if frames of this format can be converted to pictures.
bool isPictureFormat(csSDK_uint32 format);

// 8 bits per component for 8-bit formats, otherwise 16. YUV is converted with the format's own matrix from limited
// range; alpha is unchanged. Empty for a format that is not a picture format.
std::optional<Picture> pictureOf(const hostkit::FrameView& frame);

// The frame's rows without padding, top row first; the whole buffer for formats without rows.
std::vector<std::uint8_t> rowsOf(const hostkit::FrameView& frame);

}  // namespace importhost
