// An AVI file as a tree that can be changed and written back. Sizes follow the contents by themselves; a size that did
// not fit when the file was read stays as it was claimed.
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
    Bytes data;                                 // of a list: what follows its last whole chunk
    std::vector<Chunk> children;
    std::optional<std::uint32_t> claimedSize;   // where it is not the size of the contents
    std::optional<std::uint8_t> pad;            // behind an odd number of bytes
    std::size_t position = 0;                   // of the header, at the last write
};

struct RiffTree {
    std::vector<Chunk> chunks;
    Bytes rest;                                 // behind the last whole chunk
};

// Where a chunk stands among its neighbours. Changing those makes other places of the same list invalid.
struct Place {
    std::vector<Chunk>* siblings = nullptr;
    std::size_t index = 0;

    Chunk& chunk() const { return (*siblings)[index]; }
};

RiffTree readTree(ByteView file);

// Sets every chunk's position. Writing what was read gives the same bytes.
Bytes writeTree(RiffTree& tree);

// Every chunk, in file order.
std::vector<Place> placesOf(RiffTree& tree);

// Data bytes as the header counts them: with a list's type and its children.
std::size_t contentSize(const Chunk& chunk);

}  // namespace fuzz
