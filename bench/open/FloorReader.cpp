#include "avi/AviParser.h"
#include "fileio/SystemFile.h"
#include "open/Readers.h"
#include "open/Stopwatch.h"
#include "text/FourCC.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <map>
#include <memory>
#include <stdexcept>

namespace {

struct Run {
    std::uint64_t position;
    std::uint64_t bytes;
    std::uint64_t base;
};

struct Table {
    std::uint64_t entries = 0;
    std::vector<Run> runs;  // the standard indexes; empty for "idx1"
};

// Where the index lies and how long the tables get, determined before time is measured.
struct Plan {
    std::vector<Table> tables;  // one for each stream
    Run idx1{};
};

Plan makePlan(const std::string& path) {
    fileio::SystemFile file;
    AviParser parser;
    if (!file.open(path.c_str(), fileio::kOpenRead) || !parser.parse(file)) {
        throw std::runtime_error("cannot open " + path);
    }
    Plan plan;
    for (const auto& stream : parser.streams()) {
        Table& table = plan.tables.emplace_back();
        table.entries = stream->chunkCount();
        for (std::size_t i = 0; stream->useOpenDmlIndex() && i < stream->stdIndexes().size(); ++i) {
            const avi::StdIndexHeader header = stream->stdIndexes()[i];
            if (header.nEntriesInUse != 0) {
                table.runs.push_back({stream->superIndexEntries()[i].qwOffset + 8 + sizeof header,
                                      std::uint64_t{header.nEntriesInUse} * 8, header.qwBaseOffset});
            }
        }
    }
    const ChunkTree& tree = parser.chunkTree();
    if (const ChunkNode* idx1 = tree.child(tree[0], fourCC("idx1"))) {
        plan.idx1 = {idx1->dataPosition(), idx1->size, tree.childList(tree[0], fourCC("movi"))->position + 16};
    }
    return plan;
}

constexpr std::uint64_t kPiece = std::uint64_t{1} << 20;

void read(fileio::File& file, std::uint64_t position, std::uint8_t* to, std::uint64_t bytes) {
    if (!file.seek(static_cast<std::int64_t>(position)) || file.read(to, bytes) != bytes) {
        throw std::runtime_error("the index cannot be read");
    }
}

using Row = ChunkList::Row;

// One stream's rows, filled up to `end`.
struct Filled {
    explicit Filled(std::uint64_t entries) : rows(std::make_unique_for_overwrite<Row[]>(entries)), end(rows.get()) {}

    std::unique_ptr<Row[]> rows;
    Row* end;
};

void fillFromStandardIndexes(fileio::File& file, const Plan& plan, std::uint8_t* piece,
                             std::vector<Filled>& tables) {
    for (std::size_t stream = 0; stream < plan.tables.size(); ++stream) {
        Row* row = tables[stream].end;
        for (const Run& run : plan.tables[stream].runs) {
            read(file, run.position, piece, run.bytes);
            for (std::uint64_t at = 0; at < run.bytes; at += 8) {
                std::uint32_t entry[2];
                std::memcpy(entry, piece + at, sizeof entry);
                *row++ = {run.base + entry[0], entry[1] & 0x7FFFFFFF, entry[1] >> 31 == 0};
            }
        }
        tables[stream].end = row;
    }
}

void fillFromIdx1(fileio::File& file, const Plan& plan, std::uint8_t* piece, std::vector<Filled>& tables) {
    std::vector<Row*> rows;
    for (const Filled& table : tables) {
        rows.push_back(table.end);
    }
    for (std::uint64_t done = 0; done < plan.idx1.bytes; done += kPiece) {
        const std::uint64_t part = std::min(kPiece, plan.idx1.bytes - done);
        read(file, plan.idx1.position + done, piece, part);
        for (std::uint64_t at = 0; at < part; at += 16) {
            std::uint32_t entry[4];
            std::memcpy(entry, piece + at, sizeof entry);
            const std::size_t stream = ((entry[0] & 0xFF) - '0') * 10 + (entry[0] >> 8 & 0xFF) - '0';
            *rows[stream]++ = {plan.idx1.base + entry[2], entry[3], (entry[1] & 0x10) != 0};
        }
    }
    for (std::size_t stream = 0; stream < tables.size(); ++stream) {
        tables[stream].end = rows[stream];
    }
}

}  // namespace

bench::Opening bench::openAtFloor(const std::string& path) {
    static std::map<std::string, Plan> plans;
    const auto found = plans.find(path);
    const Plan& plan = found != plans.end() ? found->second : plans[path] = makePlan(path);

    Opening result;
    const Stopwatch stopwatch;
    fileio::SystemFile file;
    if (!file.open(path.c_str(), fileio::kOpenRead)) {
        throw std::runtime_error("cannot open " + path);
    }
    const auto piece = std::make_unique_for_overwrite<std::uint8_t[]>(kPiece);
    std::vector<Filled> tables;
    for (const Table& table : plan.tables) {
        tables.emplace_back(table.entries);
    }
    if (plan.idx1.bytes != 0) {
        fillFromIdx1(file, plan, piece.get(), tables);
    } else {
        fillFromStandardIndexes(file, plan, piece.get(), tables);
    }
    for (const Filled& table : tables) {
        benchmark::DoNotOptimize(table.rows.get());  // otherwise the unused rows would not be written
    }
    benchmark::ClobberMemory();
    result.seconds = stopwatch.seconds();
    result.chunks.emplace();
    for (const Filled& table : tables) {
        result.chunks->push_back(static_cast<std::uint64_t>(table.end - table.rows.get()));
    }
    return result;
}
