#include "LiteralParser.h"

#include "fileio/ReadHelpers.h"
#include "text/FourCC.h"

#include <algorithm>
#include <cstring>
#include <sstream>
#include <vector>

namespace {

constexpr std::size_t kMostNodes = 10'000;
constexpr std::size_t kMostLevels = 2000;         // of the call stack
constexpr std::uint64_t kMostBytes = 1 << 17;     // of a format or an index
constexpr std::size_t kMostIndexes = 200;
constexpr std::uint32_t kMostEntries = 8000;      // of one of them
constexpr std::size_t kMostChunks = 100'000;

using Buffer = std::vector<std::uint8_t>;

struct Node {
    std::uint32_t id = 0;
    std::uint32_t size = 0;
    std::uint32_t listType = 0;
    std::int64_t position = 0;
    std::vector<Node> children;

    bool isList() const { return id == fourCC("RIFF") || id == fourCC("LIST"); }
};

struct Stream {
    std::uint32_t number = 0;
    Buffer header = Buffer(56);
    Buffer format;
    Buffer superHeader = Buffer(24);
    bool useOpenDml = false;
    std::vector<AviChunk> idx1;
    std::vector<AviChunk> openDml;
};

// Bytes past the end are zeros: a buffer is never longer than the file.
std::uint32_t u32At(const Buffer& bytes, std::size_t position) {
    std::uint32_t value = 0;
    if (position < bytes.size()) {
        std::memcpy(&value, bytes.data() + position, std::min(sizeof value, bytes.size() - position));
    }
    return value;
}

std::uint64_t u64At(const Buffer& bytes, std::size_t position) {
    return u32At(bytes, position) | std::uint64_t{u32At(bytes, position + 4)} << 32;
}

std::uint16_t u16At(const Buffer& bytes, std::size_t position) {
    return static_cast<std::uint16_t>(u32At(bytes, position));
}

void dumpChunks(std::ostream& out, const char* name, const auto& chunks) {
    out << name;
    for (std::size_t i = 0; i < chunks.size(); ++i) {
        const AviChunk& chunk = chunks[i];
        out << ' ' << chunk.offset << ':' << chunk.size << '@' << chunk.startByte << (chunk.keyframe ? "k" : "");
    }
    out << '\n';
}

void dumpBytes(std::ostream& out, const char* name, const void* bytes, std::size_t count) {
    out << name << std::hex;
    for (std::size_t i = 0; i < count; ++i) {
        out << ' ' << int{static_cast<const std::uint8_t*>(bytes)[i]};
    }
    out << std::dec << '\n';
}

class LiteralParser {
public:
    LiteralParser(fileio::File& file, ShortHeaders shortHeaders)
        : m_file(file), m_readsOn(shortHeaders == ShortHeaders::readOn) {}

    std::string run() {
        const bool usable = parse();
        std::ostringstream out;
        out << usable << '\n' << m_errors;
        dumpBytes(out, "main", m_mainHeader.data(), 56);
        dumpBytes(out, "extended", m_extendedHeader.data(), 248);
        for (const Stream& stream : m_streams) {
            out << "stream " << stream.number << ' ' << stream.useOpenDml << '\n';
            dumpBytes(out, "header", stream.header.data(), 56);
            dumpBytes(out, "format", stream.format.data(), stream.format.size());
            dumpBytes(out, "super", stream.superHeader.data(), 24);
            dumpChunks(out, "idx1", stream.idx1);
            dumpChunks(out, "openDml", stream.openDml);
        }
        return out.str();
    }

private:
    bool parse() {
        std::vector<Node> top;
        if (!walk(top, m_file.size(), 0)) {
            m_errors += "riff structure is corrupt or invalid\n";
        }
        if (top.empty()) {
            return fail("riff structure is empty\n");
        }
        if (!top[0].isList() || top[0].listType != fourCC("AVI ")) {
            return fail("AVI chunk missing\n");
        }
        const Node* hdrl = list(top[0], fourCC("hdrl"));
        if (!hdrl) {
            return fail("hdrl missing\n");
        }
        const Node* avih = child(*hdrl, fourCC("avih"));
        if (!avih) {
            return fail("avih missing\n");
        }
        if (!readRecord(*avih, m_mainHeader, 56)) {
            return fail("avih data read error\n");
        }
        std::uint32_t number = 0;
        for (const Node& node : hdrl->children) {
            if (node.listType == fourCC("strl")) {
                Stream stream;
                stream.number = number++;
                if (parseStream(node, stream)) {
                    m_streams.push_back(stream);
                }
            }
            const Node* dmlh = node.listType == fourCC("odml") ? child(node, fourCC("dmlh")) : nullptr;
            if (dmlh) {
                readRecord(*dmlh, m_extendedHeader, std::min(dmlh->size, 248u));
            }
        }
        readIdx1(child(top[0], fourCC("idx1")), list(top[0], fourCC("movi")));
        return true;
    }

    bool fail(const char* message) {
        m_errors += message;
        return false;
    }

    void report(const Stream& stream, const std::string& message) {
        m_errors += "stream[" + std::to_string(stream.number) + "]: " + message + "\n";
    }

    bool walk(std::vector<Node>& nodes, std::int64_t length, std::size_t level) {
        bool failed = false;
        try {
            for (std::int64_t position = 0; position < length;) {
                Node node;
                node.position = m_file.tell();
                std::uint32_t idAndSize[2];
                if (!readHeader(idAndSize, 8)) {
                    return false;
                }
                node.id = idAndSize[0];
                node.size = idAndSize[1];
                if (node.isList() && !readHeader(&node.listType, 4)) {
                    return false;
                }
                if (++m_nodeCount > kMostNodes || level > kMostLevels) {
                    throw TooCostly();
                }
                nodes.push_back(node);
                const bool open = node.isList() && node.listType != fourCC("movi") && node.size >= 4;
                if (open && !failed && !walk(nodes.back().children, std::int64_t{node.size} - 4, level + 1)) {
                    failed = true;
                }
                const std::int64_t step = (std::int64_t{node.size} + 9) & ~std::int64_t{1};
                fileio::seekOrThrow(m_file, node.position + step);
                position += step;
            }
        } catch (const TooCostly&) {
            throw;
        } catch (const std::runtime_error&) {
            return false;
        }
        return !failed;
    }

    static const Node* child(const Node& parent, std::uint32_t id) {
        for (const Node& node : parent.children) {
            if (node.id == id) {
                return &node;
            }
        }
        return nullptr;
    }

    static const Node* list(const Node& parent, std::uint32_t type) {
        for (const Node& node : parent.children) {
            if (node.isList() && node.listType == type) {
                return &node;
            }
        }
        return nullptr;
    }

    // Chunk headers and the records in "avih", "strh" and "dmlh".
    bool readHeader(void* destination, std::uint64_t count) {
        auto* bytes = static_cast<std::uint8_t*>(destination);
        std::uint64_t done = m_file.read(bytes, count);
        for (std::uint64_t got = done; m_readsOn && got > 0 && done < count; done += got) {
            got = m_file.read(bytes + done, count - done);
        }
        return done == count;
    }

    bool seekToData(const Node& node, std::uint32_t count) {
        return std::int64_t{node.size} - (node.isList() ? 4 : 0) >= std::int64_t{count} &&
               m_file.seek(dataPosition(node));
    }

    bool readRecord(const Node& node, Buffer& destination, std::uint32_t count) {
        return seekToData(node, count) && readHeader(destination.data(), count);
    }

    static std::int64_t dataPosition(const Node& node) { return node.position + (node.isList() ? 12 : 8); }

    // A buffer for those of `size` bytes that the file has; the others would be zero.
    Buffer roomFor(std::int64_t position, std::uint32_t size) {
        const std::int64_t left = position < 0 ? 0 : std::max<std::int64_t>(m_file.size() - position, 0);
        const auto present = std::min<std::uint64_t>(size, static_cast<std::uint64_t>(left));
        if (present > kMostBytes) {
            throw TooCostly();
        }
        return Buffer(static_cast<std::size_t>(present));
    }

    // Reads all data of a chunk at once, however much that returns.
    Buffer readData(const Node& node) {
        Buffer data = roomFor(dataPosition(node), node.size);
        if (m_file.seek(dataPosition(node))) {
            m_file.read(data.data(), data.size());
        }
        return data;
    }

    bool parseStream(const Node& strl, Stream& stream) {
        stream.superHeader[0] = 4;
        stream.superHeader[8] = static_cast<std::uint8_t>('0' + stream.number / 10);
        stream.superHeader[9] = static_cast<std::uint8_t>('0' + stream.number % 10);
        stream.superHeader[10] = stream.superHeader[11] = '?';
        const Node* strh = child(strl, fourCC("strh"));
        const Node* strf = child(strl, fourCC("strf"));
        if (!strh || !strf) {
            report(stream, strh ? "strf missing in strl" : "strh missing in strl");
            return false;
        }
        if (!readRecord(*strh, stream.header, 56)) {
            report(stream, "strh data read error");
            return false;
        }
        stream.format = roomFor(dataPosition(*strf), strf->size);
        if (stream.format.size() != strf->size || !seekToData(*strf, strf->size) ||
            m_file.read(stream.format.data(), strf->size) != strf->size) {
            report(stream, "strf data read error");
            return false;
        }
        if (const Node* indx = child(strl, fourCC("indx"))) {
            readSuperIndex(*indx, stream);
        }
        return true;
    }

    void readSuperIndex(const Node& indx, Stream& stream) {
        stream.useOpenDml = true;
        const Buffer data = readData(indx);
        for (std::size_t i = 0; i < std::min(indx.size, 24u); ++i) {
            stream.superHeader[i] = i < data.size() ? data[i] : 0;
        }
        if (u16At(stream.superHeader, 0) != 4) {
            report(stream, "super index (indx) unexpected super index entry size (wLongsPerEntry): " +
                               std::to_string(u16At(stream.superHeader, 0)));
            stream.useOpenDml = false;
            return;
        }
        const auto space = static_cast<std::int32_t>(indx.size - 24u);
        const std::uint32_t inUse = u32At(stream.superHeader, 4);
        const std::uint32_t count = std::min(space < 1 ? 0u : static_cast<std::uint32_t>(space) / 16, inUse);
        if (count != inUse) {
            report(stream,
                   "super index (indx) chunk data is smaller than nEntriesInUse: " + std::to_string(inUse) + " ");
            stream.useOpenDml = false;
        }
        // Entries past the end of the file are zero and are skipped.
        for (std::size_t at = 24, i = 0; i < count && at < data.size(); at += 16, ++i) {
            readStdIndex(u64At(data, at), u32At(data, at + 8), stream);
        }
    }

    void readStdIndex(std::uint64_t offset, std::uint32_t dwSize, Stream& stream) {
        if (dwSize < 8) {
            return;
        }
        if (++m_indexCount > kMostIndexes) {
            throw TooCostly();
        }
        const std::uint32_t size = dwSize - 8;
        const std::uint64_t position = offset + 8;
        Buffer data = roomFor(static_cast<std::int64_t>(position), size);
        const bool read =
            m_file.seek(static_cast<std::int64_t>(position)) && m_file.read(data.data(), data.size()) != 0;
        if (!read) {
            report(stream, "could not read standard index at: " + std::to_string(position) +
                               ", size: " + std::to_string(size));
            stream.useOpenDml = false;
            return;
        }
        Buffer header(24);
        std::copy_n(data.begin(), std::min<std::size_t>(data.size(), 24), header.begin());
        if (u16At(header, 0) != 2) {
            report(stream, "std index (ix..) unexpected std index entry size (wLongsPerEntry): " +
                               std::to_string(u16At(header, 0)));
            stream.useOpenDml = false;
            return;
        }
        const std::int64_t space = std::int64_t{size} - 24;
        const std::uint32_t inUse = u32At(header, 4);
        const std::uint32_t count = std::min(space <= 0 ? 0u : static_cast<std::uint32_t>(space / 8), inUse);
        if (count != inUse) {
            report(stream, "std index (ix..) chunk data is smaller than nEntriesInUse: " + std::to_string(inUse));
            stream.useOpenDml = false;
        }
        if (count > kMostEntries) {
            throw TooCostly();
        }
        for (std::uint32_t i = 0; i < count; ++i) {
            const std::uint32_t word = u32At(data, 28 + 8 * i);
            add(stream.openDml, u64At(header, 12) + u32At(data, 24 + 8 * i), word & 0x7FFFFFFF, word >> 31 == 0);
        }
    }

    void readIdx1(const Node* idx1, const Node* movi) {
        if (!idx1) {
            return;
        }
        if (idx1->size % 16 != 0) {
            m_errors += "idx1 size is not a multiple of index entry size\n";
        }
        const Buffer data = readData(*idx1);
        for (Stream& stream : m_streams) {
            const int digits = static_cast<std::uint8_t>('0' + stream.number / 10) |
                               static_cast<std::uint8_t>('0' + stream.number % 10) << 8;
            for (std::size_t at = 0; movi && at < data.size(); at += 16) {
                if (u16At(data, at) == digits) {
                    add(stream.idx1, static_cast<std::uint64_t>(movi->position) + 16 + u32At(data, at + 8),
                        u32At(data, at + 12), (u32At(data, at + 4) & 0x10) != 0);
                }
            }
        }
    }

    void add(std::vector<AviChunk>& chunks, std::uint64_t offset, std::uint32_t size, bool keyframe) {
        if (++m_chunkCount > kMostChunks) {
            throw TooCostly();
        }
        const std::uint64_t startByte = chunks.empty() ? 0 : chunks.back().startByte + chunks.back().size;
        chunks.push_back({offset, startByte, size, keyframe});
    }

    fileio::File& m_file;
    bool m_readsOn;
    std::string m_errors;
    std::size_t m_nodeCount = 0;
    std::size_t m_indexCount = 0;
    std::size_t m_chunkCount = 0;
    Buffer m_mainHeader = Buffer(56);
    Buffer m_extendedHeader = Buffer(248);
    std::vector<Stream> m_streams;
};

}  // namespace

std::string parseLiterally(fileio::File& file, ShortHeaders shortHeaders) {
    return LiteralParser(file, shortHeaders).run();
}

std::string describe(const AviParser& parser, bool usable) {
    std::ostringstream out;
    out << usable << '\n' << parser.errorText();
    dumpBytes(out, "main", &parser.mainHeader(), 56);
    dumpBytes(out, "extended", &parser.extendedHeader(), 248);
    for (const auto& stream : parser.streams()) {
        out << "stream " << stream->streamNumber() << ' ' << stream->useOpenDmlIndex() << '\n';
        dumpBytes(out, "header", &stream->header(), 56);
        dumpBytes(out, "format", stream->format().data(), stream->format().size());
        dumpBytes(out, "super", &stream->superIndexHeader(), 24);
        dumpChunks(out, "idx1", stream->idx1Chunks());
        dumpChunks(out, "openDml", stream->openDmlChunks());
    }
    return out.str();
}
