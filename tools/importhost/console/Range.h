// A range of frames or sample frames, as given on the command line.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace importhost {

struct Range {
    std::int64_t first = 0;
    std::int64_t last = -1;         // inclusive; -1: the end
};

// "A-B", "A-" (to the end) or "A"; empty for any other text.
std::optional<Range> rangeOf(std::string_view text);

}  // namespace importhost
