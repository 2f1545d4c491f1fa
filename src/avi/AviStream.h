// One stream of an AVI file: its headers, its indexes and the lookups that every frame and audio read begins with.
#pragma once

#include "avi/AviRecords.h"
#include "avi/ChunkList.h"
#include "avi/ChunkReader.h"
#include "avi/ChunkTree.h"
#include "avi/ErrorText.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

// What the streams of one parse share, and their common limits.
struct ParseContext {
    ChunkReader& reader;
    const ChunkTree& tree;
    ErrorText& errors;
    std::uint64_t formatBytesLeft;
    std::uint64_t indexesLeft;  // standard indexes
    std::uint64_t indexBytesLeft;
    std::uint64_t missingEntriesLeft;  // of standard indexes, read as zeros: the file ends before them
};

// Filled by AviParser, read-only afterwards: the lookups may then run on any number of threads.
class AviStream {
public:
    // `streamNumber` is the ordinal of the stream's "strl" list, from 0.
    explicit AviStream(std::uint32_t streamNumber);
    AviStream(const AviStream&) = delete;
    AviStream& operator=(const AviStream&) = delete;

    // --- What the file says ---

    // Number of the "strl" list in the file, counting unusable ones too.
    std::uint32_t streamNumber() const { return m_streamNumber; }
    const avi::AVISTREAMHEADER& header() const { return m_header; }

    // All bytes of "strf".
    const std::vector<std::uint8_t>& format() const { return m_format; }

    // The format bytes after the base structure: after 40 for "vids", 18 for "auds", 0 for any other type.
    std::vector<std::uint8_t> formatExtraData() const;

    const avi::SuperIndexHeader& superIndexHeader() const { return m_superIndexHeader; }

    // The entries in use, as far as the file holds at least a part of them.
    const std::vector<avi::SuperIndexEntry>& superIndexEntries() const { return m_superIndexEntries; }

    // The header of the standard index of each super index entry, including rejected indexes; all zero if nothing was
    // read.
    const std::vector<avi::StdIndexHeader>& stdIndexes() const { return m_stdIndexes; }

    // True if an OpenDML index was read without any fault; the lookups below then use it, otherwise "idx1".
    bool useOpenDmlIndex() const { return m_useOpenDmlIndex; }
    const ChunkList& idx1Chunks() const { return m_idx1Chunks; }
    const ChunkList& openDmlChunks() const { return m_openDmlChunks; }

    // --- Lookups in the list in use ---

    const ChunkList& activeChunks() const { return m_useOpenDmlIndex ? m_openDmlChunks : m_idx1Chunks; }
    std::size_t chunkCount() const { return activeChunks().size(); }

    // Throws std::out_of_range for an index past the end.
    AviChunk chunk(std::size_t index) const;

    // Sum of all chunk sizes.
    std::uint64_t totalBytes() const { return activeChunks().totalBytes(); }

    // Index of the chunk whose bytes [startByte, startByte + size) contain `pos`, never an empty chunk. Empty if `pos`
    // is negative or at least totalBytes().
    std::optional<std::size_t> findChunkByBytePosition(std::int64_t pos) const;

    // --- Filling, for the parser ---

    // Reads the headers, format and OpenDML index of a "strl" list. Returns false, and adds the reason to the
    // context's errors, if the stream is unusable.
    bool parse(ParseContext& context, const ChunkNode& strl);
    void addIdx1Chunk(std::uint64_t offset, std::uint32_t size, bool keyframe) {
        m_idx1Chunks.append({offset, size, keyframe});
    }

    // Call once all chunks have been added.
    void shrinkToFit();

private:
    // Each value is appended after the text, followed by its own text. Nothing is formatted once there is no room: a
    // super index can cause millions of errors.
    struct Value {
        std::uint64_t number;
        const char* after = "";
    };
    void report(ParseContext& context, const char* text, std::initializer_list<Value> values = {}) const;
    void fail(ParseContext& context, const char* text, std::initializer_list<Value> values);
    bool readFormat(ParseContext& context, const ChunkNode& strf);
    void readSuperIndex(ParseContext& context, const ChunkNode& indx);
    void readStdIndex(ParseContext& context, const avi::SuperIndexEntry& entry, avi::StdIndexHeader& header);

    std::uint32_t m_streamNumber;
    avi::AVISTREAMHEADER m_header{};
    std::vector<std::uint8_t> m_format;
    avi::SuperIndexHeader m_superIndexHeader{};
    std::vector<avi::SuperIndexEntry> m_superIndexEntries;
    std::vector<avi::StdIndexHeader> m_stdIndexes;
    bool m_useOpenDmlIndex = false;
    ChunkList m_idx1Chunks;
    ChunkList m_openDmlChunks;
};
