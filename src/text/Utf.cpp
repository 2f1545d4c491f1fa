// Does not use the system's converter: systems differ for ill-formed text, and a log must read the same everywhere.
#include "text/Utf.h"

namespace {

constexpr char32_t kReplacement = 0xFFFD;

// What a UTF-8 lead byte requires. The range of the second byte excludes overlong forms, surrogates and code points
// above U+10FFFF; later bytes are always 0x80 to 0xBF.
struct Lead {
    int continuationBytes;
    char32_t bits;
    unsigned char secondMin;
    unsigned char secondMax;
};

constexpr Lead kNoLead{-1, 0, 0, 0};

Lead leadOf(unsigned char byte) {
    const char32_t value = byte;
    if (byte < 0x80) return {0, value, 0, 0};
    if (byte < 0xC2) return kNoLead;
    if (byte < 0xE0) return {1, value & 0x1F, 0x80, 0xBF};
    if (byte == 0xE0) return {2, value & 0x0F, 0xA0, 0xBF};
    if (byte == 0xED) return {2, value & 0x0F, 0x80, 0x9F};
    if (byte < 0xF0) return {2, value & 0x0F, 0x80, 0xBF};
    if (byte == 0xF0) return {3, value & 0x07, 0x90, 0xBF};
    if (byte < 0xF4) return {3, value & 0x07, 0x80, 0xBF};
    if (byte == 0xF4) return {3, value & 0x07, 0x80, 0x8F};
    return kNoLead;
}

// Removes the next code point from `text`. An ill-formed sequence is removed up to the first byte that makes it
// ill-formed, so each maximal subpart becomes one U+FFFD and the next character is kept.
char32_t takeCodePoint(std::string_view& text) {
    const Lead lead = leadOf(static_cast<unsigned char>(text.front()));
    text.remove_prefix(1);
    if (lead.continuationBytes < 0) {
        return kReplacement;
    }
    char32_t value = lead.bits;
    for (int i = 0; i < lead.continuationBytes; ++i) {
        const unsigned char min = i == 0 ? lead.secondMin : 0x80;
        const unsigned char max = i == 0 ? lead.secondMax : 0xBF;
        if (text.empty()) {
            return kReplacement;
        }
        const auto byte = static_cast<unsigned char>(text.front());
        if (byte < min || byte > max) {
            return kReplacement;
        }
        value = value << 6 | (byte & 0x3Fu);
        text.remove_prefix(1);
    }
    return value;
}

char32_t takeCodePoint(std::u16string_view& text) {
    const char32_t first = text.front();
    text.remove_prefix(1);
    if (first < 0xD800 || first > 0xDFFF) {
        return first;
    }
    const bool paired = first < 0xDC00 && !text.empty() && text.front() >= 0xDC00 && text.front() <= 0xDFFF;
    if (!paired) {
        return kReplacement;
    }
    const char32_t second = text.front();
    text.remove_prefix(1);
    return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
}

void append(std::string& text, char32_t value) {
    const auto put = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (value < 0x80) {
        put(value);
    } else if (value < 0x800) {
        put(0xC0 | value >> 6);
        put(0x80 | (value & 0x3F));
    } else if (value < 0x10000) {
        put(0xE0 | value >> 12);
        put(0x80 | (value >> 6 & 0x3F));
        put(0x80 | (value & 0x3F));
    } else {
        put(0xF0 | value >> 18);
        put(0x80 | (value >> 12 & 0x3F));
        put(0x80 | (value >> 6 & 0x3F));
        put(0x80 | (value & 0x3F));
    }
}

void append(std::u16string& text, char32_t value) {
    if (value < 0x10000) {
        text.push_back(static_cast<char16_t>(value));
        return;
    }
    const char32_t offset = value - 0x10000;
    text.push_back(static_cast<char16_t>(0xD800 + (offset >> 10)));
    text.push_back(static_cast<char16_t>(0xDC00 + (offset & 0x3FF)));
}

template <typename To, typename From>
To convert(From text) {
    To result;
    while (!text.empty()) {
        append(result, takeCodePoint(text));
    }
    return result;
}

}  // namespace

std::string utf8FromUtf16(std::u16string_view text) {
    return convert<std::string>(text);
}

std::u16string utf16FromUtf8(std::string_view text) {
    return convert<std::u16string>(text);
}
