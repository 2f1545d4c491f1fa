// A decode session: one stream, one target, frame after frame.
#pragma once

#include "standin/ColorTransform.h"
#include "standin/FrameDecoder.h"
#include "standin/Request.h"

#include <cstdint>
#include <span>
#include <vector>

namespace standin {

// Calls on one session must not overlap.
class Session {
public:
    Session(const StreamInfo& info, const Target& target);

    // Decodes a frame into the first of the four planes. Writes nothing unless the whole frame is valid, and then only
    // the pixels, not the gaps between rows. Throws Refusal and std::bad_alloc.
    void decode(std::span<const std::uint8_t> frame, const QuorvanePlane* planes);

private:
    void checkPlanes(const QuorvanePlane* planes) const;
    void writePicture(const Picture& picture, const QuorvanePlane& plane);
    void fetchRow(const Picture& picture, std::uint32_t y);
    void fetchAlpha(const Picture& picture, std::uint32_t y);
    void extendRow();

    StreamInfo m_info;
    TypeLayout m_layout;
    Target m_target;
    std::uint32_t m_targetMax;                  // code of full alpha and of full-range white
    ColorTransform m_transform;
    FrameDecoder m_decoder;
    std::size_t m_rowPixels;                    // the width, rounded up to a whole number of groups
    std::vector<std::uint16_t> m_row[4];        // the row being written: three colours and alpha
};

}  // namespace standin
