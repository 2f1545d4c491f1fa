// Taking single lines of the plug-in's log apart. Everything here is pure and safe on any thread; a text that does not
// have the shape asked for gives nothing.
#pragma once

#include "sdk/SdkTypes.h"

#include <charconv>
#include <optional>
#include <string>
#include <string_view>

namespace replay {

struct LogLine {
    std::string_view thread;        // its number as written
    std::string_view message;
};

// "[2026-11-16 00:44:11] [7212] message", with or without a carriage return at its end.
std::optional<LogLine> scanLine(std::string_view line);

// A whole text that is a number in decimal and fits T.
template <class T>
std::optional<T> numberOf(std::string_view text) {
    T value{};
    const char* end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stopped == end && !text.empty() ? std::optional<T>(value) : std::nullopt;
}

// What follows `start`.
std::optional<std::string_view> textAfter(std::string_view message, std::string_view start);

// A number that follows `start` and any blanks.
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
    std::string_view rest;          // what follows
};

// "[imBadFile] (2)" at the start of a text.
std::optional<NamedCode> scanNamedCode(std::string_view text);

// The code whose text, lowest byte first, is this; unprintable bytes are written as "[n]".
std::optional<csSDK_uint32> codeOfText(std::string_view text);

// Fit for a terminal and a single line: control characters as "\x1b".
std::string printable(std::string_view text);

}  // namespace replay
