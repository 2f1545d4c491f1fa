#include "avirepair/Scanner.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <optional>

namespace avirepair {

namespace {

constexpr int kRun = 3;                              // headers in a row that end a search
constexpr std::size_t kMostStreams = 256;
constexpr std::uint32_t kMostHeaderBytes = 1 << 20;  // of a format: an honest one has some hundred
constexpr std::uint32_t kOpenSize = 0xFFFFFF00;      // sizes from here on stand for "not known yet"
constexpr std::uint64_t kNoEnd = std::numeric_limits<std::uint64_t>::max();
constexpr std::array<std::string_view, 6> kTypes = {"dc", "db", "pc", "wb", "tx", "sb"};

enum class Kind { none, enteredList, media, index, record, junk, other };

struct Header {
    Kind kind = Kind::none;
    std::uint32_t id = 0;
    std::uint32_t size = 0;
    std::uint32_t listType = 0;
};

bool isOneOf(std::uint32_t id, std::initializer_list<std::uint32_t> ids) {
    return std::find(ids.begin(), ids.end(), id) != ids.end();
}

std::uint8_t byteOf(std::uint32_t id, int n) { return static_cast<std::uint8_t>(id >> (8 * n)); }
bool isDigit(std::uint8_t c) { return c >= '0' && c <= '9'; }

bool isPrintable(std::uint32_t id) {
    for (int n = 0; n < 4; ++n) {
        if (byteOf(id, n) < 0x20 || byteOf(id, n) > 0x7E) {
            return false;
        }
    }
    return true;
}

// The first character counts tens without end: stream 100 follows "99" as ":0".
std::optional<ChunkType> mediaType(std::uint32_t id) {
    if (byteOf(id, 0) < '0' || byteOf(id, 0) > 'Z' || !isDigit(byteOf(id, 1))) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < kTypes.size(); ++i) {
        if (byteOf(id, 2) == kTypes[i][0] && byteOf(id, 3) == kTypes[i][1]) {
            return static_cast<ChunkType>(i);
        }
    }
    return std::nullopt;
}

// "ix00", or "00ix" as some writers have it.
bool isStandardIndex(std::uint32_t id) {
    const bool first = byteOf(id, 0) == 'i' && byteOf(id, 1) == 'x' && isDigit(byteOf(id, 3));
    const bool last = byteOf(id, 2) == 'i' && byteOf(id, 3) == 'x' && isDigit(byteOf(id, 1));
    return first || last;
}

Kind kindOf(std::uint32_t id) {
    if (mediaType(id)) {
        return Kind::media;
    }
    if (id == fourcc("idx1") || isStandardIndex(id)) {
        return Kind::index;
    }
    if (isOneOf(id, {fourcc("avih"), fourcc("strh"), fourcc("strf"), fourcc("strd"), fourcc("strn"), fourcc("vprp"),
                     fourcc("indx"), fourcc("dmlh")})) {
        return Kind::record;
    }
    if (id == fourcc("JUNK")) {
        return Kind::junk;
    }
    return isPrintable(id) ? Kind::other : Kind::none;
}

class Scanner {
public:
    Scanner(fileio::File& file, const std::vector<Hint>& hints) : m_window(file), m_hints(hints) {
        m_scan.fileSize = m_window.size();
    }

    Scan run() {
        std::uint64_t position = 0;
        while (!isEnd(position) && m_scan.nextClip == 0) {
            position = step(position);
        }
        m_scan.mediaEnd = m_mediaEnd;
        return std::move(m_scan);
    }

private:
    std::uint64_t size() const { return m_scan.fileSize; }

    Header headerAt(std::uint64_t position) {
        const auto bytes = m_window.at(position, 12);
        if (bytes.size() < 8) {
            return {};
        }
        Header header = {Kind::none, u32In(bytes, 0), u32In(bytes, 4), 0};
        if (header.id != fourcc("RIFF") && header.id != fourcc("LIST")) {
            header.kind = kindOf(header.id);
        } else if (bytes.size() == 12) {
            header.listType = u32In(bytes, 8);
            const bool isEntered = isOneOf(header.listType, {fourcc("AVI "), fourcc("AVIX"), fourcc("hdrl"),
                                                             fourcc("strl"), fourcc("odml"), fourcc("movi"),
                                                             fourcc("rec ")});
            header.kind = isEntered ? Kind::enteredList : isPrintable(header.listType) ? Kind::other : Kind::none;
        }
        return header;
    }

    const Hint* hintAt(std::uint64_t data) const {
        const auto found = std::lower_bound(m_hints.begin(), m_hints.end(), data,
                                            [](const Hint& hint, std::uint64_t at) { return hint.data < at; });
        return found != m_hints.end() && found->data == data && fits(data, found->size) ? &*found : nullptr;
    }

    bool fits(std::uint64_t data, std::uint64_t bytes) const { return data <= size() && bytes <= size() - data; }

    // Fewer bytes than a header has are an end too.
    bool isEnd(std::uint64_t position) const { return position + 8 > size(); }

    // Whether a header, or the end of the file, is here. A chunk of unknown kind counts if another header follows it.
    bool isHeader(std::uint64_t position, int depth = 2) {
        if (isEnd(position)) {
            return position <= size() + 1;      // the last pad byte may be missing
        }
        const Header header = headerAt(position);
        switch (header.kind) {
            case Kind::none: return false;
            case Kind::enteredList:
            case Kind::record: return true;
            case Kind::other:
                return depth > 0 && fits(position + 8, header.size) && follower(position, header, depth - 1);
            case Kind::media: return fits(position + 8, header.size) || hintAt(position + 8) || isCutAtEnd(header);
            default: return fits(position + 8, header.size);
        }
    }

    // The last chunk of a copy that stopped: no size that only damage explains.
    bool isCutAtEnd(const Header& header) const { return header.size < m_largest * 4 + (1 << 20); }

    // Where the header after this one's claimed size is.
    std::optional<std::uint64_t> follower(std::uint64_t position, const Header& header, int depth = 2) {
        return header.kind == Kind::enteredList ? position + 12 : endOf(position, header.size, depth);
    }
    std::optional<std::uint64_t> endOf(std::uint64_t position, std::uint32_t dataSize, int depth = 2) {
        const std::uint64_t end = position + 8 + dataSize;
        if (isHeader(end + dataSize % 2, depth)) {
            return end + dataSize % 2;
        }
        if (dataSize % 2 != 0 && isHeader(end, depth)) {
            return end;
        }
        return std::nullopt;
    }

    // --- One step from header to header ---

    std::uint64_t step(std::uint64_t position) {
        const Header header = headerAt(position);
        if (header.kind == Kind::enteredList) {
            enter(position, header);
            return position + 12;
        }
        if (header.kind == Kind::none || (header.kind == Kind::other && !isHeader(position))) {
            return closeGap(position, position);
        }
        if (const auto next = fits(position + 8, header.size) ? follower(position, header) : std::nullopt) {
            take(position, header, header.size, unpadded(position, header.size, *next));
            return *next;
        }
        const Hint* hint = header.kind == Kind::media ? hintAt(position + 8) : nullptr;
        if (const auto next = hint ? endOf(position, hint->size) : std::nullopt) {
            take(position, header, hint->size, FoundChunk::kResized | unpadded(position, hint->size, *next));
            return *next;
        }
        return stepWithoutSize(position, header);
    }

    // Whether the pad byte of an odd chunk is missing: the next header follows at once, or the file ends.
    unsigned unpadded(std::uint64_t position, std::uint32_t dataSize, std::uint64_t next) const {
        return next == position + 8 + dataSize || next > size() ? unsigned{FoundChunk::kUnpadded} : 0;
    }

    // The size leads nowhere: it is wrong, or what follows is.
    std::uint64_t stepWithoutSize(std::uint64_t position, const Header& header) {
        const std::uint64_t data = position + 8;
        const std::uint64_t claimed = data + header.size;
        const std::uint64_t next = search(data, claimed);
        if (claimed <= next) {
            const bool inZeros = header.size > kZeroTail && areZeros(claimed - kZeroTail, 2 * kZeroTail);
            take(position, header, header.size,
                 FoundChunk::kBeforeGap | FoundChunk::kUnpadded | (inZeros ? FoundChunk::kInZeros : 0));
            return noteGap(claimed, next);
        }
        const std::uint64_t room = std::min<std::uint64_t>(next - data, 0xFFFFFFFF);
        const bool sizeMakesNoSense = !isCutAtEnd(header) && next < size();
        if (header.kind != Kind::junk && header.kind != Kind::other) {
            take(position, header, static_cast<std::uint32_t>(room),
                 FoundChunk::kUnpadded | (sizeMakesNoSense ? FoundChunk::kResized
                                                           : FoundChunk::kCut | FoundChunk::kBeforeGap));
        }
        return sizeMakesNoSense ? next : noteGap(next, next);
    }

    static constexpr std::uint64_t kZeroTail = 32;
    bool areZeros(std::uint64_t begin, std::uint64_t count) {
        const auto bytes = m_window.at(begin, static_cast<std::size_t>(count));
        return std::all_of(bytes.begin(), bytes.end(), [](std::uint8_t byte) { return byte == 0; });
    }

    void take(std::uint64_t position, const Header& header, std::uint32_t dataSize, unsigned flags) {
        if (header.kind == Kind::media) {
            takeChunk(position, header, dataSize, flags);
        } else if (m_isDoubtful) {
            return;
        } else if (header.kind == Kind::index) {
            m_scan.indexes.push_back({position + 8, dataSize, header.id == fourcc("idx1")});
        } else if (header.kind == Kind::record) {
            takeRecord(position, header.id, dataSize);
        }
    }

    void takeChunk(std::uint64_t position, const Header& header, std::uint32_t dataSize, unsigned flags) {
        const int number = (byteOf(header.id, 0) - '0') * 10 + (byteOf(header.id, 1) - '0');
        flags |= m_isDoubtful ? FoundChunk::kDoubtful : 0;
        m_scan.chunks.push_back({position, dataSize, static_cast<std::uint16_t>(number), *mediaType(header.id),
                                 static_cast<std::uint8_t>(flags)});
        m_largest = std::max<std::uint64_t>(m_largest, dataSize);
    }

    // --- Lists and headers ---

    void enter(std::uint64_t position, const Header& list) {
        const std::uint64_t end = position + 8 + list.size;
        if (list.listType == fourcc("AVI ") && (!m_scan.chunks.empty() || !m_scan.streams.empty())) {
            m_scan.nextClip = position;
        } else if (list.id == fourcc("RIFF")) {
            m_riffEnd = end;
        } else if (list.listType == fourcc("hdrl")) {
            m_ignoresHeaders = !m_scan.streams.empty();
        } else if (list.listType == fourcc("strl")) {
            beginStream();
        } else if (list.listType == fourcc("movi") && !m_isDoubtful) {
            m_scan.media = m_scan.media == 0 ? position : m_scan.media;
            m_scan.isOpen = list.size <= 4 || list.size >= kOpenSize;
            m_mediaEnd = m_scan.isOpen ? position : end;
        }
    }

    void beginStream() {
        if (!m_ignoresHeaders && !m_isDoubtful && m_scan.streams.size() < kMostStreams) {
            m_scan.streams.emplace_back();
        }
    }

    Bytes bytesAt(std::uint64_t position, std::uint32_t count) {
        const auto bytes = m_window.at(position, std::min(count, kMostHeaderBytes));
        return {bytes.begin(), bytes.end()};
    }

    void takeRecord(std::uint64_t position, std::uint32_t id, std::uint32_t dataSize) {
        if (id == fourcc("avih") && m_scan.mainHeader.empty() && dataSize >= 40) {
            m_scan.mainHeader = bytesAt(position + 8, dataSize);
            m_scan.mainHeader.resize(56);
        }
        if (m_ignoresHeaders || id == fourcc("avih") || id == fourcc("dmlh") || id == fourcc("indx")) {
            return;
        }
        if (id == fourcc("strh") && (m_scan.streams.empty() || !m_scan.streams.back().header.empty())) {
            beginStream();      // its list is lost
        }
        if (m_scan.streams.empty()) {
            return;
        }
        FoundStream& stream = m_scan.streams.back();
        if (id == fourcc("strh") && stream.header.empty() && dataSize >= 48 && u32In(m_window.at(position + 8, 4), 0)) {
            stream.header = bytesAt(position + 8, dataSize);
            stream.header.resize(56);
        } else if (id == fourcc("strf") && !stream.hasFormat && dataSize <= kMostHeaderBytes) {
            stream.format = bytesAt(position + 8, dataSize);
            stream.hasFormat = true;
        } else if (id != fourcc("strh") && id != fourcc("strf") && stream.more.size() + dataSize + 8 <= kMostHeaderBytes) {
            Bytes chunk = bytesAt(position, dataSize + 8);
            for (std::size_t i = 0; i < 4; ++i) {
                chunk[4 + i] = byteOf(dataSize, static_cast<int>(i));   // the size in the file may be wrong
            }
            stream.more.insert(stream.more.end(), chunk.begin(), chunk.end());
            stream.more.resize(stream.more.size() + dataSize % 2);
        }
    }

    // --- Where the chain breaks ---

    std::uint64_t closeGap(std::uint64_t begin, std::uint64_t searchFrom) {
        return noteGap(begin, search(searchFrom, begin));
    }

    std::uint64_t noteGap(std::uint64_t begin, std::uint64_t end) {
        const bool isCovered = m_scan.media == 0 || begin < m_mediaEnd || (!m_scan.isOpen && begin < m_riffEnd);
        const bool isZeros = 2 * m_zeros > end - begin;
        m_isDoubtful = m_isDoubtful || (end < size() && !isCovered && !isZeros);
        m_scan.gaps.push_back({begin, end, end >= size() || m_isDoubtful});
        if (end < size() && !m_isDoubtful) {
            m_mediaEnd = m_scan.isOpen ? m_mediaEnd : std::max(m_mediaEnd, end + 1);
        }
        return end;
    }

    // The first position from `from` on where headers follow each other, or the file's end; m_zeros is how many of the
    // bytes from `countFrom` on were zeros.
    std::uint64_t search(std::uint64_t from, std::uint64_t countFrom) {
        m_zeros = 0;
        for (std::uint64_t position = from; position < size();) {
            const std::uint64_t found = candidateFrom(position, countFrom);
            if (found < size() && isRun(found)) {
                return found;
            }
            position = found + 1;
        }
        return size();
    }

    // The next place that looks like a header's id.
    std::uint64_t candidateFrom(std::uint64_t position, std::uint64_t countFrom) {
        constexpr std::size_t kPiece = 1 << 16;
        while (position < size()) {
            const auto bytes = m_window.at(position, kPiece);
            const std::size_t end = bytes.size() < kPiece ? bytes.size() : kPiece - 7;
            for (std::size_t i = 0; i < end;) {
                std::uint64_t word = 0;
                if (i + 8 <= bytes.size() && (std::memcpy(&word, bytes.data() + i, 8), word == 0)) {
                    m_zeros += position + i >= countFrom ? 8 : 0;
                    i += 8;
                    continue;
                }
                if (i + 8 <= bytes.size() && isWanted(static_cast<std::uint32_t>(word))) {
                    return position + i;
                }
                ++i;
            }
            position += end;
        }
        return size();
    }

    static bool isWanted(std::uint32_t id) {
        switch (byteOf(id, 0)) {
            case 'R': return id == fourcc("RIFF");
            case 'L': return id == fourcc("LIST");
            case 'J': return false;
            default: break;
        }
        const Kind kind = kindOf(id);
        return kind == Kind::media || kind == Kind::index || kind == Kind::record;
    }

    // Several headers in a row; fewer where the file ends. An index vouches for a chunk by itself.
    bool isRun(std::uint64_t position) {
        for (int count = 0; count < kRun; ++count) {
            if (count > 0 && isEnd(position)) {
                return true;
            }
            const Header header = headerAt(position);
            if (header.kind == Kind::media && hintAt(position + 8)) {
                return true;
            }
            if (header.kind == Kind::none || header.kind == Kind::other) {
                return false;
            }
            const bool isWhole = header.kind == Kind::enteredList || fits(position + 8, header.size);
            if (!isWhole) {
                return count == kRun - 1 && header.kind == Kind::media && isCutAtEnd(header);
            }
            const auto next = follower(position, header);
            if (!next) {
                return count == kRun - 1;
            }
            position = *next;
        }
        return true;
    }

    Window m_window;
    const std::vector<Hint>& m_hints;
    Scan m_scan;
    std::uint64_t m_riffEnd = kNoEnd;
    std::uint64_t m_mediaEnd = 0;
    std::uint64_t m_largest = 0;        // chunk so far, in bytes
    std::uint64_t m_zeros = 0;
    bool m_isDoubtful = false;
    bool m_ignoresHeaders = false;
};

}  // namespace

std::string_view textOf(ChunkType type) { return kTypes[static_cast<std::size_t>(type)]; }

std::string FoundChunk::id() const {
    return std::string{static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)}.append(textOf(type));
}

Scan scanFile(fileio::File& file, const std::vector<Hint>& hints) { return Scanner(file, hints).run(); }

}  // namespace avirepair
