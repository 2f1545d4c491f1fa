#include "replay/LineScan.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace replay {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// True if the text matches the pattern, in which 0 stands for any digit.
bool hasShape(std::string_view text, std::string_view pattern) {
    return text.size() == pattern.size() &&
           std::equal(text.begin(), text.end(), pattern.begin(),
                      [](char c, char wanted) { return wanted == '0' ? isDigit(c) : c == wanted; });
}

constexpr std::string_view kTimeShape = "[0000-00-00 00:00:00] [";

// Removes the next byte of a code from the front of its text.
std::optional<csSDK_uint32> takeByte(std::string_view& text) {
    const std::size_t end = text.find(']');
    if (text.front() == '[' && end != std::string_view::npos) {
        if (const auto value = numberOf<unsigned char>(text.substr(1, end - 1))) {
            text.remove_prefix(end + 1);
            return *value;
        }
    }
    const auto value = static_cast<unsigned char>(text.front());
    text.remove_prefix(1);
    return value;
}

}  // namespace

std::optional<LogLine> scanLine(std::string_view line) {
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    if (!hasShape(line.substr(0, kTimeShape.size()), kTimeShape)) {
        return std::nullopt;
    }
    line.remove_prefix(kTimeShape.size());
    const std::size_t end = line.find("] ");
    if (end == std::string_view::npos || end == 0 || !std::all_of(line.begin(), line.begin() + end, isDigit)) {
        return std::nullopt;
    }
    return LogLine{line.substr(0, end), line.substr(end + 2)};
}

std::optional<std::string_view> textAfter(std::string_view message, std::string_view start) {
    if (!message.starts_with(start)) {
        return std::nullopt;
    }
    return message.substr(start.size());
}

std::optional<NamedCode> scanNamedCode(std::string_view text) {
    const std::size_t nameEnd = text.find("] (");
    if (!text.starts_with('[') || nameEnd == std::string_view::npos) {
        return std::nullopt;
    }
    const std::size_t codeStart = nameEnd + 3;
    const std::size_t codeEnd = text.find(')', codeStart);
    if (codeEnd == std::string_view::npos) {
        return std::nullopt;
    }
    const auto code = numberOf<csSDK_int32>(text.substr(codeStart, codeEnd - codeStart));
    if (!code) {
        return std::nullopt;
    }
    return NamedCode{text.substr(1, nameEnd - 1), *code, text.substr(codeEnd + 1)};
}

std::optional<csSDK_uint32> codeOfText(std::string_view text) {
    csSDK_uint32 code = 0;
    for (int i = 0; i < 4; ++i) {
        const auto byte = text.empty() ? std::nullopt : takeByte(text);
        if (!byte) {
            return std::nullopt;
        }
        code |= *byte << (8 * i);
    }
    return text.empty() ? std::optional<csSDK_uint32>(code) : std::nullopt;
}

std::string printable(std::string_view text) {
    std::string shown;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte != 0x7F) {
            shown.push_back(c);
            continue;
        }
        std::array<char, 8> escaped{};
        std::snprintf(escaped.data(), escaped.size(), "\\x%02x", static_cast<unsigned>(byte));
        shown.append(escaped.data());
    }
    return shown;
}

}  // namespace replay
