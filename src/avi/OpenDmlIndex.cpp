// The OpenDML index of a stream: a super index in the headers, and the standard indexes it points to, which are spread
// over the file. After any fault the stream uses "idx1", but everything readable is read anyway.
#include "avi/AviStream.h"
#include "avi/RecordReader.h"

#include <algorithm>

namespace {

// Number of entries that fit into the size field, computed in 32-bit signed arithmetic: a size of 2 GiB + 24 bytes or
// more leaves none.
std::uint32_t superIndexCapacity(std::uint32_t dataSize) {
    const auto entryBytes = static_cast<std::int32_t>(dataSize - std::uint32_t{sizeof(avi::SuperIndexHeader)});
    return entryBytes < 1 ? 0 : static_cast<std::uint32_t>(entryBytes) / std::uint32_t{sizeof(avi::SuperIndexEntry)};
}

std::uint32_t stdIndexCapacity(std::uint32_t dataSize) {
    constexpr std::uint32_t headerSize = sizeof(avi::StdIndexHeader);
    return dataSize < headerSize ? 0 : (dataSize - headerSize) / std::uint32_t{sizeof(avi::StdIndexEntry)};
}

// A chunk may be smaller than the record; the rest of the record is then unchanged.
template <typename Record>
void copyFront(Record& to, const Record& from, std::uint64_t count) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(&from);
    std::copy_n(bytes, std::min<std::uint64_t>(count, sizeof from), reinterpret_cast<std::uint8_t*>(&to));
}

ChunkList::Row rowOf(std::uint64_t baseOffset, const avi::StdIndexEntry& entry) {
    const bool keyframe = (entry.dwSize & avi::kStdIndexNotKeyFrame) == 0;
    return {baseOffset + entry.dwOffset, entry.dwSize & avi::kStdIndexSizeMask, keyframe};
}

}  // namespace

void AviStream::fail(ParseContext& context, const char* text, std::initializer_list<Value> values) {
    report(context, text, values);
    m_useOpenDmlIndex = false;
}

void AviStream::readSuperIndex(ParseContext& context, const ChunkNode& indx) {
    m_useOpenDmlIndex = true;
    const std::uint64_t mostEntries = context.indexesLeft;
    RecordReader records(context.reader, context.indexBytesLeft, indx.dataPosition(), indx.size,
                         sizeof(avi::SuperIndexHeader) + mostEntries * sizeof(avi::SuperIndexEntry));
    copyFront(m_superIndexHeader, records.head<avi::SuperIndexHeader>(), indx.size);
    if (m_superIndexHeader.wLongsPerEntry != avi::kSuperIndexLongsPerEntry) {
        return fail(context, "super index (indx) unexpected super index entry size (wLongsPerEntry): ",
                    {{m_superIndexHeader.wLongsPerEntry}});
    }
    const std::uint32_t claimed = m_superIndexHeader.nEntriesInUse;
    const std::uint32_t count = std::min(superIndexCapacity(indx.size), claimed);
    const auto entries = records.next<avi::SuperIndexEntry>(std::min<std::uint64_t>(count, mostEntries));
    // Missing entries would be all zero, and such entries are skipped.
    if (count != claimed || (count > mostEntries && records.remaining() > 0)) {
        // This message alone has a blank before its line feed; log readers know it that way.
        fail(context, "super index (indx) chunk data is smaller than nEntriesInUse: ", {{claimed, " "}});
    }
    context.indexesLeft -= entries.size();
    m_superIndexEntries.assign(entries.begin(), entries.end());
    m_stdIndexes.resize(m_superIndexEntries.size());
    for (std::size_t i = 0; i < m_superIndexEntries.size(); ++i) {
        if (m_superIndexEntries[i].dwSize >= avi::kChunkHeaderSize) {
            readStdIndex(context, m_superIndexEntries[i], m_stdIndexes[i]);
        }
    }
}

void AviStream::readStdIndex(ParseContext& context, const avi::SuperIndexEntry& entry, avi::StdIndexHeader& header) {
    const std::uint64_t position = entry.qwOffset + avi::kChunkHeaderSize;
    const std::uint32_t size = entry.dwSize - std::uint32_t{avi::kChunkHeaderSize};
    const auto failUnreadable = [&] {
        fail(context, "could not read standard index at: ", {{position, ", size: "}, {size}});
    };
    RecordReader records(context.reader, context.indexBytesLeft, position, size);
    if (records.remaining() == 0) {
        return failUnreadable();
    }
    copyFront(header, records.head<avi::StdIndexHeader>(), size);
    if (header.wLongsPerEntry != avi::kStdIndexLongsPerEntry) {
        return fail(context, "std index (ix..) unexpected std index entry size (wLongsPerEntry): ",
                    {{header.wLongsPerEntry}});
    }
    std::uint32_t left = std::min(stdIndexCapacity(size), header.nEntriesInUse);
    if (left != header.nEntriesInUse) {
        fail(context, "std index (ix..) chunk data is smaller than nEntriesInUse: ", {{header.nEntriesInUse}});
    }
    const auto toRow = [base = header.qwBaseOffset](const avi::StdIndexEntry& indexed) { return rowOf(base, indexed); };
    while (left > 0 && records.remaining() > 0) {
        const auto entries = records.next<avi::StdIndexEntry>(left);
        m_openDmlChunks.appendAll(entries, toRow);
        left -= static_cast<std::uint32_t>(entries.size());
    }
    // Missing entries are read as zeros.
    if (left > 0 && (records.wasRefused() || !take(context.missingEntriesLeft, left))) {
        return failUnreadable();
    }
    for (; left > 0; --left) {
        m_openDmlChunks.append(toRow({}));
    }
}
