// Describes the layout of the host's records, and how to obtain it from the compiler.
#pragma once

#include "AbiHeaders.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

namespace abidump {

// Sizes and offsets are in bytes.
struct Type {
    std::string name;
    std::size_t size = 0;
};

struct Member {
    std::string name;
    bool isThere = false;           // the headers have a member of this name; otherwise the rest is invalid
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
    std::string name;               // the name used to acquire it
    std::int64_t version = 0;
};

}  // namespace abidump

// Rows of a table. These are macros because names are also needed as text, even for numbers that are macros in the
// headers.
#define TYPE(type) ::abidump::Type{#type, sizeof(type)}
#define NUMBER(name) ::abidump::Number{#name, static_cast<std::int64_t>(name)}
#define RECORD(record, ...)                                               \
    [] {                                                                  \
        using This = record;                                              \
        return ::abidump::Record{#record, sizeof(This), {__VA_ARGS__}};   \
    }()

// Use only in a RECORD. Headers of another version may lack a member: that must be reported, not fail to compile.
#define MEMBER(member)                                                                                 \
    []<class Asked>(std::type_identity<Asked>) {                                                       \
        if constexpr (requires { sizeof(Asked::member); }) {                                           \
            return ::abidump::Member{#member, true, offsetof(Asked, member), sizeof(Asked::member)};   \
        } else {                                                                                       \
            return ::abidump::Member{#member};                                                         \
        }                                                                                              \
    }(std::type_identity<This>{})
