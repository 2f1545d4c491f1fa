#include "hostkit/system/Text.h"

#include <algorithm>

namespace hostkit {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

void appendUtf8(std::string& out, char32_t point) {
    const auto put = [&out](char32_t byte) { out.push_back(static_cast<char>(static_cast<unsigned char>(byte))); };
    if (point < 0x80) {
        put(point);
    } else if (point < 0x800) {
        put(0xC0 | point >> 6);
        put(0x80 | (point & 0x3F));
    } else if (point < 0x10000) {
        put(0xE0 | point >> 12);
        put(0x80 | (point >> 6 & 0x3F));
        put(0x80 | (point & 0x3F));
    } else {
        put(0xF0 | point >> 18);
        put(0x80 | (point >> 12 & 0x3F));
        put(0x80 | (point >> 6 & 0x3F));
        put(0x80 | (point & 0x3F));
    }
}

// Takes one code point off the front of `text`.
char32_t takeUtf16(std::u16string_view& text) {
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

struct Utf8Lead {
    int following;
    char32_t bits;
    char32_t smallest;      // a shorter form of the same code point is invalid
};

Utf8Lead leadOf(unsigned char byte) {
    if (byte < 0x80) return {0, byte, 0};
    if (byte >= 0xC2 && byte < 0xE0) return {1, byte & 0x1Fu, 0x80};
    if (byte >= 0xE0 && byte < 0xF0) return {2, byte & 0x0Fu, 0x800};
    if (byte >= 0xF0 && byte < 0xF5) return {3, byte & 0x07u, 0x10000};
    return {0, kReplacement, 0};
}

char32_t takeUtf8(std::string_view& text) {
    const Utf8Lead lead = leadOf(static_cast<unsigned char>(text.front()));
    text.remove_prefix(1);
    char32_t point = lead.bits;
    for (int i = 0; i < lead.following; ++i) {
        const bool continues = !text.empty() && (static_cast<unsigned char>(text.front()) & 0xC0) == 0x80;
        if (!continues) {
            return kReplacement;
        }
        point = point << 6 | (static_cast<unsigned char>(text.front()) & 0x3Fu);
        text.remove_prefix(1);
    }
    const bool surrogate = point >= 0xD800 && point <= 0xDFFF;
    return point < lead.smallest || surrogate || point > 0x10FFFF ? kReplacement : point;
}

void appendCodeByte(std::string& out, csSDK_uint32 byte) {
    if (byte >= 0x20 && byte < 0x7F) {
        out.push_back(static_cast<char>(byte));
    } else {
        out.append("[").append(std::to_string(byte)).append("]");
    }
}

}  // namespace

std::string toUtf8(std::u16string_view text) {
    std::string out;
    while (!text.empty()) {
        appendUtf8(out, takeUtf16(text));
    }
    return out;
}

std::u16string toUtf16(std::string_view utf8) {
    std::u16string out;
    while (!utf8.empty()) {
        const char32_t point = takeUtf8(utf8);
        if (point < 0x10000) {
            out.push_back(static_cast<char16_t>(point));
        } else {
            out.push_back(static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10)));
            out.push_back(static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF)));
        }
    }
    return out;
}

std::string toUtf8(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::filesystem::path pathFromUtf8(std::string_view utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string fieldText(const char* field, std::size_t size) {
    return {field, std::find(field, field + size, '\0')};
}

std::u16string fieldText(const prUTF16Char* field, std::size_t units) {
    return {field, std::find(field, field + units, u'\0')};
}

std::string codeText(csSDK_uint32 code) {
    std::string out;
    for (int shift = 0; shift < 32; shift += 8) {
        appendCodeByte(out, code >> shift & 0xFF);
    }
    return out;
}

std::string codeTextHighFirst(csSDK_uint32 code) {
    std::string out;
    for (int shift = 24; shift >= 0; shift -= 8) {
        appendCodeByte(out, code >> shift & 0xFF);
    }
    return out;
}

}  // namespace hostkit
