#include "mutator/AviMutator.h"

#include "mutator/IndexRepair.h"
#include "mutator/Records.h"
#include "mutator/RiffTree.h"
#include "mutator/Structure.h"

#include <algorithm>

namespace fuzz {

namespace {

// The byte that holds the script's length.
constexpr std::size_t kLengthSize = 1;

bool holdsIndex(const Chunk& chunk) { return !chunk.isList && chunk.data.size() >= 16; }

void editOnce(RiffTree& tree, Random& random) {
    if (random.once(3)) {
        editStructure(tree, random);
        return;
    }
    // Few chunks are indexes, so several tries look for one.
    for (int tries = 0; tries < 8; ++tries) {
        const std::vector<Place> places = placesOf(tree);
        Chunk& chunk = places[random.below(places.size())].chunk();
        if (chunk.isList) {
            continue;
        }
        if (random.once(2) ? holdsIndex(chunk) && editIndex(tree, chunk, random) : editField(tree, chunk, random)) {
            return;
        }
    }
    editStructure(tree, random);
}

// Returns nothing if there is nothing to edit or the result is too long.
Bytes editFile(ByteView file, std::size_t mostBytes, Random& random) {
    RiffTree tree = readTree(file);
    const bool repairsFirst = random.once(8);
    for (std::size_t edits = 1 + random.below(4); edits > 0 && !tree.chunks.empty(); --edits) {
        editOnce(tree, random);
    }
    if (repairsFirst || random.once(4)) {
        repairIndexes(tree);
    }
    if (repairsFirst && !tree.chunks.empty()) {
        editOnce(tree, random);
    }
    Bytes edited = writeTree(tree);
    return edited.size() <= mostBytes ? edited : Bytes{};
}

}  // namespace

Bytes mutateAvi(ByteView input, std::size_t mostBytes, Random& random, const PlainMutation& plain) {
    const auto [file, script] = splitInput(input);
    const Bytes fileBytes(file.begin(), file.end());
    const Bytes scriptBytes(script.begin(), script.end());
    if (mostBytes < kLengthSize + scriptBytes.size() + fileBytes.size()) {
        return plain(Bytes(input.begin(), input.end()), mostBytes);
    }
    const std::size_t roomForFile = mostBytes - kLengthSize - scriptBytes.size();
    const std::size_t roomForScript = std::min(kLongestScript, mostBytes - kLengthSize - fileBytes.size());
    switch (random.below(8)) {
    case 0:
    case 1:
        if (roomForScript > 0) {
            return joinInput(fileBytes, plain(scriptBytes, roomForScript));
        }
        break;
    case 2: break;
    default:
        if (Bytes edited = editFile(fileBytes, roomForFile, random); !edited.empty()) {
            return joinInput(edited, scriptBytes);
        }
    }
    return joinInput(plain(fileBytes, std::max<std::size_t>(roomForFile, 1)), scriptBytes);
}

Bytes crossAvi(ByteView one, ByteView other, std::size_t mostBytes, Random& random) {
    const Input first = splitInput(one);
    const Input second = splitInput(other);
    Bytes crossed = joinInput(first.file, second.script);
    RiffTree tree = readTree(first.file);
    RiffTree source = readTree(second.file);
    if (!random.once(3) && !tree.chunks.empty() && !source.chunks.empty()) {
        takeChunk(tree, source, random);
        if (random.once(2)) {
            repairIndexes(tree);
        }
        crossed = joinInput(writeTree(tree), random.once(4) ? second.script : first.script);
    }
    return crossed.size() <= mostBytes ? crossed : Bytes(one.begin(), one.end());
}

}  // namespace fuzz
