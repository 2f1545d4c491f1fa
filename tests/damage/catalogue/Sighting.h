// What an editor sees of a file: opens and describes it, requests pictures and sound at the start, in the middle and at
// the end, and closes it.
#pragma once

#include "hostkit/sessions/ClipSession.h"

#include <filesystem>
#include <string>
#include <vector>

namespace damage {

inline constexpr PrTime kTicksPerPicture = 10160640000;   // at 25 pictures per second

// Returns a text such as
//   refused: imBadFile (2)
//   10 pictures, all right; 19200 samples of sound, all right
//   10 pictures: 0-3 right, 4-9 imFileReadFailed (33); 19200 samples of sound, silent from 7680 on
// A picture is right if it is the clip's picture of that number. Of more than 20 pictures it requests the first two,
// the middle one and the last two; of more than 19200 samples those and the last 100. It compares every channel, and
// every further sound stream ("; streams 1-3 with ..."). If the rate or the length makes no sense, it requests pictures
// at the times that the numbers without their signs result in, ahead from the start and back from it.
std::string sightOf(hostkit::ImporterSession& session, const std::filesystem::path& path);

// The log's lines about damage, each once, in the order of their first appearance.
std::vector<std::string> damageLines(const std::vector<std::string>& messages);

}  // namespace damage
