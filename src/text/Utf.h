// UTF-8 and UTF-16: the host uses UTF-16 for paths and names, logs and messages are UTF-8.
#pragma once

#include <string>
#include <string_view>

// Converts UTF-16 to UTF-8. An unpaired surrogate becomes U+FFFD; embedded zeros are kept. Thread-safe. Throws
// std::bad_alloc.
std::string utf8FromUtf16(std::u16string_view text);

// Converts UTF-8 to UTF-16. Each maximal subpart of an ill-formed sequence (the longest start of a valid character, or
// else one byte) becomes one U+FFFD, on every system; embedded zeros are kept. Thread-safe. Throws std::bad_alloc.
std::u16string utf16FromUtf8(std::string_view text);
