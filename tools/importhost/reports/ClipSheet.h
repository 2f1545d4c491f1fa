// The frames of a clip for its contact sheet, spread evenly from the first one.
#pragma once

#include "importhost/clips/VideoClip.h"
#include "importhost/pictures/ContactSheet.h"

#include <cstdint>
#include <functional>

namespace importhost {

// `wanted`, or the number of the clip's frames if it has fewer; at least one.
std::int64_t sheetTileCount(const VideoClip& clip, int wanted);

// A failed frame is a tile without a picture. `made` is called after each. Throws ClipFailure if no offered pixel
// format can be shown as a picture.
std::vector<SheetTile> sheetTiles(VideoClip& clip, int wanted, const std::function<void()>& made = [] {});

}  // namespace importhost
