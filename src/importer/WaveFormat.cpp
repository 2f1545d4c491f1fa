#include "importer/WaveFormat.h"

#include <cstdio>

std::string guidText(const Guid& guid) {
    char text[40];
    const auto& d = guid.data4;
    std::snprintf(text, sizeof text, "%08x-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x",
                  static_cast<unsigned>(guid.data1), static_cast<unsigned>(guid.data2),
                  static_cast<unsigned>(guid.data3), d[0], d[1], d[2], d[3], d[4], d[5], d[6], d[7]);
    return text;
}
