#include "damage/parser/ReadSamples.h"

#include "damage/catalogue/Catalogue.h"
#include "damage/parser/SmallFiles.h"
#include "text/FourCC.h"

#include <algorithm>
#include <ostream>
#include <set>

namespace damage {

namespace {

using aviwriter::Bytes;

// Whether the plain parse takes too long or too much of the call stack.
bool isCostly(const DamagedFile& file) {
    static const std::set<std::string> names = {"zeros", "lists-inside-each-other", "long-run-of-dropped-pictures"};
    return file.zerosAfter > 0 || names.contains(file.name);
}

std::vector<ReadSample> allSamples() {
    std::vector<ReadSample> samples;
    for (const SmallFile& file : smallFiles()) {
        samples.push_back({file.name, file.make});
    }
    for (const DamagedFile& file : damagedFiles()) {
        samples.push_back({file.name, file.make, file.zerosAfter, isCostly(file)});
    }
    return samples;
}

// Files up to this size are cut at every byte.
constexpr std::size_t kSmallFile = 2000;

// The headers of a clip with two streams and their super indexes have some 700 bytes. In longer ones, later streams are
// like the first.
constexpr std::size_t kHeaderBytes = 800;

// Further chunk headers: all those of a clip with some segments. In thousands of lists, the others are alike.
constexpr std::size_t kChunks = 40;

// An index is cut at each byte of its head and of its first two entries, and at its end; other entries are alike.
constexpr std::uint64_t kIndexFront = 24 + 2 * 16;

// Size of a read-ahead block.
constexpr std::uint64_t kBlock = 64 * 1024;

// Cuts in media and other parts that a parser skips.
constexpr std::size_t kElsewhere = 10;

// Parsing a whole costly file takes a thousand times as long as an ordinary one.
constexpr std::size_t kEndsOfCostlyFile = 20;

class Ends {
public:
    explicit Ends(std::uint64_t size) : m_size(size) {}

    void add(std::uint64_t first, std::uint64_t count) {
        for (std::uint64_t end = first; end < m_size && end - first < count; ++end) {
            m_ends.insert(static_cast<std::size_t>(end));
        }
    }

    // Cuts at each byte of the index's front, and around its end.
    void addIndex(std::uint64_t position, std::uint64_t size) {
        add(position, 8 + std::min(size, kIndexFront) + 1);
        add(position + 8 + size - std::min<std::uint64_t>(size, 9), 10);
    }

    std::vector<std::size_t> all() const { return {m_ends.begin(), m_ends.end()}; }

private:
    std::uint64_t m_size;
    std::set<std::size_t> m_ends;
};

void addChunks(Ends& ends, const ChunkTree& tree) {
    const std::size_t count = tree.size();
    for (std::size_t i = 0; i < count; ++i) {
        const ChunkNode& node = tree[static_cast<std::uint32_t>(i)];
        if (i < kChunks || i + kChunks >= count) {
            ends.add(node.position, 13);
        }
        if (node.id == fourCC("idx1")) {
            ends.addIndex(node.position, node.size);
        }
    }
}

void addStandardIndexes(Ends& ends, const AviParser& parser) {
    for (const auto& stream : parser.streams()) {
        for (std::size_t i = 0; i < stream->superIndexEntries().size(); ++i) {
            const avi::SuperIndexEntry entry = stream->superIndexEntries()[i];
            ends.addIndex(entry.qwOffset, std::max<std::uint32_t>(entry.dwSize, 8) - 8);
        }
    }
}

}  // namespace

const std::vector<ReadSample>& readSamples() {
    static const std::vector<ReadSample> samples = allSamples();
    return samples;
}

void PrintTo(const ReadSample& sample, std::ostream* out) { *out << sample.name; }

std::vector<std::size_t> endsOf(const ReadSample& sample, const Bytes& bytes, const AviParser& parser) {
    Ends ends(bytes.size());
    ends.add(0, bytes.size() <= kSmallFile ? kSmallFile : kHeaderBytes);
    addChunks(ends, parser.chunkTree());
    addStandardIndexes(ends, parser);
    ends.add(kBlock - 1, 3);
    for (std::size_t i = 1; i < kElsewhere; ++i) {
        ends.add(bytes.size() / kElsewhere * i, 1);
    }
    ends.add(bytes.size() - std::min<std::size_t>(bytes.size(), 9), 9);
    std::vector<std::size_t> all = ends.all();
    if (sample.isCostly) {
        const std::size_t step = all.size() / kEndsOfCostlyFile + 1;
        for (std::size_t i = 0; i * step < all.size(); ++i) {
            all[i] = all[i * step];
        }
        all.resize((all.size() + step - 1) / step);
    }
    return all;
}

}  // namespace damage
