// Text as the host's interface has it: UTF-16 names, four-character codes, packed 8-bit names.
// All functions are pure and safe on any thread; input that is no valid text becomes U+FFFD, nothing throws.
#pragma once

#include "sdk/SdkTypes.h"
#include "text/FourCC.h"
#include "text/Utf.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace hostkit {

inline std::string toUtf8(std::u16string_view text) { return utf8FromUtf16(text); }
inline std::string toUtf8(const std::u16string& text) { return utf8FromUtf16(text); }

// A path and its UTF-8 form; std::filesystem's own narrow form depends on the system's code page.
std::string toUtf8(const std::filesystem::path& path);
std::filesystem::path pathFromUtf8(std::string_view utf8);

// The text of a fixed field: up to its terminator, or whole when it has none.
std::string fieldText(const char* field, std::size_t size);
std::u16string fieldText(const prUTF16Char* field, std::size_t units);

// The four bytes of a code, lowest first ("bgra") or highest first ("AVIV"); unprintable bytes as "[n]".
inline std::string codeText(csSDK_uint32 code) { return FourCCToString(code, false); }
inline std::string codeTextHighFirst(csSDK_uint32 code) { return FourCCToString(code, true); }

}  // namespace hostkit
