#include "importhost/validate/page/Html.h"

#include "text/Utf.h"

namespace importhost::validate {

namespace {

// Control characters, and those that turn the direction of the text after them around.
bool isForDisplay(char16_t unit) {
    const bool isControl = (unit < 0x20 && unit != u'\n' && unit != u'\t') || (unit >= 0x7F && unit < 0xA0);
    const bool turnsText = (unit >= 0x200E && unit <= 0x200F) || (unit >= 0x202A && unit <= 0x202E) ||
                           (unit >= 0x2066 && unit <= 0x2069);
    return !isControl && !turnsText;
}

std::string displayable(std::string_view text) {
    std::u16string units = utf16FromUtf8(text);
    for (char16_t& unit : units) {
        if (!isForDisplay(unit)) {
            unit = 0xFFFD;
        }
    }
    return utf8FromUtf16(units);
}

}  // namespace

std::string htmlText(std::string_view text) {
    std::string markup;
    for (const char character : displayable(text)) {
        switch (character) {
            case '&': markup += "&amp;"; break;
            case '<': markup += "&lt;"; break;
            case '>': markup += "&gt;"; break;
            case '"': markup += "&quot;"; break;
            case '\'': markup += "&#39;"; break;
            default: markup += character; break;
        }
    }
    return markup;
}

std::string element(std::string_view name, std::string_view classes, std::string_view content) {
    std::string markup = "<";
    markup.append(name);
    if (!classes.empty()) {
        markup.append(" class=\"").append(classes).append("\"");
    }
    return markup.append(">").append(content).append("</").append(name).append(">\n");
}

std::string textElement(std::string_view name, std::string_view classes, std::string_view text) {
    return element(name, classes, htmlText(text));
}

}  // namespace importhost::validate
