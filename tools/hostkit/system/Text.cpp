#include "hostkit/system/Text.h"

#include <algorithm>

namespace hostkit {

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

}  // namespace hostkit
