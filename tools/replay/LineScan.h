// Parses single lines of the plug-in's log. All functions are pure and thread-safe; they return an empty result for a
// text of another form.
#pragma once

#include "sdk/SdkTypes.h"

#include <charconv>
#include <optional>
#include <string>
#include <string_view>

namespace replay {

struct LogLine {
    std::string_view thread;        // its number as text
    std::string_view message;
};

// "[2026-11-16 00:44:11] [7212] message", optionally with a carriage return at its end.
std::optional<LogLine> scanLine(std::string_view line);

// A text that consists of a decimal number that fits T.
template <class T>
std::optional<T> numberOf(std::string_view text) {
    T value{};
    const char* end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stopped == end && !text.empty() ? std::optional<T>(value) : std::nullopt;
}

// The text after `start`.
std::optional<std::string_view> textAfter(std::string_view message, std::string_view start);

// The number after `start` and any blanks.
template <class T>
std::optional<T> numberAfter(std::string_view message, std::string_view start) {
    auto rest = textAfter(message, start);
    while (rest && rest->starts_with(' ')) {
        rest->remove_prefix(1);
    }
    return rest ? numberOf<T>(*rest) : std::nullopt;
}

struct NamedCode {
    std::string_view name;
    csSDK_int32 code = 0;
    std::string_view rest;          // the remaining text
};

// "[imBadFile] (2)" at the start of a text.
std::optional<NamedCode> scanNamedCode(std::string_view text);

// The code for this text, lowest byte first; unprintable bytes are written as "[n]".
std::optional<csSDK_uint32> codeOfText(std::string_view text);

// Safe for a terminal and a single line: control characters become "\x1b".
std::string printable(std::string_view text);

}  // namespace replay
