#include "text/Numbers.h"

#include <charconv>

std::string fixedPoint(double value, int digits) {
    char text[512];   // the largest double has 309 digits
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, digits);
    return std::string(text, end.ptr);
}

std::string mebibytes(std::uint64_t bytes) {
    return fixedPoint(static_cast<double>(bytes) / 1024 / 1024, 2) + " MiB";
}
