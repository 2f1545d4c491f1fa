#include "aviwriter/Types.h"

#include <array>
#include <charconv>
#include <stdexcept>

namespace aviwriter {

namespace {

constexpr std::array<TypeName, 16> kTypeNames = {{
    {101, "GR8Q", "8-bit RGB"},
    {102, "AR8Q", "8-bit RGBA"},
    {103, "4Y8Q", "8-bit YUV 4:4:4"},
    {104, "2Y8Q", "8-bit YUV 4:2:2"},
    {105, "0Y8Q", "8-bit YUV 4:2:0"},
    {106, "AY8Q", "8-bit YUVA 4:4:4:4"},
    {107, "0G8Q", "8-bit grey"},
    {108, "2Y0Q", "10-bit YUV 4:2:2"},
    {109, "GR0Q", "10-bit RGB"},
    {110, "AR0Q", "10-bit RGBA"},
    {111, "GR2Q", "12-bit RGB"},
    {112, "AR2Q", "12-bit RGBA"},
    {113, "GR4Q", "14-bit RGB"},
    {114, "AR4Q", "14-bit RGBA"},
    {115, "0G0Q", "10-bit grey"},
    {118, "4Y0Q", "10-bit YUV 4:4:4"},
}};

const TypeName* findType(std::uint32_t type) {
    for (const TypeName& name : kTypeNames) {
        if (name.type == type) {
            return &name;
        }
    }
    return nullptr;
}

}  // namespace

std::span<const TypeName> typeNames() {
    return kTypeNames;
}

std::string typeCode(std::uint32_t type) {
    const TypeName* name = findType(type);
    return name ? std::string(name->code) : std::to_string(type);
}

std::string typeWords(std::uint32_t type) {
    const TypeName* name = findType(type);
    return name ? std::string(name->words) : std::string();
}

std::uint32_t typeFromText(std::string_view text) {
    for (const TypeName& name : kTypeNames) {
        if (name.code == text) {
            return name.type;
        }
    }
    std::uint32_t number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end) {
        throw std::invalid_argument("no such type: '" + std::string(text) + "'");
    }
    return number;
}

}  // namespace aviwriter
