#include "importhost/validate/page/FactList.h"

#include <cmath>
#include <cstdio>

namespace importhost::validate {

namespace {

// In groups of three digits.
std::string grouped(long long number) {
    std::string text = std::to_string(number);
    for (std::size_t at = text.size(); at > 3; at -= 3) {
        text.insert(at - 3, " ");
    }
    return text;
}

}  // namespace

std::string sizeText(double bytes) {
    std::string exact = grouped(std::llround(bytes)) + (bytes == 1.0 ? " byte" : " bytes");
    double size = bytes;
    const char* unit = nullptr;
    for (const char* larger : {"KiB", "MiB", "GiB", "TiB"}) {
        if (size < 1024.0) {
            break;
        }
        size /= 1024.0;
        unit = larger;
    }
    if (!unit) {
        return exact;
    }
    char text[64] = {};
    std::snprintf(text, sizeof(text), size < 10.0 ? "%.1f %s" : "%.0f %s", size, unit);
    return std::string(text) + " (" + exact + ")";
}

}  // namespace importhost::validate
