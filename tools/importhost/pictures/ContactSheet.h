// A clip at a glance: thumbnails in a grid, with frame number and time under each and the clip's name on top.
#pragma once

#include "importhost/pictures/Picture.h"

#include <optional>
#include <string>
#include <vector>

namespace importhost {

struct SheetTile {
    std::optional<Picture> picture;     // none: the frame failed, and `note` says how
    std::string label;                  // under the picture, on the left
    std::string time;                   // under the picture, on the right
    std::string note;
};

struct SheetLayout {
    int columns = 4;
    int tileWidth = 320;                // pixels
    int tileHeight = 180;
};

// A tile's height for a clip's frame size, at the tile's width.
int tileHeightFor(int tileWidth, int frameWidth, int frameHeight);

// Without a title and a subtitle there is no room left for them.
Picture drawSheet(const std::string& title, const std::string& subtitle, const std::vector<SheetTile>& tiles,
                  const SheetLayout& layout);

}  // namespace importhost
