// The chunks of one stream, as listed in its index. Opening a long file mostly waits for new pages of memory; so the
// start byte is stored once for a group of chunks and summed from there.
#pragma once

#include "avi/BlockList.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

// One chunk of media data.
struct AviChunk {
    std::uint64_t offset;     // file position of the data
    std::uint64_t startByte;  // sum of the sizes of all earlier chunks of the same list
    std::uint32_t size;       // data bytes
    std::uint8_t keyframe;    // 1 for a key frame, otherwise 0
};

// In index order, which may differ from file order. Const functions may run on any number of threads.
class ChunkList {
public:
    // What is stored for each chunk. Two words and so two stores: each of them waits for new memory.
    class Row {
    public:
        Row() = default;
        Row(std::uint64_t offset, std::uint32_t size, bool keyframe)
            : m_offset(offset), m_sizeAndKeyframe(size | std::uint64_t{keyframe} << 32) {}

        std::uint64_t offset() const { return m_offset; }
        std::uint32_t size() const { return static_cast<std::uint32_t>(m_sizeAndKeyframe); }
        std::uint8_t keyframe() const { return static_cast<std::uint8_t>(m_sizeAndKeyframe >> 32); }

    private:
        std::uint64_t m_offset;
        std::uint64_t m_sizeAndKeyframe;
    };
    static_assert(sizeof(Row) == 16);

    std::size_t size() const { return m_rows.size(); }
    bool empty() const { return m_rows.empty(); }

    // Sum of all chunk sizes.
    std::uint64_t totalBytes() const;

    // `index` must be below size().
    AviChunk operator[](std::size_t index) const;

    // Index of the chunk whose bytes [startByte, startByte + size) contain `position`, never an empty chunk. Empty if
    // `position` is at least totalBytes().
    std::optional<std::size_t> findByBytePosition(std::uint64_t position) const;

    // Throws std::bad_alloc; the list can then only be discarded.
    void append(const Row& row) {
        if (m_rows.size() % kGroup == 0) {
            m_groupStarts.append(totalBytes());
        }
        m_rows.append(row);
    }

    // Appends `toRow` of each entry. Throws like append.
    template <typename Entry, typename ToRow>
    void appendAll(std::span<const Entry> entries, ToRow toRow) {
        std::uint64_t startByte = totalBytes();
        while (!entries.empty()) {
            const std::size_t before = m_rows.size();
            const std::span<Row> rows = m_rows.extend(entries.size());
            for (std::size_t i = 0; i < rows.size();) {
                const std::size_t inGroup = (before + i) % kGroup;
                if (inGroup == 0) {
                    m_groupStarts.append(startByte);
                }
                for (const std::size_t end = std::min(rows.size(), i + kGroup - inGroup); i < end; ++i) {
                    const Row row = toRow(entries[i]);
                    rows[i] = row;
                    startByte += row.size();
                }
            }
            entries = entries.subspan(rows.size());
        }
    }

    // Call once all chunks have been appended.
    void shrinkToFit() {
        m_rows.shrinkToFit();
        m_groupStarts.shrinkToFit();
    }

private:
    static constexpr std::size_t kGroup = 16;
    static_assert(BlockList<Row>::kBlockLength % kGroup == 0, "a group lies in one block");

    // startByte of the group that starts at `first`, plus the sizes of its chunks before `index`.
    std::uint64_t startOf(std::size_t first, std::size_t index) const;

    BlockList<Row> m_rows;
    BlockList<std::uint64_t> m_groupStarts;  // startByte of every kGroup-th chunk
};
