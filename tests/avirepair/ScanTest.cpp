// Which chunks are found, and which bytes are none.
#include "avirepair/Repaired.h"

#include <gtest/gtest.h>

namespace {

using namespace aviwriter;
using avirepair::FoundChunk;

Bytes withChunks(const std::vector<Bytes>& chunks, std::uint32_t moviSize = 0) {
    Bytes file = riff("AVI ", {damage::headers({damage::videoList(), damage::soundList()}), list("movi", chunks)});
    if (moviSize != 0) {
        overwrite(file, positionOf(file, "movi") - 4, u32(moviSize));
    }
    return file;
}

// A recording that died: its media list has no size.
constexpr std::uint32_t kOpen = 4;

Bytes picture(std::uint32_t number) { return chunk("00dc", damage::pictureFrame(number)); }

Bytes pictures(std::uint32_t count) {
    Bytes all;
    for (std::uint32_t number = 0; number < count; ++number) {
        all = std::move(all) + picture(number);
    }
    return all;
}

Bytes noise(std::size_t count) {
    Bytes bytes(count);
    std::uint32_t state = 1;
    for (std::uint8_t& byte : bytes) {
        state = state * 1664525 + 1013904223;
        byte = static_cast<std::uint8_t>(state >> 24);
    }
    return bytes;
}

TEST(Scan, DoesNotLookIntoFrames) {
    const Bytes file = withChunks({picture(0), chunk("00dc", pictures(8)), picture(1)});
    EXPECT_EQ(videoOf(diagnosed(file).plan), "+++");
}

TEST(Scan, DoesNotTakeALoneHeaderAfterABreak) {
    const Bytes file = withChunks({pictures(3), noise(500), picture(0), noise(500), pictures(4)});
    EXPECT_EQ(diagnosed(file).scan.chunks.size(), 7U);
}

TEST(Scan, TakesChunksAfterForeignBytes) {
    for (const std::size_t count : {1U, 7U, 512U, 70'000U}) {
        const Bytes file = withChunks({pictures(3), noise(count), pictures(4)});
        EXPECT_EQ(diagnosed(file).scan.chunks.size(), 7U) << count;
    }
}

TEST(Scan, TakesChunksInRecordLists) {
    const Bytes file = withChunks({list("rec ", {picture(0), picture(1)}), list("rec ", {picture(2)})});
    EXPECT_EQ(videoOf(diagnosed(file).plan), "+++");
}

// The second half of an older frame follows what was written last, then whole older frames.
TEST(Scan, LeavesOutTheRemainsOfAnOlderFile) {
    const Bytes file = withChunks({pictures(3), noise(40), pictures(9)}, kOpen);
    const avirepair::Diagnosis found = diagnosed(file);
    EXPECT_EQ(videoOf(found.plan), "+++");
    EXPECT_EQ(found.plan.notes, std::vector<std::string>{"9 chunks after the end of the recording, perhaps remains "
                                                         "of an older file; --all takes them"});
    EXPECT_EQ(diagnosed(file, {.takesAll = true}).scan.chunks.size(), 12U);
}

TEST(Scan, LeavesOutTheRemainsOfAnOlderFileBehindAWholeOne) {
    const Bytes file = damage::honestClip() + noise(40) + pictures(9);
    EXPECT_EQ(videoOf(diagnosed(file).plan), "++++++++++");
    EXPECT_EQ(avirepair::exitCodeOf(diagnosed(file).plan), 0);
}

// What was never written reads as zeros; what follows was written by the same recording.
TEST(Scan, TakesChunksAfterZerosInARecordingThatDied) {
    const Bytes file = withChunks({pictures(3), filled(3000), pictures(4)}, kOpen);
    EXPECT_EQ(diagnosed(file).plan.notes, std::vector<std::string>{});
    EXPECT_EQ(diagnosed(file).scan.chunks.size(), 7U);
}

TEST(Scan, EndsWhereAnotherClipBegins) {
    const avirepair::Diagnosis found = diagnosed(damage::honestClip() + damage::honestClip());
    EXPECT_EQ(videoOf(found.plan), "++++++++++");
    EXPECT_EQ(found.plan.wrong, std::vector<std::string>{"another clip begins at byte " +
                                                         std::to_string(damage::honestClip().size())});
}

TEST(Scan, LosesAFrameWhoseEndIsMissing) {
    Bytes file = withChunks({pictures(3)});
    file.resize(file.size() - 10);
    EXPECT_EQ(videoOf(diagnosed(file).plan), "++");
    EXPECT_EQ(avirepair::exitCodeOf(diagnosed(file).plan), 3);
}

TEST(Scan, KeepsAnOddChunkThatEndsTheFileWithoutItsPadByte) {
    Bytes file = withChunks({picture(0), chunk("00dc", filled(61, 7))});
    file.pop_back();
    EXPECT_EQ(videoOf(diagnosed(file).plan), "++");
    EXPECT_EQ(repairedBytes(repairedBytes(file)), repairedBytes(file));
}

TEST(Scan, CorrectsTheSizeOfACopiedHeaderChunk) {
    const Bytes wrong = chunkClaiming("strd", 0x7FFFFFFF, filled(8, 7));
    const Bytes file = riff("AVI ", {damage::headers({damage::videoList(1, {wrong})}), list("movi", {picture(0)})});
    const Bytes repaired = repairedBytes(file);
    EXPECT_EQ(u32At(repaired, positionOf(repaired, "strd") + 4), 8U);
}

// The header counts ten pictures.
TEST(Scan, ACutBetweenChunksIsALoss) {
    Bytes file = damage::honestClip();
    const avirepair::FoundChunk last = diagnosed(file).scan.chunks.back();
    file.resize(last.position);
    EXPECT_EQ(avirepair::exitCodeOf(diagnosed(file).plan), 3);
}

TEST(Scan, AnotherClipInsideTheMediaIsALoss) {
    const Bytes file = withChunks({pictures(2), riff("AVI ", {list("movi", {pictures(3)})}), pictures(2)});
    EXPECT_EQ(videoOf(diagnosed(file).plan), "++");
    EXPECT_EQ(avirepair::exitCodeOf(diagnosed(file).plan), 3);
}

TEST(Scan, OfAnUnreadableFileSaysWhere) {
    class Broken final : public fileio::MemoryFile {
    public:
        using MemoryFile::MemoryFile;
        std::uint64_t read(void*, std::uint64_t) override { return 0; }
    };
    Broken file(damage::honestClip());
    try {
        avirepair::diagnose(file, nullptr, {});
        FAIL() << "nothing was thrown";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "the file cannot be read at byte 0");
    }
}

TEST(Scan, ListsAChunkInALine) {
    const FoundChunk chunk = {1234, 56, 1, avirepair::ChunkType::wb, FoundChunk::kCut};
    EXPECT_EQ(avirepair::chunkLine(chunk), "1234 01wb 56 cut\n");
}

}  // namespace
