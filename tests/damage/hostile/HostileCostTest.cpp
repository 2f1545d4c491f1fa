// The cost of parsing the worst files is limited by their actual size, whatever sizes they state. Compares counts,
// never times.
#include "damage/hostile/HostileShapes.h"

#include "avi/AviParser.h"
#include "avi/CountingHeap.h"
#include "support/FaultFile.h"
#include "support/MemoryFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

namespace damage {

// For the name of a failed test.
static void PrintTo(const HostileShape& shape, std::ostream* out) { *out << shape.name; }

namespace {

constexpr std::size_t kMiB = std::size_t{1} << 20;
constexpr std::size_t kHostileBytes = HOSTILE_MEBIBYTES * kMiB;

class HostileCost : public testing::TestWithParam<HostileShape> {
protected:
    struct Cost {
        std::size_t fileBytes = 0;
        bool usable = false;
        std::size_t reads = 0;
        std::size_t bytesRead = 0;
        std::size_t streams = 0;
        std::size_t nodes = 0;
        std::size_t chunks = 0;
        std::size_t messageBytes = 0;
        std::size_t memory = 0;   // peak
    };

    static Cost costOf(const HostileShape& shape, std::size_t bytes) {
        fileio::MemoryFile memory(shape.make(bytes));
        fileio::FaultFile file(memory);
        AviParser parser;
        Cost cost;
        cost.fileBytes = static_cast<std::size_t>(memory.size());
        const std::size_t before = heap::inUse();
        heap::startCounting();
        cost.usable = parser.parse(file);
        cost.memory = heap::peak() - before;
        cost.reads = file.reads().size();
        cost.bytesRead = static_cast<std::size_t>(file.bytesRead());
        cost.streams = parser.streams().size();
        cost.nodes = parser.chunkTree().size();
        cost.messageBytes = parser.errorText().size();
        for (const auto& stream : parser.streams()) {
            cost.chunks += stream->idx1Chunks().size() + stream->openDmlChunks().size();
        }
        return cost;
    }
};

TEST_P(HostileCost, IsBoundedByTheSizeOfTheFile) {
    const Cost cost = costOf(GetParam(), kHostileBytes);
    EXPECT_GE(cost.fileBytes, kHostileBytes - 4 * 1024);
    EXPECT_LE(cost.fileBytes, kHostileBytes + 4 * 1024);
    EXPECT_TRUE(cost.usable) << "the shape is useless: the file is refused";
    // Headers, OpenDML indexes and "idx1" once each, plus 64 and 4 MiB for the first two, and 8 MiB of formats.
    EXPECT_LE(cost.bytesRead, 3 * cost.fileBytes + 76 * kMiB);
    // In addition to the reads of headers and indexes, each stream has a header and a format.
    EXPECT_LE(cost.reads - std::min(cost.reads, 2 * cost.streams),
              cost.fileBytes / 65'536 + 1024 + cost.fileBytes / 4096 + 16'384);
    EXPECT_LE(cost.nodes, 200'000u);
    EXPECT_LE(cost.chunks, (cost.fileBytes + 4 * kMiB) / 8 + 1'000'000);
    EXPECT_LE(cost.messageBytes, kMiB + 200);
    // 16 bytes of a super index take 40; this includes the list of reads that this test keeps.
    EXPECT_LE(cost.memory, 64 * kMiB + 5 * cost.fileBytes / 2);
}

TEST_P(HostileCost, IsBoundedForASmallFileToo) {
    const Cost cost = costOf(GetParam(), kMiB);
    EXPECT_LE(cost.bytesRead, 3 * cost.fileBytes + 76 * kMiB);
    EXPECT_LE(cost.memory, 64 * kMiB);
    EXPECT_LE(cost.nodes, 200'000u);
    EXPECT_LE(cost.chunks, (cost.fileBytes + 4 * kMiB) / 8 + 1'000'000);
}

std::string shapeNameOf(const testing::TestParamInfo<HostileShape>& info) {
    std::string name = info.param.name;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Of, HostileCost, testing::ValuesIn(hostileShapes().begin(), hostileShapes().end()),
                         shapeNameOf);

}  // namespace

}  // namespace damage
