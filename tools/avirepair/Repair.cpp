#include "avirepair/Repair.h"

#include "aviwriter/AviFileWriter.h"

#include <algorithm>
#include <stdexcept>

namespace avirepair {

namespace {

constexpr std::uint64_t kSegmentBytes = std::uint64_t{1} << 30;
constexpr std::uint64_t kIndexBytesPerChunk = 24;       // 16 of "idx1", 8 of a standard index
constexpr std::size_t kBlock = std::size_t{1} << 20;

bool isDamaged(const FoundChunk& chunk) {
    return chunk.is(FoundChunk::kCut) || chunk.is(FoundChunk::kResized) || chunk.is(FoundChunk::kBeforeGap);
}

// A second look with the index in hand helps only where the chain broke.
Scan scanWithIndex(fileio::File& file) {
    Scan scan = scanFile(file);
    const bool isWhole = !scan.chunks.empty() && std::none_of(scan.chunks.begin(), scan.chunks.end(), isDamaged) &&
                         std::all_of(scan.gaps.begin(), scan.gaps.end(), [](const Gap& gap) { return gap.isTrailing; });
    const std::vector<Hint> hints = isWhole ? std::vector<Hint>{} : hintsOf(file, scan);
    return hints.empty() ? scan : scanFile(file, hints);
}

// Room for a third more segments than are full.
std::uint32_t superIndexRoom(std::uint64_t bytes) {
    return static_cast<std::uint32_t>(std::max<std::uint64_t>(128, bytes / kSegmentBytes * 4 / 3 + 2));
}

std::vector<aviwriter::CopiedTrack> tracksOf(const Plan& plan) {
    std::vector<aviwriter::CopiedTrack> tracks;
    for (const PlannedStream& stream : plan.streams) {
        tracks.push_back({stream.header, stream.format, stream.more, std::string(textOf(stream.type)),
                          stream.isVideo});
    }
    return tracks;
}

// Chunks that lie next to each other in both files are copied together.
class Copier {
public:
    Copier(fileio::File& file, aviwriter::ByteSink& sink, const Progress& progress)
        : m_file(file), m_sink(sink), m_progress(progress) {}

    void copy(std::uint64_t from, std::uint64_t to, std::uint64_t count) {
        if (from != m_from + m_count || to != m_to + m_count) {
            flush();
            m_from = from;
            m_to = to;
        }
        m_count += count;
        while (m_count >= kBlock) {
            copyBlock();
        }
    }

    void write(std::uint64_t to, const Bytes& bytes) {
        flush();
        m_sink.write(to, bytes);
        m_done += bytes.size();
    }

    void flush() {
        while (m_count > 0) {
            copyBlock();
        }
    }

private:
    void copyBlock() {
        const std::size_t count = static_cast<std::size_t>(std::min<std::uint64_t>(m_count, kBlock));
        m_block.resize(count);
        if (!m_file.seek(static_cast<std::int64_t>(m_from)) || m_file.read(m_block.data(), count) != count) {
            throw std::runtime_error("the file cannot be read at byte " + std::to_string(m_from));
        }
        m_sink.write(m_to, m_block);
        m_from += count;
        m_to += count;
        m_count -= count;
        m_done += count;
        m_progress(m_done);
    }

    fileio::File& m_file;
    aviwriter::ByteSink& m_sink;
    const Progress& m_progress;
    Bytes m_block;
    std::uint64_t m_from = 0;
    std::uint64_t m_to = 0;
    std::uint64_t m_count = 0;
    std::uint64_t m_done = 0;
};

std::string idOf(const PlannedChunk& chunk) {
    return FoundChunk{.number = chunk.stream, .type = chunk.type}.id();
}

// 8-bit samples have their zero in the middle.
std::uint8_t silenceOf(const PlannedStream& stream) { return u16In(stream.format, 14) == 8 ? 0x80 : 0; }

void writeChunk(const Plan& plan, const PlannedChunk& chunk, std::uint64_t to, Copier& copier) {
    const std::uint32_t padded = chunk.size + chunk.size % 2;
    if (chunk.hasHeader) {
        copier.copy(chunk.source, to, 8 + padded);
        return;
    }
    copier.write(to, aviwriter::join({aviwriter::text(idOf(chunk)), aviwriter::u32(chunk.size)}));
    if (chunk.kind == PlannedChunk::copied) {
        copier.copy(chunk.source + 8, to + 8, chunk.size);
    } else if (chunk.size > 0) {
        copier.write(to + 8, aviwriter::filled(chunk.size, silenceOf(plan.streams[chunk.stream])));
    }
    if (padded != chunk.size) {
        copier.write(to + 8 + chunk.size, {0});
    }
}

}  // namespace

Diagnosis diagnose(fileio::File& file, fileio::File* like, const Options& options) {
    Diagnosis found;
    found.scan = scanWithIndex(file);
    found.index = matchIndex(file, found.scan);
    const Scan headers = like != nullptr ? scanFile(*like) : Scan{};
    found.plan = makePlan(found.scan, found.index, options, like != nullptr ? &headers : nullptr);
    return found;
}

std::uint64_t sizeOf(const Plan& plan) {
    const std::uint64_t media = plan.bytes + plan.chunks.size() * kIndexBytesPerChunk;
    std::uint64_t headers = 4096;
    for (const PlannedStream& stream : plan.streams) {
        headers += 512 + stream.format.size() + stream.more.size() + 16 * std::uint64_t{superIndexRoom(plan.bytes)};
    }
    const std::uint64_t segments = media / (kSegmentBytes / 2) + 1;
    return media + headers + segments * (64 + 40 * plan.streams.size());
}

void writeRepaired(const Plan& plan, fileio::File& file, aviwriter::ByteSink& sink, const Progress& progress) {
    const aviwriter::FileLayout layout = {.index = aviwriter::IndexKind::both, .segmentBytes = kSegmentBytes,
                                          .superIndexRoom = superIndexRoom(plan.bytes)};
    aviwriter::AviFileWriter writer(sink, layout, plan.mainHeader, tracksOf(plan));
    Copier copier(file, sink, progress);
    std::vector<std::uint64_t> bytes(plan.streams.size(), 0);
    for (const PlannedChunk& chunk : plan.chunks) {
        const std::uint32_t block = plan.streams[chunk.stream].sampleBytes;
        std::uint64_t& before = bytes[chunk.stream];
        const std::uint64_t length = block > 0 ? (before + chunk.size) / block - before / block
                                               : chunk.type != ChunkType::pc ? 1 : 0;
        before += chunk.size;
        writeChunk(plan, chunk, writer.addChunk(chunk.stream, idOf(chunk), chunk.size, chunk.isKey,
                                                static_cast<std::uint32_t>(length)), copier);
    }
    copier.flush();
    writer.finish();
}

}  // namespace avirepair
