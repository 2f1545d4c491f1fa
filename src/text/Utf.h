// UTF-8 and UTF-16: the host uses UTF-16 for paths and names, logs and messages are UTF-8.
#pragma once

#include <string>
#include <string_view>

/// Converts UTF-16 to UTF-8. An unpaired surrogate becomes U+FFFD; embedded zeros are kept. Thread-safe. Throws
/// std::bad_alloc, and std::length_error if `text` is longer than 2^31 - 1 units.
std::string utf8FromUtf16(std::u16string_view text);

/// Converts UTF-8 to UTF-16. Ill-formed sequences become U+FFFD; embedded zeros are kept. Thread-safe. Throws
/// std::bad_alloc, and std::length_error if `text` is longer than 2^31 - 1 bytes.
std::u16string utf16FromUtf8(std::string_view text);
