// Reading a frame's bytes from files that are damaged, truncated or missing.
#include "importer/support/ImporterTest.h"

#include "importer/support/ProcessMemory.h"

#include "aviwriter/Sample.h"

using aviwriter::positionOf;
using aviwriter::u32;
using hostkit::ClipSession;

namespace {

constexpr std::uint64_t kMebibyte = 1 << 20;

class FrameRead : public ImporterTest {
protected:
    // Three frames of 100 bytes. The 56 bytes of the index follow the last one, so there are 156 bytes from its start
    // to the end of the file.
    Bytes threeFrames() { return aviFile({videoStream({.frames = {Bytes(100), Bytes(100), Bytes(100)}})}); }

    static std::size_t indexEntry(const Bytes& file, std::size_t number) {
        return positionOf(file, "idx1") + 8 + 16 * number;
    }

    // The same file, except that its index states this size for the last frame.
    Bytes withLastFrameClaiming(std::uint32_t size) {
        Bytes file = threeFrames();
        aviwriter::overwrite(file, indexEntry(file, 2) + 12, u32(size));
        return file;
    }

    hostkit::FrameAnswer frame(ClipSession& clip, int number) {
        return clip.frame(10160640000 * number, {frameFormat(PrPixelFormat_VUYX_4444_8u)});
    }

    void expectReadFailure(ClipSession& clip, int number, const std::string& line) {
        const Lines lines = logOf([&] { EXPECT_EQ(frame(clip, number).result, 33); });
        ASSERT_GE(lines.size(), 2u);
        EXPECT_EQ(lines[lines.size() - 2], line);
        EXPECT_EQ(lines.back(), "    [imFileReadFailed] (33)");
        EXPECT_EQ(host().frames().created(), 0);
    }
};

}  // namespace

TEST_F(FrameRead, FailsIfTheFileEndsInsideTheFrame) {
    auto clip = openClip("clip.avi", withLastFrameClaiming(200));
    expectReadFailure(*clip, 2, "Failed to read frame from AVI: Read error: size: 200, read: 156");
}

TEST_F(FrameRead, FailsOneBytePastTheEnd) {
    auto clip = openClip("clip.avi", withLastFrameClaiming(157));
    expectReadFailure(*clip, 2, "Failed to read frame from AVI: Read error: size: 157, read: 156");
}

TEST_F(FrameRead, ReadsToTheEndOfTheFile) {
    auto clip = openClip("clip.avi", withLastFrameClaiming(156));
    EXPECT_EQ(frame(*clip, 2).result, 8) << "read, but not a frame of the codec";
}

TEST_F(FrameRead, FailsIfTheFrameLiesPastTheEnd) {
    Bytes file = threeFrames();
    aviwriter::overwrite(file, indexEntry(file, 2) + 8, u32(0x7FFFFFF0));
    auto clip = openClip("clip.avi", file);
    expectReadFailure(*clip, 2, "Failed to read frame from AVI: Read error: size: 100, read: 0");
}

TEST_F(FrameRead, TakesNoMemoryForTwoMissingGibibytes) {
    auto clip = openClip("clip.avi", withLastFrameClaiming(0x7FFFFFFF));
    const std::uint64_t before = peakProcessBytes();
    expectReadFailure(*clip, 2, "Failed to read frame from AVI: Read error: size: 2147483647, read: 156");
    EXPECT_LT(peakProcessBytes() - before, 256 * kMebibyte);
}

TEST_F(FrameRead, TakesNoMemoryForFourMissingGibibytes) {
    auto clip = openClip("clip.avi", withLastFrameClaiming(0xFFFFFFFF));
    const std::uint64_t before = peakProcessBytes();
    expectReadFailure(*clip, 2, "Failed to read frame from AVI: Read error: size: 4294967295, read: 156");
    EXPECT_LT(peakProcessBytes() - before, 256 * kMebibyte);
}

TEST_F(FrameRead, FailsForAnImpossiblePosition) {
    Bytes file = aviwriter::sampleBytes({.type = 103, .width = 8, .height = 4, .frames = 1,
                                         .layout = {.index = aviwriter::IndexKind::openDml}});
    // The upper half of the index's base offset, 12 bytes into its data.
    aviwriter::overwrite(file, positionOf(file, "ix00") + 8 + 12 + 4, u32(0x80000000));
    auto clip = openClip("clip.avi", file);
    const Lines lines = handlerLogOf([&] { EXPECT_EQ(frame(*clip, 0).result, 33); });
    EXPECT_TRUE(lines.back().starts_with("Failed to read frame from AVI: Seek error: pos: -92233720368547"))
        << lines.back();
}

TEST_F(FrameRead, FailsWhileTheFileIsClosed) {
    const Bytes file = threeFrames();
    auto clip = openClip("clip.avi", file);
    clip->quiet();
    expectReadFailure(*clip, 0, "Failed to read frame from AVI: Seek error: pos: " +
                                    std::to_string(positionOf(file, "00dc") + 8));
}

TEST_F(FrameRead, FailsForAFileThatShrankWhileItWasClosed) {
    const Bytes file = threeFrames();
    auto clip = openClip("clip.avi", file);
    clip->quiet();
    const std::size_t kept = positionOf(file, "00dc") + 8 + 60;
    write("clip.avi", Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(kept)));
    clip->open();
    expectReadFailure(*clip, 0, "Failed to read frame from AVI: Read error: size: 100, read: 60");
}

TEST_F(FrameRead, ContinuesWithTheNextFrameAfterAFailure) {
    VideoSketch video;
    video.frames = framesOf(video, 3);
    Bytes file = aviFile({videoStream(video)});
    aviwriter::overwrite(file, indexEntry(file, 1) + 12, u32(1000000));
    auto clip = openClip("clip.avi", file);
    EXPECT_EQ(frame(*clip, 1).result, 33);
    EXPECT_EQ(firstBytes(frame(*clip, 2)), (std::vector<int>{42, 42, 42, 255}));
}

TEST_F(FrameRead, DeliversNoFrameWithoutOutFrame) {
    auto clip = openClip("clip.avi", threeFrames());
    hostkit::HostRecord<imSourceVideoRec> record;
    record->inPrivateData = clip->privateData();
    EXPECT_EQ(handlerLogOf([&] { EXPECT_EQ(session().call(imGetSourceVideo, nullptr, record.data()), 5); }),
              (Lines{"outFrame: <null>", "ERROR: the host gave no outFrame"}));
}
