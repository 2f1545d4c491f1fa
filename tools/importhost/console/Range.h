// A range of frames or sample frames, as given on the command line.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace importhost {

struct Range {
    std::int64_t first = 0;
    std::int64_t last = -1;         // included; -1: the last one there is
};

// "A-B", "A-" up to the end, "A" alone; nothing for any other text.
std::optional<Range> rangeOf(std::string_view text);

}  // namespace importhost
