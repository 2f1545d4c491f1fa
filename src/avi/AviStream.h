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

/// What the streams of one parse share, and what they may still take together.
struct ParseContext {
    ChunkReader& reader;
    const ChunkTree& tree;
    ErrorText& errors;
    std::uint64_t formatBytesLeft;
    std::uint64_t indexesLeft;  ///< standard indexes
    std::uint64_t indexBytesLeft;
    std::uint64_t missingEntriesLeft;  ///< of standard indexes, taken for zeros: the file does not have their bytes
};

/// Filled by AviParser, read-only afterwards: the lookups may then run on any number of threads.
class AviStream {
public:
    /// `streamNumber` is the ordinal of the stream's "strl" list, from 0.
    explicit AviStream(std::uint32_t streamNumber);
    AviStream(const AviStream&) = delete;
    AviStream& operator=(const AviStream&) = delete;

    // --- What the file says ---

    /// Ordinal of the "strl" list among all of the file, also of those that were not usable.
    std::uint32_t streamNumber() const { return m_streamNumber; }
    const avi::AVISTREAMHEADER& header() const { return m_header; }

    /// All bytes of "strf".
    const std::vector<std::uint8_t>& format() const { return m_format; }

    /// The format bytes after the base structure: after 40 for "vids", 18 for "auds", 0 for any other type.
    std::vector<std::uint8_t> formatExtraData() const;

    const avi::SuperIndexHeader& superIndexHeader() const { return m_superIndexHeader; }

    /// The entries in use of which the file has at least a part.
    const std::vector<avi::SuperIndexEntry>& superIndexEntries() const { return m_superIndexEntries; }

    /// The head of the standard index of each super index entry, also of one that was refused; all zero where
    /// nothing was read.
    const std::vector<avi::StdIndexHeader>& stdIndexes() const { return m_stdIndexes; }

    /// True when an OpenDML index was read without any fault; the lookups below then use it, else "idx1".
    bool useOpenDmlIndex() const { return m_useOpenDmlIndex; }
    const ChunkList& idx1Chunks() const { return m_idx1Chunks; }
    const ChunkList& openDmlChunks() const { return m_openDmlChunks; }

    // --- Lookups in the list in use ---

    const ChunkList& activeChunks() const { return m_useOpenDmlIndex ? m_openDmlChunks : m_idx1Chunks; }
    std::size_t chunkCount() const { return activeChunks().size(); }

    /// Throws std::out_of_range for an index past the end.
    AviChunk chunk(std::size_t index) const;

    /// Sum of all sizes.
    std::uint64_t totalBytes() const { return activeChunks().totalBytes(); }

    /// Index of the chunk whose bytes [startByte, startByte + size) hold `pos`; none for a negative position and
    /// from totalBytes() on. Never an empty chunk.
    std::optional<std::size_t> findChunkByBytePosition(std::int64_t pos) const;

    // --- Filling, for the parser ---

    /// Reads headers, format and OpenDML index of a "strl" list. False, with the reason among the context's
    /// errors, when the stream is not usable.
    bool parse(ParseContext& context, const ChunkNode& strl);
    void addIdx1Chunk(std::uint64_t offset, std::uint32_t size, bool keyframe) {
        m_idx1Chunks.append({offset, size, keyframe});
    }

    /// To be called once no more chunks come.
    void shrinkToFit();

private:
    // The values stand behind the text, each with a text of its own behind it. Nothing is put together once there is
    // no room: a super index can lead to millions of faults.
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
