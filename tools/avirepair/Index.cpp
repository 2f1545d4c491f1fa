#include "avirepair/Index.h"

#include <algorithm>
#include <array>
#include <limits>

namespace avirepair {

namespace {

constexpr std::uint32_t kKeyFlag = 0x10;
constexpr std::uint32_t kNotKeyBit = 0x80000000;
constexpr std::uint16_t kNoNumber = 0xFFFF;
constexpr std::size_t kNumbers = 512;      // of streams: ids count to 429
constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

struct Entries {
    std::vector<IndexEntry> all{};
    std::vector<IndexPart> parts{};
    bool isLegacy = false;
};

std::uint16_t numberIn(std::uint8_t tens, std::uint8_t ones) {
    return tens >= '0' && tens <= 'Z' && ones >= '0' && ones <= '9'
               ? static_cast<std::uint16_t>((tens - '0') * 10 + (ones - '0'))
               : kNoNumber;
}

// Entries of zeros are room that was never used. Offsets are kept as they are.
void readLegacy(Window& window, const FoundIndex& index, Entries& entries) {
    const std::size_t begin = entries.all.size();
    for (std::uint64_t at = 0; at + 16 <= index.size; at += 16) {
        const auto bytes = window.at(index.data + at, 16);
        const std::uint16_t number = bytes.size() < 16 ? kNoNumber : numberIn(bytes[0], bytes[1]);
        if (number != kNoNumber) {
            entries.all.push_back({u32In(bytes, 8), u32In(bytes, 12), number, bytes[2] == 'w',
                                   (u32In(bytes, 4) & kKeyFlag) != 0});
        }
    }
    entries.parts.push_back({begin, entries.all.size(), false});
}

void readStandard(Window& window, const FoundIndex& index, Entries& entries) {
    const auto head = window.at(index.data, 24);
    if (head.size() < 24 || index.size < 24 || (u16In(head, 0) != 2 && u16In(head, 0) != 3) ||
        numberIn(head[8], head[9]) == kNoNumber) {
        return;
    }
    const std::uint64_t entryBytes = 4 * u16In(head, 0);
    const std::uint64_t count = std::min<std::uint64_t>(u32In(head, 4), (index.size - 24) / entryBytes);
    const std::uint16_t number = numberIn(head[8], head[9]);
    const bool isSound = head[10] == 'w';
    const std::uint64_t base = u64In(head, 12);
    const std::size_t begin = entries.all.size();
    for (std::uint64_t i = 0; i < count; ++i) {
        const auto bytes = window.at(index.data + 24 + i * entryBytes, 8);
        if (bytes.size() == 8 && (u32In(bytes, 0) != 0 || u32In(bytes, 4) != 0)) {
            entries.all.push_back({base + u32In(bytes, 0), u32In(bytes, 4) & ~kNotKeyBit, number, isSound,
                                   (u32In(bytes, 4) & kNotKeyBit) == 0});
        }
    }
    entries.parts.push_back({begin, entries.all.size(), true});
}

std::size_t chunkAt(const Scan& scan, std::uint64_t data) {
    const auto found = std::lower_bound(scan.chunks.begin(), scan.chunks.end(), data,
                                        [](const FoundChunk& chunk, std::uint64_t at) { return chunk.data() < at; });
    return found != scan.chunks.end() && found->data() == data
               ? static_cast<std::size_t>(found - scan.chunks.begin()) : kNone;
}

// The size of an index may count the pad byte or not.
bool agree(const IndexEntry& entry, const FoundChunk& chunk) {
    return entry.size == chunk.size || (chunk.size % 2 != 0 && entry.size + 1 == chunk.size);
}

std::size_t matches(const Scan& scan, const Entries& entries, std::uint64_t shift) {
    return static_cast<std::size_t>(std::count_if(entries.all.begin(), entries.all.end(), [&](const IndexEntry& entry) {
        const std::size_t chunk = entry.size > 0 ? chunkAt(scan, entry.data + shift) : kNone;
        return chunk != kNone && agree(entry, scan.chunks[chunk]);
    }));
}

// Turns offsets into positions of data.
void resolve(const Scan& scan, Entries& entries) {
    std::uint64_t best = scan.media + 16;
    std::size_t most = matches(scan, entries, best);
    for (const std::uint64_t shift : {std::uint64_t{8}, scan.media + 8, std::uint64_t{0}}) {
        if (const std::size_t found = matches(scan, entries, shift); found > most) {
            most = found;
            best = shift;
        }
    }
    for (IndexEntry& entry : entries.all) {
        entry.data += best;
    }
}

Entries readEntries(fileio::File& file, const Scan& scan) {
    Window window(file);
    Entries entries;
    for (const FoundIndex& index : scan.indexes) {
        if (!index.isLegacy) {
            readStandard(window, index, entries);
        }
    }
    const auto legacy = std::find_if(scan.indexes.begin(), scan.indexes.end(),
                                     [](const FoundIndex& index) { return index.isLegacy; });
    if (entries.all.empty() && legacy != scan.indexes.end()) {
        entries = {.isLegacy = true};
        readLegacy(window, *legacy, entries);
        resolve(scan, entries);
    }
    return entries;
}

class Matcher {
public:
    Matcher(Scan& scan, const Entries& entries)
        : m_scan(scan), m_entries(entries), m_last(kNumbers, kNone), m_lostEnd(kNumbers, 0) {}

    IndexMatch run() {
        m_match.entries = m_entries.all.size();
        for (const IndexPart& part : m_entries.parts) {
            m_last.assign(m_last.size(), kNone);
            for (std::size_t i = part.begin; i < part.end; ++i) {
                judge(m_entries.all[i], part);
            }
        }
        judgeDropped();
        m_match.isSound = m_listed > 0 && m_match.wrong == 0;
        if (!m_match.isSound) {
            m_match.missing.clear();
            m_match.covered.clear();
        }
        std::stable_sort(m_match.missing.begin(), m_match.missing.end(),
                         [](const MissingChunk& a, const MissingChunk& b) { return a.after < b.after; });
        std::sort(m_match.covered.begin(), m_match.covered.end());
        findLeftOut();
        return std::move(m_match);
    }

private:
    void judge(const IndexEntry& entry, const IndexPart& part) {
        std::size_t& last = m_last[entry.number];
        const std::size_t index = chunkAt(m_scan, entry.data);
        if (index != kNone && agree(entry, m_scan.chunks[index])) {
            FoundChunk& chunk = m_scan.chunks[index];
            const bool isInOrder = (last == kNone || last < index) && !chunk.is(FoundChunk::kListed);
            m_match.wrong += isInOrder ? 0 : 1;
            m_listed += entry.size > 0 ? 1 : 0;
            chunk.flags |= FoundChunk::kListed | (entry.isKey ? FoundChunk::kKey : 0) |
                           (chunk.size != entry.size ? FoundChunk::kResized : 0);
            chunk.size = entry.size;
            last = index;
        } else if (entry.size == 0) {
            m_match.missing.push_back({last == kNone ? firstFrom(entry.data - 8) : last + 1, entry.number,
                                       entry.isSound, 0});
            if (index != kNone && part.isOfOneStream) {
                m_empty.push_back(index);
            }
        } else if (!isLost(entry)) {
            ++m_match.wrong;
        } else {
            addLost(entry);
        }
    }

    // In a stretch between chunks where nothing was found.
    bool isLost(const IndexEntry& entry) const {
        const Gap* gap = gapAt(entry.data - 8);
        return gap != nullptr && entry.size <= gap->end - gap->begin && entry.data + entry.size <= gap->end + 1 &&
               entry.data >= m_lostEnd[entry.number];
    }

    const Gap* gapAt(std::uint64_t position) const {
        const auto after = std::upper_bound(m_scan.gaps.begin(), m_scan.gaps.end(), position,
                                            [](std::uint64_t at, const Gap& gap) { return at < gap.begin; });
        if (after == m_scan.gaps.begin()) {
            return nullptr;
        }
        const Gap& gap = *(after - 1);
        return position < gap.end && !gap.isTrailing ? &gap : nullptr;
    }

    void addLost(const IndexEntry& entry) {
        m_lostEnd[entry.number] = entry.data + entry.size;
        const Gap& gap = *gapAt(entry.data - 8);
        m_match.missing.push_back({firstFrom(gap.end), entry.number, entry.isSound, entry.size});
        if (m_match.covered.empty() || m_match.covered.back() != gap.begin) {
            m_match.covered.push_back(gap.begin);
        }
    }

    // The first chunk at or after a position.
    std::size_t firstFrom(std::uint64_t position) const {
        const auto next = std::lower_bound(
            m_scan.chunks.begin(), m_scan.chunks.end(), position,
            [](const FoundChunk& chunk, std::uint64_t at) { return chunk.position < at; });
        return static_cast<std::size_t>(next - m_scan.chunks.begin());
    }

    // An index that has a stream's frames as dropped, every one of them, contradicts media that has them. So does an
    // OpenDML entry of size 0 that leads to a frame: its size has 31 bits, and 2 GiB read as 0 there.
    void judgeDropped() {
        for (const std::size_t index : m_empty) {
            m_match.wrong += m_scan.chunks[index].is(FoundChunk::kListed) ? 0 : 1;
        }
        std::vector<bool> lists(m_last.size(), false), has(m_last.size(), false), drops(m_last.size(), false);
        for (const FoundChunk& chunk : m_scan.chunks) {
            has[chunk.number] = has[chunk.number] || chunk.size > 0;
            lists[chunk.number] = lists[chunk.number] || (chunk.size > 0 && chunk.is(FoundChunk::kListed));
        }
        for (const MissingChunk& missing : m_match.missing) {
            drops[missing.number] = true;
        }
        for (std::size_t number = 0; number < has.size(); ++number) {
            m_match.wrong += drops[number] && has[number] && !lists[number] ? 1 : 0;
        }
    }

    // A sound index has left out on purpose what lies between the first and the last chunk that it lists.
    void findLeftOut() {
        m_match.leftOut.assign(m_scan.chunks.size(), false);
        if (!m_match.isSound) {
            return;
        }
        const std::vector<Stretch> stretches = listedStretches();
        std::vector<std::size_t> end(kNumbers + 1, 0);      // of the present stretch of each stream, and of all
        auto next = stretches.begin();
        for (std::size_t i = 0; i < m_scan.chunks.size(); ++i) {
            for (; next != stretches.end() && next->first <= i; ++next) {
                end[next->number] = std::max(end[next->number], next->last);
            }
            const FoundChunk& chunk = m_scan.chunks[i];
            m_match.leftOut[i] = !chunk.is(FoundChunk::kListed) && (i < end[chunk.number] || i < end[kNumbers]);
        }
    }

    struct Stretch {
        std::size_t first = kNone;
        std::size_t last = 0;
        std::size_t number = kNumbers;      // of the stream; else of all
    };

    // From the first to the last chunk of each part of the index.
    std::vector<Stretch> listedStretches() const {
        std::vector<Stretch> stretches;
        for (const IndexPart& part : m_entries.parts) {
            Stretch stretch;
            for (std::size_t i = part.begin; i < part.end; ++i) {
                if (const std::size_t index = chunkAt(m_scan, m_entries.all[i].data); index != kNone) {
                    stretch.first = std::min(stretch.first, index);
                    stretch.last = std::max(stretch.last, index);
                    stretch.number = part.isOfOneStream ? m_scan.chunks[index].number : kNumbers;
                }
            }
            stretches.push_back(stretch);
        }
        std::sort(stretches.begin(), stretches.end(),
                  [](const Stretch& a, const Stretch& b) { return a.first < b.first; });
        return stretches;
    }

    Scan& m_scan;
    const Entries& m_entries;
    std::vector<std::size_t> m_last;        // for each stream number: its chunk that was listed last
    std::vector<std::uint64_t> m_lostEnd;   // the same: the end of its lost chunk that was listed last
    std::vector<std::size_t> m_empty;       // chunks that entries of size 0 lead to
    std::size_t m_listed = 0;
    IndexMatch m_match;
};

}  // namespace

IndexMatch matchIndex(fileio::File& file, Scan& scan) {
    const Entries entries = readEntries(file, scan);
    return Matcher(scan, entries).run();
}

std::vector<Hint> hintsOf(fileio::File& file, const Scan& scan) {
    const Entries entries = readEntries(file, scan);
    std::vector<Hint> hints;
    for (const IndexEntry& entry : entries.all) {
        if (entry.size > 0) {
            hints.push_back({entry.data, entry.size});
        }
    }
    std::sort(hints.begin(), hints.end(), [](const Hint& a, const Hint& b) { return a.data < b.data; });
    return hints;
}

}  // namespace avirepair
