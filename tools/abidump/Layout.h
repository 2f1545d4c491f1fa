// What is known of the layout of the host's records, and how it is asked of the compiler.
#pragma once

#include "AbiHeaders.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

namespace abidump {

// Sizes and offsets in bytes.
struct Type {
    std::string name;
    std::size_t size = 0;
};

struct Member {
    std::string name;
    bool isThere = false;           // the headers have a member of this name; the rest means nothing otherwise
    std::size_t offset = 0;
    std::size_t size = 0;
};

struct Record {
    std::string name;
    std::size_t size = 0;
    std::vector<Member> members;
};

struct Number {
    std::string name;
    std::int64_t value = 0;
};

struct Suite {
    std::string table;              // the record's name
    std::string name;               // by which it is asked for
    std::int64_t version = 0;
};

}  // namespace abidump

// A row of a table. Macros: names are wanted as text as well, also of numbers that are macros in the headers.
#define TYPE(type) ::abidump::Type{#type, sizeof(type)}
#define NUMBER(name) ::abidump::Number{#name, static_cast<std::int64_t>(name)}
#define RECORD(record, ...)                                               \
    [] {                                                                  \
        using This = record;                                              \
        return ::abidump::Record{#record, sizeof(This), {__VA_ARGS__}};   \
    }()

// Only in a RECORD. Headers of another version may lack a member: that must be told, not end the compilation.
#define MEMBER(member)                                                                                 \
    []<class Asked>(std::type_identity<Asked>) {                                                       \
        if constexpr (requires { sizeof(Asked::member); }) {                                           \
            return ::abidump::Member{#member, true, offsetof(Asked, member), sizeof(Asked::member)};   \
        } else {                                                                                       \
            return ::abidump::Member{#member};                                                         \
        }                                                                                              \
    }(std::type_identity<This>{})
