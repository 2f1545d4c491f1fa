// Patterns for names: * stands for any text, also none.
#pragma once

#include <string_view>

namespace importhost::validate {

inline bool fitsWildcard(std::string_view text, std::string_view pattern) {
    const std::size_t star = pattern.find('*');
    if (star == std::string_view::npos) {
        return text == pattern;
    }
    if (text.substr(0, star) != pattern.substr(0, star)) {
        return false;
    }
    const std::string_view rest = pattern.substr(star + 1);
    for (std::size_t start = star; start <= text.size(); ++start) {
        if (fitsWildcard(text.substr(start), rest)) {
            return true;
        }
    }
    return false;
}

}  // namespace importhost::validate
