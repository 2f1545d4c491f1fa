// The codec's compressed types by number, four-character code and name.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace aviwriter {

struct TypeName {
    std::uint32_t type = 0;
    std::string_view code;    // as shown to the host by the importer
    std::string_view words;
};

// The sixteen types that the importer supports.
std::span<const TypeName> typeNames();

// The type's code, or its number if it has none. Never fails.
std::string typeCode(std::uint32_t type);

// The type's name, or "" if it has none. Never fails.
std::string typeWords(std::uint32_t type);

// The type with this code or decimal number, whether or not the importer supports it; throws std::invalid_argument for
// any other text.
std::uint32_t typeFromText(std::string_view text);

}  // namespace aviwriter
