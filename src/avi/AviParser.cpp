#include "avi/AviParser.h"

#include "avi/ChunkWalk.h"
#include "avi/LegacyIndex.h"
#include "avi/ParserLimits.h"
#include "text/FourCC.h"

#include <algorithm>
#include <new>
#include <utility>

bool AviParser::parse(fileio::File& file) noexcept {
    try {
        reset();
        m_file = &file;
        ChunkReader reader(file);
        const bool usable = parseStructure(reader);
        shrinkToFit();
        return usable;
    } catch (const std::bad_alloc&) {
        return giveUp("not enough memory for the file structure\n");
    } catch (...) {
        return giveUp("reading the file structure failed\n");
    }
}

std::vector<std::size_t> AviParser::streamsOfType(std::uint32_t fccType) const {
    std::vector<std::size_t> positions;
    for (std::size_t i = 0; i < m_streams.size(); ++i) {
        if (m_streams[i]->header().fccType == fccType) {
            positions.push_back(i);
        }
    }
    return positions;
}

void AviParser::reset() {
    m_tree.clear();
    m_errors = {};
    m_mainHeader = {};
    m_extendedHeader = {};
    m_streams.clear();
    m_idx1EntryCount = 0;
}

bool AviParser::fail(const char* message) {
    m_errors.add(message);
    return false;
}

bool AviParser::giveUp(const char* message) noexcept {
    reset();
    try {
        m_errors.add(message);
    } catch (...) {
        // No memory even for one line; the result has to do.
    }
    return false;
}

bool AviParser::parseStructure(ChunkReader& reader) {
    if (!walkChunks(reader, {fourCC("movi")}, m_tree)) {
        m_errors.add("riff structure is corrupt or invalid\n");
    }
    if (m_tree.topLevel().empty()) {
        return fail("riff structure is empty\n");
    }
    const ChunkNode& aviList = *m_tree.topLevel().begin();
    if (!aviList.isList() || aviList.listType != fourCC("AVI ")) {
        return fail("AVI chunk missing\n");
    }
    const ChunkNode* hdrl = m_tree.childList(aviList, fourCC("hdrl"));
    if (!hdrl) {
        return fail("hdrl missing\n");
    }
    const ChunkNode* avih = m_tree.child(*hdrl, fourCC("avih"));
    if (!avih) {
        return fail("avih missing\n");
    }
    if (!reader.readChunkData(*avih, &m_mainHeader, sizeof m_mainHeader)) {
        return fail("avih data read error\n");
    }
    parseHeaderList(reader, *hdrl);
    if (const ChunkNode* idx1 = m_tree.child(aviList, fourCC("idx1"))) {
        parseIdx1(reader, aviList, *idx1);
    }
    return true;
}

void AviParser::parseHeaderList(ChunkReader& reader, const ChunkNode& hdrl) {
    ParseContext context{
        .reader = reader,
        .tree = m_tree,
        .errors = m_errors,
        .formatBytesLeft = avi::kMaxFormatBytes,
        .indexesLeft = avi::maxIndexes(reader.fileSize()),
        .indexBytesLeft = avi::maxIndexBytes(reader.fileSize()),
        .missingEntriesLeft = avi::kMaxMissingEntries,
    };
    std::uint32_t streamNumber = 0;
    for (const ChunkNode& child : m_tree.children(hdrl)) {
        if (child.listType == fourCC("strl") && streamNumber < avi::kMaxStreams) {
            // An unusable stream keeps its number, so that the chunk ids of the others still match.
            auto stream = std::make_unique<AviStream>(streamNumber++);
            if (stream->parse(context, child)) {
                m_streams.push_back(std::move(stream));
            }
        } else if (child.listType == fourCC("odml")) {
            readExtendedHeader(reader, child);
        }
    }
}

void AviParser::readExtendedHeader(ChunkReader& reader, const ChunkNode& odml) {
    if (const ChunkNode* dmlh = m_tree.child(odml, fourCC("dmlh"))) {
        // A short or unreadable header is treated as missing: nothing depends on it.
        reader.readChunkData(*dmlh, &m_extendedHeader, std::min<std::uint64_t>(dmlh->size, sizeof m_extendedHeader));
    }
}

void AviParser::parseIdx1(ChunkReader& reader, const ChunkNode& aviList, const ChunkNode& idx1) {
    constexpr std::uint64_t entrySize = sizeof(avi::LegacyIndexEntry);
    m_idx1EntryCount = (idx1.size + entrySize - 1) / entrySize;
    if (idx1.size % entrySize != 0) {
        m_errors.add("idx1 size is not a multiple of index entry size\n");
    }
    if (const ChunkNode* movi = m_tree.childList(aviList, fourCC("movi"))) {
        readLegacyIndex(reader, idx1, *movi, m_streams);
    }
}

void AviParser::shrinkToFit() {
    for (const auto& stream : m_streams) {
        stream->shrinkToFit();
    }
}
