// The OpenDML index of a stream: a super index in the headers, and the standard indexes spread over the file that
// it points to. Any fault makes the stream fall back to "idx1", but what can be read is read all the same.
#include "avi/AviStream.h"
#include "avi/ParserLimits.h"
#include "avi/RecordReader.h"

#include <algorithm>

namespace {

/// Once a stream's OpenDML index has shown any fault, what else its super index leads to may be media, and the first
/// piece of each place all that is read.
constexpr std::uint64_t kDoubtfulPiece = 64 * 1024;

/// Room for entries as the size field gives it, in the 32-bit signed arithmetic that files are judged by: a size
/// from 2 GiB and 24 bytes on has none.
std::uint32_t superIndexCapacity(std::uint32_t dataSize) {
    const auto entryBytes = static_cast<std::int32_t>(dataSize - std::uint32_t{sizeof(avi::SuperIndexHeader)});
    return entryBytes < 1 ? 0 : static_cast<std::uint32_t>(entryBytes) / std::uint32_t{sizeof(avi::SuperIndexEntry)};
}

std::uint32_t stdIndexCapacity(std::uint32_t dataSize) {
    constexpr std::uint32_t headerSize = sizeof(avi::StdIndexHeader);
    return dataSize < headerSize ? 0 : (dataSize - headerSize) / std::uint32_t{sizeof(avi::StdIndexEntry)};
}

/// Entries of which the file has at least one byte.
std::uint64_t backedEntries(const RecordReader& records, std::uint64_t entrySize) {
    return (records.remaining() + entrySize - 1) / entrySize;
}

/// Whether so many entries without bytes in the file may be taken; then they are.
bool takeUnbacked(ParseContext& context, std::uint64_t& leftOfStream, std::uint64_t count) {
    if (count > std::min(leftOfStream, context.unbackedEntriesLeft)) {
        return false;
    }
    leftOfStream -= count;
    context.unbackedEntriesLeft -= count;
    return true;
}

/// A chunk may be smaller than the record: then the rest of the record keeps what it was.
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

void AviStream::readSuperIndex(ParseContext& context, const ChunkNode& indx) {
    m_useOpenDmlIndex = true;
    RecordReader records(context.reader, indx.dataPosition(), indx.size);
    copyFront(m_superIndexHeader, records.next<avi::SuperIndexHeader>(), indx.size);
    if (m_superIndexHeader.wLongsPerEntry != avi::kSuperIndexLongsPerEntry) {
        report(context, "super index (indx) unexpected super index entry size (wLongsPerEntry): ",
               {{m_superIndexHeader.wLongsPerEntry}});
        m_useOpenDmlIndex = false;
        return;
    }
    const std::uint32_t claimed = m_superIndexHeader.nEntriesInUse;
    const std::uint32_t count = std::min(superIndexCapacity(indx.size), claimed);
    const auto failTooShort = [&] {
        // The blank before the line feed has always been there, in this message alone.
        report(context, "super index (indx) chunk data is smaller than nEntriesInUse: ", {{claimed, " "}});
        m_useOpenDmlIndex = false;
    };
    if (count != claimed) {
        failTooShort();
    }
    // Entries beyond the end of the file would be all zero, and such entries are passed over anyway.
    const std::uint64_t backed = std::min<std::uint64_t>(count, backedEntries(records, sizeof(avi::SuperIndexEntry)));
    // Nor are there any behind a place that cannot be read: the file's size is only a claim until then.
    while (m_superIndexEntries.size() < backed && records.remaining() > 0) {
        m_superIndexEntries.appendAll(
            records.nextRun<avi::SuperIndexEntry>(backed - m_superIndexEntries.size()));
    }
    if (records.wasDenied() && m_useOpenDmlIndex) {
        failTooShort();
    }
    readStdIndexes(context);
}

void AviStream::readStdIndexes(ParseContext& context) {
    std::uint64_t unbackedLeft = avi::kMaxUnbackedEntriesPerStream;
    const std::size_t count = m_superIndexEntries.size();
    for (std::size_t i = 0; i < count;) {
        for (avi::StdIndexHeader& header : m_stdIndexes.extend(count - i)) {
            const avi::SuperIndexEntry& entry = m_superIndexEntries[i++];
            header = {};
            if (entry.dwSize >= avi::kChunkHeaderSize) {
                readStdIndex(context, entry, header, unbackedLeft);
            }
        }
    }
}

void AviStream::readStdIndex(ParseContext& context, const avi::SuperIndexEntry& entry, avi::StdIndexHeader& header,
                             std::uint64_t& unbackedLeft) {
    const std::uint64_t position = entry.qwOffset + avi::kChunkHeaderSize;
    const std::uint32_t size = entry.dwSize - std::uint32_t{avi::kChunkHeaderSize};
    const auto fail = [&](const char* text, std::initializer_list<Value> values) {
        report(context, text, values);
        m_useOpenDmlIndex = false;
    };
    const auto failUnreadable = [&] {
        fail("could not read standard index at: ", {{position, ", size: "}, {size}});
    };

    RecordReader records(context.reader, position, size,
                         m_useOpenDmlIndex ? RecordReader::kLargestPiece : kDoubtfulPiece);
    if (records.remaining() == 0) {
        return failUnreadable();
    }
    copyFront(header, records.next<avi::StdIndexHeader>(), size);
    if (header.wLongsPerEntry != avi::kStdIndexLongsPerEntry) {
        return fail("std index (ix..) unexpected std index entry size (wLongsPerEntry): ", {{header.wLongsPerEntry}});
    }
    const std::uint32_t count = std::min(stdIndexCapacity(size), header.nEntriesInUse);
    std::uint64_t backed = std::min<std::uint64_t>(count, backedEntries(records, sizeof(avi::StdIndexEntry)));
    if (!takeUnbacked(context, unbackedLeft, count - backed)) {
        return failUnreadable();
    }
    if (count != header.nEntriesInUse) {
        fail("std index (ix..) chunk data is smaller than nEntriesInUse: ", {{header.nEntriesInUse}});
    }

    for (std::uint32_t done = 0; done < count;) {
        if (done < backed && records.remaining() == 0) {
            // The file is shorter than it said.
            if (!takeUnbacked(context, unbackedLeft, backed - done)) {
                return failUnreadable();
            }
            backed = done;
        }
        const auto entries = records.nextRun<avi::StdIndexEntry>(count - done);
        if (records.wasDenied()) {
            return failUnreadable();   // the file may well have them
        }
        m_openDmlChunks.appendAll(entries, [base = header.qwBaseOffset](const avi::StdIndexEntry& indexed) {
            return rowOf(base, indexed);
        });
        done += static_cast<std::uint32_t>(entries.size());
    }
}
