// A contact sheet: thumbnails in a grid, with frame number and time under each and the clip's name at the top.
#pragma once

#include "importhost/pictures/Picture.h"

#include <optional>
#include <string>
#include <vector>

namespace importhost {

struct SheetTile {
    std::optional<Picture> picture;     // empty if the frame failed; then `note` says how
    std::string label;                  // below the picture, on the left
    std::string time;                   // below the picture, on the right
    std::string note;
};

struct SheetLayout {
    int columns = 4;
    int tileWidth = 320;                // pixels
    int tileHeight = 180;
};

// The height of a tile for a clip's frame size and the tile's width.
int tileHeightFor(int tileWidth, int frameWidth, int frameHeight);

// No space is reserved for an empty title and subtitle.
Picture drawSheet(const std::string& title, const std::string& subtitle, const std::vector<SheetTile>& tiles,
                  const SheetLayout& layout);

}  // namespace importhost
