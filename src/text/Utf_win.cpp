#include "text/Utf.h"

#include <climits>
#include <cstddef>
#include <stdexcept>

#include <windows.h>

static_assert(sizeof(wchar_t) == sizeof(char16_t));

namespace {

constexpr DWORD kReplaceIllFormed = 0;  // without MB_ERR_INVALID_CHARS, invalid input becomes U+FFFD

int systemLength(std::size_t length) {
    if (length > INT_MAX) {
        throw std::length_error("text is too long to convert");
    }
    return static_cast<int>(length);
}

}  // namespace

std::string utf8FromUtf16(std::u16string_view text) {
    if (text.empty()) {
        return {};
    }
    const auto* source = reinterpret_cast<const wchar_t*>(text.data());
    const int sourceLength = systemLength(text.size());
    const int length =
        WideCharToMultiByte(CP_UTF8, kReplaceIllFormed, source, sourceLength, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, kReplaceIllFormed, source, sourceLength, result.data(), length, nullptr, nullptr);
    return result;
}

std::u16string utf16FromUtf8(std::string_view text) {
    if (text.empty()) {
        return {};
    }
    const int sourceLength = systemLength(text.size());
    const int length = MultiByteToWideChar(CP_UTF8, kReplaceIllFormed, text.data(), sourceLength, nullptr, 0);
    std::u16string result(static_cast<std::size_t>(length), u'\0');
    MultiByteToWideChar(CP_UTF8, kReplaceIllFormed, text.data(), sourceLength,
                        reinterpret_cast<wchar_t*>(result.data()), length);
    return result;
}
