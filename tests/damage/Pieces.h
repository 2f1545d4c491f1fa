// Parts that damaged files are made of: one honest little clip, in pieces.
#pragma once

#include "aviwriter/Blocks.h"

#include <cstdint>
#include <vector>

namespace damage {

using aviwriter::Bytes;

// A compressed picture of the clip, 8 x 4 pixels, every sample of it 40 + `number`.
Bytes pictureFrame(std::uint32_t number);
constexpr int kFirstPictureValue = 40;

// The "strf" data of the clip's video.
Bytes videoFormat();

// "strl" lists of an honest video stream at 25 frames per second, and of 16-bit stereo sound at 48000 Hz; `more`
// follows header and format.
Bytes videoList(std::uint32_t frames, const std::vector<Bytes>& more = {});
Bytes soundList(std::uint32_t sampleFrames, const std::vector<Bytes>& more = {});

// "hdrl" with its main header and these streams.
Bytes headers(const std::vector<Bytes>& streams);

}  // namespace damage
