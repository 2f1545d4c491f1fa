// The bounds on what a parse reads for chunk headers, just below and just above them.
#include "avi/AviParser.h"
#include "avi/ChunkWalk.h"
#include "damage/Pieces.h"
#include "support/SparseFile.h"
#include "text/FourCC.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace damage {

namespace {

using namespace aviwriter;

constexpr std::uint32_t kApart = 128 * 1024;

// Three lists, each of which shows what follows it twice: eight passes over so many chunks, which are 128 KiB apart, so
// that each visit is a read, which counts as 64 KiB. Only the first chunk shares one with the lists.
bool eightPassesHold(std::uint32_t chunks) {
    const std::uint32_t size = 3 * 24 + chunks * kApart;
    fileio::SparseFile file(size);
    for (std::uint32_t i = 0; i < 3; ++i) {
        file.put(i * 24, listClaiming("LIST", "outr", 4 + 12, {listClaiming("LIST", "innr", size - i * 24 - 20, {})}));
    }
    for (std::uint32_t i = 0; i < chunks; ++i) {
        file.put(3 * 24 + i * kApart, text("JUNK") + u32(kApart - 8));
    }
    ChunkReader reader(file);
    ChunkTree tree;
    const bool holds = walkChunks(reader, {fourCC("movi")}, tree);
    EXPECT_EQ(tree.size() == 14 + 8 * chunks, holds) << tree.size() << " nodes";
    return holds;
}

TEST(HeaderReads, LetsHeadersBeReadTwiceAndFourMebibytesMore) {
    EXPECT_TRUE(eightPassesHold(17));   // 1 and 8 times 16 reads of 64 KiB; 132 are allowed
}

TEST(HeaderReads, EndsTheWalkBehindThat) {
    EXPECT_FALSE(eightPassesHold(18));   // 1 and 8 times 17; 136 are allowed
}

// Headers behind the first 64 KiB, and behind them eight passes over so many chunks.
TEST(HeaderReads, LeavesNothingForRecordsThatAreNotAtHand) {
    constexpr std::uint32_t kChunks = 24;
    const Bytes front = chunk("JUNK", filled(70'000)) + headers({videoList(1)});
    const auto listsAt = static_cast<std::uint32_t>(12 + front.size());
    const std::uint32_t size = listsAt + 3 * 24 + kChunks * kApart;
    fileio::SparseFile file(size);
    file.put(0, text("RIFF") + u32(size - 8) + text("AVI ") + front);
    for (std::uint32_t i = 0; i < 3; ++i) {
        const std::uint32_t at = listsAt + i * 24;
        file.put(at, listClaiming("LIST", "outr", 4 + 12, {listClaiming("LIST", "innr", size - at - 20, {})}));
    }
    for (std::uint32_t i = 0; i < kChunks; ++i) {
        file.put(listsAt + 3 * 24 + i * kApart, text("JUNK") + u32(kApart - 8));
    }
    AviParser parser;
    EXPECT_FALSE(parser.parse(file));
    EXPECT_EQ(parser.errorText(), "riff structure is corrupt or invalid\navih data read error\n");
}

// So many chunks, 128 KiB apart: a file of gigabytes that no disk need hold.
class ChunksFarApart : public fileio::File {
public:
    explicit ChunksFarApart(std::uint32_t chunks) : m_size(std::int64_t{chunks} * kApart) {}

    bool open(const char*, std::uint32_t) override { return false; }
    void close() override {}
    std::int64_t size() override { return m_size; }
    std::int64_t tell() override { return m_position; }
    bool seek(std::int64_t position) override {
        m_position = position;
        return true;
    }
    // Every read that a walk makes here begins with a chunk's header.
    std::uint64_t read(void* buffer, std::uint64_t count) override {
        EXPECT_EQ(m_position % kApart, 0);
        const std::uint64_t given = std::min(count, static_cast<std::uint64_t>(m_size - m_position));
        Bytes bytes = text("JUNK") + u32(kApart - 8);
        bytes.resize(given);
        std::copy(bytes.begin(), bytes.end(), static_cast<std::uint8_t*>(buffer));
        bytesRead += given;
        return given;
    }
    std::uint64_t write(const void*, std::uint64_t) override { return 0; }

    std::uint64_t bytesRead = 0;

private:
    std::int64_t m_size;
    std::int64_t m_position = 0;
};

struct WalkOverFarChunks {
    explicit WalkOverFarChunks(std::uint32_t chunks) : file(chunks) {
        ChunkReader reader(file);
        ChunkTree tree;
        holds = walkChunks(reader, {}, tree);
        found = tree.size();
    }

    ChunksFarApart file;
    bool holds = false;
    std::size_t found = 0;
};

TEST(HeaderReads, LetsSixtyFiveThousandPlacesBeReadForHeaders) {
    const WalkOverFarChunks walk(65'536);
    EXPECT_TRUE(walk.holds);
    EXPECT_EQ(walk.found, 65'536u);
    EXPECT_EQ(walk.file.bytesRead, 65'536u + 65'535 * 4096u) << "far from the others a header takes 4 KiB";
}

TEST(HeaderReads, EndsTheWalkBehindThoseHoweverLargeTheFileIs) {
    const WalkOverFarChunks walk(65'537);
    EXPECT_FALSE(walk.holds);
    EXPECT_EQ(walk.found, 65'536u);
}

}  // namespace

}  // namespace damage
