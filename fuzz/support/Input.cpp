#include "support/Input.h"

namespace fuzz {

Input splitInput(ByteView bytes) {
    if (bytes.empty()) {
        return {};
    }
    const std::size_t length = bytes.back();
    if (length > kLongestScript || length >= bytes.size()) {
        return {bytes, {}};
    }
    const std::size_t fileSize = bytes.size() - 1 - length;
    return {bytes.first(fileSize), bytes.subspan(fileSize, length)};
}

Bytes joinInput(ByteView file, ByteView script) {
    Bytes bytes(file.begin(), file.end());
    bytes.insert(bytes.end(), script.begin(), script.end());
    bytes.push_back(static_cast<std::uint8_t>(script.size()));
    return bytes;
}

std::uint8_t Script::next8() {
    if (m_left.empty()) {
        return 0;
    }
    const std::uint8_t value = m_left.front();
    m_left = m_left.subspan(1);
    return value;
}

std::uint16_t Script::next16() {
    const unsigned low = next8();
    return static_cast<std::uint16_t>(low | static_cast<unsigned>(next8()) << 8);
}

std::uint32_t Script::next32() {
    const std::uint32_t low = next16();
    return low | static_cast<std::uint32_t>(next16()) << 16;
}

}  // namespace fuzz
