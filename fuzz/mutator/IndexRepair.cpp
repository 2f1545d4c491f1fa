#include "mutator/IndexRepair.h"

#include "avi/AviRecords.h"
#include "text/FourCC.h"

#include <cstring>
#include <utility>

namespace fuzz {

namespace {

constexpr std::uint32_t kKeyFrame = 0x10;
constexpr std::uint32_t kIndexPrefix = fourCC("ix00") & 0xFFFF;

// The two digits of a chunk id that name its stream: the id's first two bytes.
using Digits = std::uint32_t;

Digits digitsOf(std::size_t stream) {
    return static_cast<std::uint32_t>('0' + stream / 10 % 10) | static_cast<std::uint32_t>('0' + stream % 10) << 8;
}

bool isIndexOf(const Chunk& chunk, Digits digits) {
    return (chunk.id & 0xFFFF) == kIndexPrefix && chunk.id >> 16 == digits;
}

bool isMovi(const Chunk& chunk) { return chunk.isList && chunk.listType == fourCC("movi"); }

void put32(Bytes& data, std::size_t position, std::uint64_t value) {
    const auto low = static_cast<std::uint32_t>(value);
    std::memcpy(data.data() + position, &low, sizeof low);
}

void put64(Bytes& data, std::size_t position, std::uint64_t value) {
    std::memcpy(data.data() + position, &value, sizeof value);
}

// Collects the media data of a list and of its nested lists.
void collectMedia(std::vector<Chunk>& chunks, std::vector<Chunk*>& media) {
    for (Chunk& chunk : chunks) {
        const std::uint32_t tens = chunk.id & 0xFF;
        if (chunk.isList) {
            collectMedia(chunk.children, media);
        } else if (tens >= '0' && tens <= '9') {
            media.push_back(&chunk);
        }
    }
}

std::vector<Chunk*> mediaOf(Chunk& list) {
    std::vector<Chunk*> media;
    collectMedia(list.children, media);
    return media;
}

std::vector<Chunk*> mediaOf(Chunk& list, Digits digits) {
    std::vector<Chunk*> media = mediaOf(list);
    std::erase_if(media, [digits](const Chunk* chunk) { return (chunk->id & 0xFFFF) != digits; });
    return media;
}

// The sources for the indexes of one file.
struct Tables {
    Chunk* idx1 = nullptr;
    Chunk* movi = nullptr;                                 // the one that idx1 describes
    std::vector<Chunk*> superIndexes;                      // by stream number; null if the stream has none
    std::vector<std::pair<Chunk*, Chunk*>> stdIndexes;     // with the movi list that holds it
};

void findTables(std::vector<Chunk>& chunks, Chunk* movi, Tables& tables) {
    for (Chunk& chunk : chunks) {
        if (chunk.id == fourCC("idx1") && tables.idx1 == nullptr) {
            tables.idx1 = &chunk;
        }
        if (isMovi(chunk) && tables.movi == nullptr) {
            tables.movi = &chunk;
        }
        if (movi != nullptr && (chunk.id & 0xFFFF) == kIndexPrefix) {
            tables.stdIndexes.emplace_back(&chunk, movi);
        }
        if (chunk.isList && chunk.listType == fourCC("strl")) {
            tables.superIndexes.push_back(nullptr);
        }
        if (chunk.id == fourCC("indx") && !tables.superIndexes.empty()) {
            tables.superIndexes.back() = &chunk;
        }
        findTables(chunk.children, isMovi(chunk) ? &chunk : movi, tables);
    }
}

std::vector<Chunk*> stdIndexesOf(const Tables& tables, Digits digits) {
    std::vector<Chunk*> indexes;
    for (const auto& [index, movi] : tables.stdIndexes) {
        if (isIndexOf(*index, digits)) {
            indexes.push_back(index);
        }
    }
    return indexes;
}

void resize(Chunk& chunk, std::size_t size) {
    chunk.data.resize(size);
    chunk.claimedSize.reset();
}

void makeRoom(const Tables& tables) {
    if (tables.idx1 != nullptr && tables.movi != nullptr) {
        resize(*tables.idx1, mediaOf(*tables.movi).size() * sizeof(avi::LegacyIndexEntry));
    }
    for (const auto& [index, movi] : tables.stdIndexes) {
        const std::size_t entries = mediaOf(*movi, index->id >> 16).size();
        resize(*index, sizeof(avi::StdIndexHeader) + entries * sizeof(avi::StdIndexEntry));
    }
    for (std::size_t stream = 0; stream < tables.superIndexes.size(); ++stream) {
        if (Chunk* indx = tables.superIndexes[stream]) {
            const std::size_t entries = stdIndexesOf(tables, digitsOf(stream)).size();
            resize(*indx, sizeof(avi::SuperIndexHeader) + entries * sizeof(avi::SuperIndexEntry));
        }
    }
}

void fillIdx1(const Tables& tables) {
    if (tables.idx1 == nullptr || tables.movi == nullptr) {
        return;
    }
    std::size_t at = 0;
    for (const Chunk* chunk : mediaOf(*tables.movi)) {
        Bytes& data = tables.idx1->data;
        put32(data, at, chunk->id);
        put32(data, at + 4, kKeyFrame);
        put32(data, at + 8, chunk->position - tables.movi->position - 8);
        put32(data, at + 12, chunk->data.size());
        at += sizeof(avi::LegacyIndexEntry);
    }
}

void fillStdIndex(Chunk& index, Chunk& movi) {
    const std::vector<Chunk*> media = mediaOf(movi, index.id >> 16);
    avi::StdIndexHeader header{};
    header.wLongsPerEntry = avi::kStdIndexLongsPerEntry;
    header.bIndexType = 1;
    header.nEntriesInUse = static_cast<std::uint32_t>(media.size());
    header.qwBaseOffset = movi.position;
    std::memcpy(index.data.data(), &header, sizeof header);
    std::size_t at = sizeof header;
    for (const Chunk* chunk : media) {
        put32(index.data, at, chunk->position + avi::kChunkHeaderSize - movi.position);
        put32(index.data, at + 4, chunk->data.size());
        at += sizeof(avi::StdIndexEntry);
    }
}

void fillSuperIndex(Chunk& indx, const std::vector<Chunk*>& indexes) {
    avi::SuperIndexHeader header{};
    header.wLongsPerEntry = avi::kSuperIndexLongsPerEntry;
    header.nEntriesInUse = static_cast<std::uint32_t>(indexes.size());
    std::memcpy(indx.data.data(), &header, sizeof header);
    std::size_t at = sizeof header;
    for (const Chunk* index : indexes) {
        put64(indx.data, at, index->position);
        put32(indx.data, at + 8, index->data.size() + avi::kChunkHeaderSize);
        at += sizeof(avi::SuperIndexEntry);
    }
}

}  // namespace

void repairIndexes(RiffTree& tree) {
    Tables tables;
    findTables(tree.chunks, nullptr, tables);
    makeRoom(tables);
    writeTree(tree);   // sets every chunk's position
    fillIdx1(tables);
    for (const auto& [index, movi] : tables.stdIndexes) {
        fillStdIndex(*index, *movi);
    }
    for (std::size_t stream = 0; stream < tables.superIndexes.size(); ++stream) {
        if (Chunk* indx = tables.superIndexes[stream]) {
            fillSuperIndex(*indx, stdIndexesOf(tables, digitsOf(stream)));
        }
    }
}

}  // namespace fuzz
