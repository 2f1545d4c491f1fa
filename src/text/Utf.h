// UTF-8 and UTF-16: paths and names cross the host's boundary as UTF-16, logs and messages are UTF-8.
#pragma once

#include <string>
#include <string_view>

/// The UTF-8 form of UTF-16 text. An unpaired surrogate becomes U+FFFD; embedded zeros are kept; empty gives empty.
/// Any thread. Throws std::bad_alloc, and std::length_error for text beyond 2^31 - 1 units.
std::string utf8FromUtf16(std::u16string_view text);

/// The UTF-16 form of UTF-8 text. What is not UTF-8 becomes U+FFFD; embedded zeros are kept; empty gives empty.
/// Any thread. Throws std::bad_alloc, and std::length_error for text beyond 2^31 - 1 bytes.
std::u16string utf16FromUtf8(std::string_view text);
