// Reading a JSON document that may lack anything: what a program wrote whose memory a plug-in had in its hands.
#pragma once

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

namespace importhost::validate {

using Json = nlohmann::ordered_json;

// The member, or null for what has none of that name.
inline const Json& member(const Json& json, std::string_view key) {
    static const Json none;
    const auto found = json.is_object() ? json.find(std::string(key)) : json.end();
    return found == json.end() ? none : *found;
}

// The member if it is of that kind, else an empty text, 0 or false.
inline std::string textOf(const Json& json, std::string_view key) {
    const Json& value = member(json, key);
    return value.is_string() ? value.get<std::string>() : std::string();
}
inline double numberOf(const Json& json, std::string_view key) {
    const Json& value = member(json, key);
    return value.is_number() && std::isfinite(value.get<double>()) ? value.get<double>() : 0.0;
}
inline std::int64_t integerOf(const Json& json, std::string_view key) {
    const Json& value = member(json, key);
    return value.is_number_integer() ? value.get<std::int64_t>() : 0;
}
inline bool isSet(const Json& json, std::string_view key) {
    const Json& value = member(json, key);
    return value.is_boolean() && value.get<bool>();
}

}  // namespace importhost::validate
