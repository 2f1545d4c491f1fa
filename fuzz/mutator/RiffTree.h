// An AVI file as a tree that can be changed and written back. Sizes follow the contents automatically; a size that did
// not fit when the file was read stays as stated.
#pragma once

#include "support/Input.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace fuzz {

struct Chunk {
    std::uint32_t id = 0;                       // four-character code
    std::uint32_t listType = 0;                 // of "RIFF" and "LIST"
    bool isList = false;
    Bytes data;                                 // of a list: the bytes after its last whole chunk
    std::vector<Chunk> children;
    std::optional<std::uint32_t> claimedSize;   // if it differs from the size of the contents
    std::optional<std::uint8_t> pad;            // after an odd number of bytes
    std::size_t position = 0;                   // of the header, as last written
};

struct RiffTree {
    std::vector<Chunk> chunks;
    Bytes rest;                                 // after the last whole chunk
};

// A chunk's position in its list. Changing the list invalidates its other places.
struct Place {
    std::vector<Chunk>* siblings = nullptr;
    std::size_t index = 0;

    Chunk& chunk() const { return (*siblings)[index]; }
};

RiffTree readTree(ByteView file);

// Sets every chunk's position. Writing an unchanged tree returns the bytes it was read from.
Bytes writeTree(RiffTree& tree);

// Every chunk, in file order.
std::vector<Place> placesOf(RiffTree& tree);

// Number of data bytes as the header counts them: including a list's type and children.
std::size_t contentSize(const Chunk& chunk);

}  // namespace fuzz
