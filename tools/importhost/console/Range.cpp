#include "importhost/console/Range.h"

#include <charconv>

namespace importhost {

namespace {

bool readNumber(std::string_view text, std::int64_t& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && number >= 0;
}

}  // namespace

std::optional<Range> rangeOf(std::string_view text) {
    Range range;
    const std::size_t dash = text.find('-');
    if (!readNumber(text.substr(0, dash), range.first)) {
        return std::nullopt;
    }
    if (dash == std::string_view::npos) {
        range.last = range.first;
        return range;
    }
    const std::string_view second = text.substr(dash + 1);
    if (!second.empty() && (!readNumber(second, range.last) || range.last < range.first)) {
        return std::nullopt;
    }
    return range;
}

}  // namespace importhost
