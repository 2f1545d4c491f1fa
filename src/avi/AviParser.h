// Reads the structure of an AVI file once, when it is opened. Everything later uses the lists made here.
#pragma once

#include "avi/AviRecords.h"
#include "avi/AviStream.h"
#include "avi/ChunkReader.h"
#include "avi/ChunkTree.h"
#include "avi/ErrorText.h"
#include "fileio/File.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// AVI 1.0 with the OpenDML extensions. Only one thread may use it while parsing; const functions are thread-safe
// after.
class AviParser {
public:
    // Parses from the file's current position to its end. The results of an earlier parse, streams included, are
    // discarded. Returns true if the structure is usable; errorText() may hold messages even then. Throws nothing:
    // running out of memory is also a message and false. The file position is unspecified afterwards.
    bool parse(fileio::File& file) noexcept;

    // The messages of the last parse, each ending in a line feed.
    const std::string& errorText() const { return m_errors.text(); }

    const avi::AVIMAINHEADER& mainHeader() const { return m_mainHeader; }

    // OpenDML's extended header; all zero if the file has none.
    const avi::ExtendedHeader& extendedHeader() const { return m_extendedHeader; }

    // The usable streams in the order of their "strl" lists. They belong to the parser.
    const std::vector<std::unique_ptr<AviStream>>& streams() const { return m_streams; }

    // Positions in streams() of all streams of a type such as fourCC("vids").
    std::vector<std::size_t> streamsOfType(std::uint32_t fccType) const;

    const ChunkTree& chunkTree() const { return m_tree; }

    // Number of entries in "idx1" according to its size field, including a partial last entry.
    std::uint64_t idx1EntryCount() const { return m_idx1EntryCount; }

    // The parsed file, or null; not owned.
    fileio::File* file() const { return m_file; }

private:
    void reset();
    bool fail(const char* message);
    bool giveUp(const char* message) noexcept;
    bool parseStructure(ChunkReader& reader);
    void parseHeaderList(ChunkReader& reader, const ChunkNode& hdrl);
    void readExtendedHeader(ChunkReader& reader, const ChunkNode& odml);
    void parseIdx1(ChunkReader& reader, const ChunkNode& aviList, const ChunkNode& idx1);
    void shrinkToFit();

    fileio::File* m_file = nullptr;
    ChunkTree m_tree;
    ErrorText m_errors;
    avi::AVIMAINHEADER m_mainHeader{};
    avi::ExtendedHeader m_extendedHeader{};
    std::vector<std::unique_ptr<AviStream>> m_streams;
    std::uint64_t m_idx1EntryCount = 0;
};
