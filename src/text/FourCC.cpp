#include "text/FourCC.h"

std::string FourCCToString(std::uint32_t value, bool reversed) {
    std::string text;
    for (int i = 0; i < 4; ++i) {
        const int index = reversed ? 3 - i : i;
        const std::uint32_t byte = value >> (8 * index) & 0xFF;
        if (byte >= 0x20 && byte <= 0x7E) {
            text.push_back(static_cast<char>(byte));
        } else {
            text += '[' + std::to_string(byte) + ']';
        }
    }
    return text;
}
