#include "importhost/reports/ClipSheet.h"

#include "hostkit/sessions/Names.h"
#include "importhost/reports/ClipReport.h"

#include <algorithm>

namespace importhost {

namespace {

PrPixelFormat pictureFormatOf(VideoClip& clip) {
    const auto& formats = clip.formats();
    const auto found = std::find_if(formats.begin(), formats.end(), isPictureFormat);
    if (found == formats.end()) {
        throw ClipFailure("No picture can be made of any pixel format that is offered for this clip.");
    }
    return *found;
}

SheetTile tileOf(VideoClip& clip, std::int64_t index, PrPixelFormat format) {
    const hostkit::FrameAnswer answer = clip.frame(index, format);
    SheetTile tile{std::nullopt, std::to_string(index), timeText(clip.secondsOf(index)),
                   std::string(hostkit::resultName(answer.result))};
    if (const auto view = answer.frame.view()) {
        tile.picture = pictureOf(*view);
    }
    return tile;
}

// The start of part `part` of `parts` equal ones, computed without 64-bit overflow.
std::int64_t startOf(std::int64_t part, std::int64_t parts, std::int64_t frames) {
    return frames / parts * part + frames % parts * part / parts;
}

}  // namespace

std::int64_t sheetTileCount(const VideoClip& clip, int wanted) {
    return std::clamp<std::int64_t>(wanted, 1, std::max<std::int64_t>(clip.frameCount(), 1));
}

std::vector<SheetTile> sheetTiles(VideoClip& clip, int wanted, const std::function<void()>& made) {
    const PrPixelFormat format = pictureFormatOf(clip);
    const std::int64_t count = sheetTileCount(clip, wanted);
    std::vector<SheetTile> tiles;
    for (std::int64_t i = 0; i < count; ++i) {
        tiles.push_back(tileOf(clip, startOf(i, count, clip.frameCount()), format));
        made();
    }
    return tiles;
}

}  // namespace importhost
