// What an editor hears of a stream's sound, compared with its media.
#pragma once

#include "hostkit/sessions/ClipSession.h"

#include <cstdint>
#include <string>

namespace damage {

// Returns a text such as
//   19200 samples of sound, all right
//   19200 samples of sound in 32 channels, silent from 7680 on
// for the stream that was described last, with the result `info`. Compares every channel with the signal of that
// channel in the sound stream `stream`, counted from 0 among the sound streams.
std::string soundOf(hostkit::ClipSession& clip, const imFileInfoRec8& info, std::uint32_t stream);

// "1 picture", "2 pictures".
std::string counted(std::int64_t count, const std::string& thing);

}  // namespace damage
