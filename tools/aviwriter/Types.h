// The codec's compressed types by number, by four-character name and in words.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace aviwriter {

struct TypeName {
    std::uint32_t type = 0;
    std::string_view code;    // as the importer shows it to the host
    std::string_view words;
};

// The sixteen types that the importer knows.
std::span<const TypeName> typeNames();

// A type's code, or its number where it has none. Never fails.
std::string typeCode(std::uint32_t type);

// A type's words, or nothing where it has none. Never fails.
std::string typeWords(std::uint32_t type);

// The type with this code or this decimal number, whether or not the importer knows it; throws
// std::invalid_argument for any other text.
std::uint32_t typeFromText(std::string_view text);

}  // namespace aviwriter
