#include "SampleFiles.h"
#include "avi/ChunkWalk.h"
#include "support/MemoryFile.h"
#include "text/FourCC.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <utility>

namespace {

using namespace aviwriter;

struct Walked {
    explicit Walked(const Bytes& bytes) : Walked(std::make_unique<fileio::MemoryFile>(bytes)) {}
    explicit Walked(std::unique_ptr<fileio::File> opened) : file(std::move(opened)), reader(*file) {
        holds = walkChunks(reader, {fourCC("movi")}, tree);
    }

    // The tree as text, such as "RIFF:AVI(LIST:hdrl(avih) JUNK)", without the blanks in codes.
    std::string text() const { return text(tree.topLevel()); }
    std::string text(const ChunkTree::Range& nodes) const {
        std::ostringstream result;
        const char* gap = "";
        for (const ChunkNode& node : nodes) {
            result << gap << code(node.id);
            gap = " ";
            if (node.isList()) {
                result << ':' << code(node.listType) << '(' << text(tree.children(node)) << ')';
            }
        }
        return result.str();
    }
    static std::string code(std::uint32_t value) {
        std::string text = FourCCToString(value, false);
        std::erase(text, ' ');
        return text;
    }

    std::unique_ptr<fileio::File> file;
    ChunkReader reader;
    ChunkTree tree;
    bool holds = false;
};

TEST(ChunkWalk, ListsAndTheirChildrenAreInFileOrder) {
    Walked walked(riff("AVI ", {list("hdrl", {chunk("avih", filled(4)), chunk("xxxx", {})}),
                                chunk("JUNK", filled(2))}) +
                  riff("AVIX", {chunk("idx1", {})}));
    EXPECT_TRUE(walked.holds);
    EXPECT_EQ(walked.text(), "RIFF:AVI(LIST:hdrl(avih xxxx) JUNK) RIFF:AVIX(idx1)");
}

TEST(ChunkWalk, NodesHavePositionSizeAndType) {
    Walked walked(riff("AVI ", {chunk("JUNK", filled(6)), chunk("last", filled(3))}));
    const ChunkNode& top = *walked.tree.topLevel().begin();
    const ChunkNode& last = *walked.tree.child(top, fourCC("last"));
    EXPECT_EQ(top.position, 0u);
    EXPECT_EQ(top.size, 4u + 14u + 12u);
    EXPECT_EQ(top.listType, fourCC("AVI "));
    EXPECT_EQ(top.dataPosition(), 12u);
    EXPECT_EQ(last.position, 26u);
    EXPECT_EQ(last.size, 3u);
    EXPECT_EQ(last.listType, 0u);
    EXPECT_EQ(last.dataPosition(), 34u);
}

TEST(ChunkWalk, OddChunksAreFollowedByAPadByte) {
    Walked walked(chunk("odd1", filled(1)) + chunk("odd3", filled(3)) + chunk("even", filled(2)));
    EXPECT_TRUE(walked.holds);
    EXPECT_EQ(walked.text(), "odd1 odd3 even");
}

TEST(ChunkWalk, ALastOddChunkNeedsNoPadByte) {
    Bytes file = chunk("odd1", filled(1));
    file.pop_back();
    EXPECT_TRUE(Walked(file).holds);
}

TEST(ChunkWalk, MediaDataIsNotEntered) {
    Walked walked(riff("AVI ", {list("movi", {chunk("00dc", filled(4))}), list("LIST", {chunk("00dc", {})})}));
    EXPECT_EQ(walked.text(), "RIFF:AVI(LIST:movi() LIST:LIST(00dc))");
}

TEST(ChunkWalk, AListTooShortForItsTypeHasNoChildren) {
    for (const std::uint32_t size : {0u, 1u, 2u, 3u, 4u}) {
        // The next chunk begins where the size says. Below 4 that is inside the list type, which is then read as part
        // of a chunk header.
        Walked walked(listClaiming("LIST", "abcd", size, {filled(64)}));
        const ChunkNode& top = *walked.tree.topLevel().begin();
        EXPECT_TRUE(walked.tree.children(top).empty()) << size;
        EXPECT_EQ(top.listType, fourCC("abcd")) << size;
    }
}

TEST(ChunkWalk, AListLargerThanItsParentIsWalkedCompletely) {
    // The inner list states a size that includes the chunk after the outer one.
    Walked walked(listClaiming("LIST", "outr", 4 + 12, {listClaiming("LIST", "innr", 4 + 8, {})}) + chunk("next", {}));
    EXPECT_TRUE(walked.holds);
    EXPECT_EQ(walked.text(), "LIST:outr(LIST:innr(next)) next");
}

TEST(ChunkWalk, ListsAfterAFailedOneAreListedButNotEntered) {
    // "deep" is larger than the file: its walk includes both neighbours of "fail", then reaches the end of the file.
    const Bytes good = list("good", {chunk("chld", {})});
    const Bytes fail = list("fail", {listClaiming("LIST", "deep", 100'000, {})});
    Walked walked(riff("AVI ", {fail, good, good}));
    EXPECT_FALSE(walked.holds);
    EXPECT_EQ(walked.text(), "RIFF:AVI(LIST:fail(LIST:deep(LIST:good(chld) LIST:good(chld))) LIST:good() LIST:good())");
}

TEST(ChunkWalk, ListsBeforeAFailedOneAreEntered) {
    Walked walked(riff("AVI ", {list("good", {chunk("chld", {})}), listClaiming("LIST", "fail", 1000, {})}));
    EXPECT_FALSE(walked.holds);
    EXPECT_EQ(walked.text(), "RIFF:AVI(LIST:good(chld) LIST:fail())");
}

TEST(ChunkWalk, AFailureIsReportedByTheWholeWalk) {
    Walked walked(riff("AVI ", {list("aaaa", {listClaiming("LIST", "bbbb", 1000, {})})}));
    EXPECT_FALSE(walked.holds);
}

TEST(ChunkWalk, SizesOf2GiBAnd4GiBSkipTheirData) {
    for (const std::uint64_t size : {0x7FFFFFFFull, 0x80000000ull, 0xFFFFFFFEull, 0xFFFFFFFFull}) {
        const std::uint64_t next = (size + 9) & ~1ull;
        auto sparse = std::make_unique<fileio::MemoryFile>(static_cast<std::int64_t>(next + 8));
        sparse->put(0, text("huge") + u32(static_cast<std::uint32_t>(size)));
        sparse->put(next, text("next") + u32(0));
        Walked walked(std::move(sparse));
        EXPECT_TRUE(walked.holds) << size;
        EXPECT_EQ(walked.text(), "huge next") << size;
    }
}

TEST(ChunkWalk, AListOf4GiBIsWalkedToItsEnd) {
    auto sparse = std::make_unique<fileio::MemoryFile>(0x1'0000'0100);
    sparse->put(0, text("RIFF") + u32(0xFFFFFFF8) + text("AVIX"));
    sparse->put(12, text("JUNK") + u32(0xFFFFFFDC));
    sparse->put(0xFFFFFFF0, text("last") + u32(8));
    sparse->put(0x1'0000'0000, text("tail") + u32(0xF8));
    Walked walked(std::move(sparse));
    EXPECT_TRUE(walked.holds);
    EXPECT_EQ(walked.text(), "RIFF:AVIX(JUNK last) tail");
}

// --- Hostile files ---

TEST(ChunkWalk, AHundredThousandNestedListsAreWalked) {
    constexpr std::uint32_t depth = 100'000;
    Bytes file;
    file.reserve(depth * 12);
    for (std::uint32_t i = 0; i < depth; ++i) {
        const Bytes header = text("LIST") + u32((depth - i) * 12 - 8) + text("deep");
        file.insert(file.end(), header.begin(), header.end());
    }
    Walked walked(file);
    EXPECT_TRUE(walked.holds);
    EXPECT_EQ(walked.tree.size(), depth);
}

// Units of 24 bytes. Each outer list ends after the header of its inner one, which includes the rest of the group: the
// rest is walked once inside and once after it, so a group has 2^(units + 1) - 2 nodes.
Bytes doublingGroup(std::uint32_t units) {
    Bytes group;
    for (std::uint32_t i = 1; i <= units; ++i) {
        group = group + listClaiming("LIST", "outr", 4 + 12, {listClaiming("LIST", "innr", 4 + (units - i) * 24, {})});
    }
    return group;
}

TEST(ChunkWalk, ListsLargerThanTheirParentsAreNotWalkedForEver) {
    Walked walked(doublingGroup(60));   // more than 2^60 nodes
    EXPECT_FALSE(walked.holds);
    EXPECT_EQ(walked.tree.size(), 200'000u);
}

Bytes emptyChunks(std::size_t count) {
    Bytes file;
    file.reserve(8 * count);
    for (const Bytes one = chunk("JUNK", {}); count > 0; --count) {
        file.insert(file.end(), one.begin(), one.end());
    }
    return file;
}

TEST(ChunkWalk, TwoHundredThousandNodesAreWalked) {
    EXPECT_TRUE(Walked(emptyChunks(200'000)).holds);
}

TEST(ChunkWalk, OneMoreNodeIsTooMany) {
    Walked walked(emptyChunks(200'001));
    EXPECT_FALSE(walked.holds);
    EXPECT_EQ(walked.tree.size(), 200'000u);
}

TEST(ChunkWalk, ARowOfZerosIsOneNode) {
    Walked walked(chunk("aaaa", {}) + filled(800) + chunk("bbbb", {}) + filled(8) + chunk("cccc", {}));
    EXPECT_TRUE(walked.holds);
    EXPECT_EQ(walked.text(), "aaaa [0][0][0][0] bbbb [0][0][0][0] cccc");
}

TEST(ChunkWalk, ARowOfZerosThatEndsWithinAHeaderFails) {
    EXPECT_FALSE(Walked(filled(801)).holds);
}

TEST(ChunkWalk, A64MebibyteRowOfZerosIsWalked) {
    Walked walked(std::make_unique<fileio::MemoryFile>((64 << 20) + 8));
    EXPECT_TRUE(walked.holds);
    EXPECT_EQ(walked.tree.size(), 1u);
}

TEST(ChunkWalk, ALongerRowOfZerosIsNotWalked) {
    EXPECT_FALSE(Walked(std::make_unique<fileio::MemoryFile>((64 << 20) + 16)).holds);
}

}  // namespace
