#include "mutator/Structure.h"

#include "text/FourCC.h"

#include <algorithm>
#include <utility>

namespace fuzz {

namespace {

constexpr std::uint32_t kListTypes[] = {fourCC("AVI "), fourCC("AVIX"), fourCC("hdrl"), fourCC("strl"),
                                        fourCC("odml"), fourCC("movi"), fourCC("rec "), fourCC("INFO")};
constexpr std::uint32_t kIds[] = {fourCC("avih"), fourCC("strh"), fourCC("strf"), fourCC("indx"), fourCC("idx1"),
                                  fourCC("dmlh"), fourCC("ix00"), fourCC("ix01"), fourCC("00dc"), fourCC("01wb"),
                                  fourCC("02wb"), fourCC("JUNK"), fourCC("LIST"), fourCC("RIFF")};

// Damaged files seldom have longer tables.
constexpr std::size_t kMostRepeats = 200;

std::ptrdiff_t at(std::size_t index) { return static_cast<std::ptrdiff_t>(index); }

Place anyPlace(RiffTree& tree, Random& random) {
    const std::vector<Place> places = placesOf(tree);
    return places[random.below(places.size())];
}

// The chunks of a random list, or those outside all lists.
std::vector<Chunk>& anyList(RiffTree& tree, Random& random) {
    std::vector<std::vector<Chunk>*> lists = {&tree.chunks};
    for (const Place& place : placesOf(tree)) {
        if (place.chunk().isList) {
            lists.push_back(&place.chunk().children);
        }
    }
    return *lists[random.below(lists.size())];
}

void insert(std::vector<Chunk>& list, Chunk chunk, Random& random) {
    list.insert(list.begin() + at(random.below(list.size() + 1)), std::move(chunk));
}

Chunk newChunk(Random& random) {
    Chunk chunk;
    chunk.pad = std::uint8_t{0};
    if (random.once(3)) {
        chunk.id = fourCC("LIST");
        chunk.isList = true;
        chunk.listType = random.anyOf(kListTypes);
    } else {
        chunk.id = random.anyOf(kIds);
        chunk.data.resize(random.below(80));
    }
    return chunk;
}

void resizeHonestly(Chunk& chunk, Random& random) {
    const std::size_t size = chunk.data.size();
    switch (random.below(4)) {
    case 0: chunk.data.resize(random.below(size + 1)); break;
    case 1: chunk.data.resize(size - std::min<std::size_t>(size, 1 + random.below(9))); break;
    case 2: chunk.data.resize(size + 1 + random.below(9)); break;
    default: chunk.data.resize(size + random.below(1000));
    }
}

void claimAnotherSize(Chunk& chunk, Random& random) {
    const auto size = static_cast<std::uint32_t>(contentSize(chunk));
    const std::uint32_t small = static_cast<std::uint32_t>(1 + random.below(16));
    switch (random.below(7)) {
    case 0: chunk.claimedSize = size + small; break;
    case 1: chunk.claimedSize = size - std::min(size, small); break;
    case 2: chunk.claimedSize = 0; break;
    case 3: chunk.claimedSize = 0xFFFFFFFFu - static_cast<std::uint32_t>(random.below(24)); break;
    case 4: chunk.claimedSize = 0x80000000u - 12 + static_cast<std::uint32_t>(random.below(48)); break;
    case 5: chunk.claimedSize = static_cast<std::uint32_t>(random.below(2 * std::size_t{size} + 64)); break;
    default: chunk.claimedSize.reset();
    }
}

void nest(Chunk& chunk, Random& random) {
    for (std::size_t depth = random.once(4) ? 1 + random.below(30) : 1; depth > 0; --depth) {
        Chunk outer;
        outer.id = random.once(4) ? fourCC("RIFF") : fourCC("LIST");
        outer.isList = true;
        outer.listType = random.anyOf(kListTypes);
        outer.children.push_back(std::move(chunk));
        chunk = std::move(outer);
    }
}

// Replaces a list by its children.
void unnest(const Place& place) {
    std::vector<Chunk> children = std::move(place.chunk().children);
    place.siblings->erase(place.siblings->begin() + at(place.index));
    place.siblings->insert(place.siblings->begin() + at(place.index), std::make_move_iterator(children.begin()),
                           std::make_move_iterator(children.end()));
}

void repeat(const Place& place, Random& random) {
    const Chunk copy = place.chunk();
    const std::size_t times = random.once(4) ? random.below(kMostRepeats) : 1;
    place.siblings->insert(place.siblings->begin() + at(place.index), times, copy);
}

void rename(Chunk& chunk, Random& random) {
    if (chunk.isList && random.once(2)) {
        chunk.listType = random.anyOf(kListTypes);
    } else {
        chunk.id = random.anyOf(kIds);
    }
}

}  // namespace

void editStructure(RiffTree& tree, Random& random) {
    const Place place = anyPlace(tree, random);
    switch (random.below(11)) {
    case 0: repeat(place, random); break;
    case 1: place.siblings->erase(place.siblings->begin() + at(place.index)); break;
    case 2: std::swap(place.chunk(), (*place.siblings)[random.below(place.siblings->size())]); break;
    case 3: {
        Chunk moved = std::move(place.chunk());
        place.siblings->erase(place.siblings->begin() + at(place.index));
        insert(anyList(tree, random), std::move(moved), random);
        break;
    }
    case 4: nest(place.chunk(), random); break;
    case 5: unnest(place); break;
    case 6: resizeHonestly(place.chunk(), random); break;
    case 7: claimAnotherSize(place.chunk(), random); break;
    case 8: rename(place.chunk(), random); break;
    case 9: insert(anyList(tree, random), newChunk(random), random); break;
    default:
        if (place.chunk().pad) {
            place.chunk().pad.reset();
        } else {
            place.chunk().pad = std::uint8_t{0};
        }
    }
}

void takeChunk(RiffTree& tree, RiffTree& other, Random& random) {
    insert(anyList(tree, random), anyPlace(other, random).chunk(), random);
}

}  // namespace fuzz
