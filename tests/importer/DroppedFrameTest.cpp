// Dropped frames: which other frame replaces one that was written empty.
#include "importer/support/ImporterTest.h"

#include "hostkit/host/PixelFormatTable.h"

using hostkit::ClipSession;

namespace {

constexpr PrTime kTicksPerFrame = 10160640000;   // at 25 frames per second

class DroppedFrame : public ImporterTest {
protected:
    // A clip with frames given as text: "x" holds data, "." is dropped.
    std::unique_ptr<ClipSession> clipOf(const std::string& frames) {
        VideoSketch video;
        video.frames = framesOf(video, static_cast<std::uint32_t>(frames.size()));
        for (std::size_t number = 0; number < frames.size(); ++number) {
            if (frames[number] == '.') {
                video.frames[number] = {};
            }
        }
        return openClip("clip.avi", aviFile({videoStream(video)}));
    }

    // The number of the frame whose picture is delivered for frame `number`, or -1.
    static int shownFor(ClipSession& clip, int number) {
        const auto answer = clip.frame(kTicksPerFrame * number, {frameFormat(PrPixelFormat_VUYX_4444_8u)});
        return answer.result == 0 ? firstBytes(answer).at(0) - kFirstFrameValue : -1;
    }

    static std::vector<int> shownForAll(ClipSession& clip, int count) {
        std::vector<int> shown;
        for (int number = 0; number < count; ++number) {
            shown.push_back(shownFor(clip, number));
        }
        return shown;
    }
};

}  // namespace

TEST_F(DroppedFrame, ShowsTheFramesThemselvesWhenNoneIsDropped) {
    EXPECT_EQ(shownForAll(*clipOf("xxxx"), 4), (std::vector<int>{0, 1, 2, 3}));
}

TEST_F(DroppedFrame, ShowsTheNearestEarlierFrame) {
    EXPECT_EQ(shownForAll(*clipOf("xxxx..x"), 7), (std::vector<int>{0, 1, 2, 3, 3, 3, 6}));
}

TEST_F(DroppedFrame, LogsTheFrameReadInstead) {
    auto clip = clipOf("xxxx..x");
    const Lines lines = handlerLogOf([&] { shownFor(*clip, 5); });
    ASSERT_GE(lines.size(), 6u);
    EXPECT_EQ(lines[5], "Empty frame: 5, frame read: 3");
}

TEST_F(DroppedFrame, LogsNothingForAPresentFrame) {
    auto clip = clipOf("x.x");
    for (const std::string& line : handlerLogOf([&] { shownFor(*clip, 2); })) {
        EXPECT_FALSE(line.starts_with("Empty frame")) << line;
    }
}

TEST_F(DroppedFrame, ShowsTheNearestLaterFrameIfTheFirstAreDropped) {
    auto clip = clipOf("..x.x");
    EXPECT_EQ(shownForAll(*clip, 5), (std::vector<int>{2, 2, 2, 2, 4}));
    EXPECT_TRUE(contains(handlerLogOf([&] { shownFor(*clip, 0); }), "Empty frame: 0, frame read: 2"));
}

TEST_F(DroppedFrame, ShowsTheFirstFrameForAllOthers) {
    EXPECT_EQ(shownForAll(*clipOf("x..."), 4), (std::vector<int>{0, 0, 0, 0}));
}

TEST_F(DroppedFrame, ShowsTheLastFrameForAllOthers) {
    EXPECT_EQ(shownForAll(*clipOf("...x"), 4), (std::vector<int>{3, 3, 3, 3}));
}

// The search alone, for each combination of eight dropped or present frames. Twenty more of one kind come before or
// after them, so that the search covers several groups of the index.
TEST_F(DroppedFrame, IsReplacedByTheFrameThatALinearSearchFinds) {
    for (const std::string& around : {std::string(20, '.'), std::string(20, 'x')}) {
        for (unsigned drops = 0; drops < 256; drops += 15) {
            std::string pattern;
            for (unsigned bit = 0; bit < 8; ++bit) {
                pattern += (drops >> bit & 1) != 0 ? '.' : 'x';
            }
            const std::string frames = drops % 2 != 0 ? around + pattern : pattern + around;
            std::vector<int> wanted;
            for (std::size_t number = 0; number < frames.size(); ++number) {
                const std::size_t earlier = frames.rfind('x', number);
                const std::size_t shown = earlier != std::string::npos ? earlier : frames.find('x', number);
                wanted.push_back(shown != std::string::npos ? static_cast<int>(shown) : -1);
            }
            EXPECT_EQ(shownForAll(*clipOf(frames), static_cast<int>(frames.size())), wanted) << frames;
        }
    }
}

TEST_F(DroppedFrame, FindsNoFrameWhenAllAreDropped) {
    auto clip = clipOf("...");
    EXPECT_EQ(logOf([&] {
                  EXPECT_EQ(clip->frame(kTicksPerFrame, {frameFormat(PrPixelFormat_VUYX_4444_8u)}).result, 28);
              }),
              (Lines{"----------------------", "[imGetSourceVideo] (47)", "m_filePathUtf8: '<folder>/clip.avi'",
                     "m_streamIndex:  0", "outFrame: <pointer>", "inFrameTime: 10160640000",
                     "frameIndex:  1 (total: 3)", "inNumFrameFormats: 1",
                     "inFrameFormats[0]: 0 0 PrPixelFormat_VUYX_4444_8u [vuyx]", "    [imFrameNotFound] (28)"}));
}

TEST_F(DroppedFrame, ReadsNothingWhenAllAreDropped) {
    auto clip = clipOf("...");
    clip->quiet();      // now any read would fail, with another result
    EXPECT_EQ(clip->frame(0, {frameFormat(PrPixelFormat_VUYX_4444_8u)}).result, 28);
    EXPECT_EQ(standin().calls(kStandinDecompressBegin), 0u);
}

TEST_F(DroppedFrame, FindsNoFrameWhenTheOnlyOneIsDropped) {
    EXPECT_EQ(shownFor(*clipOf("."), 0), -1);
}

TEST_F(DroppedFrame, ShowsSmallFramesCompletelyAfterBigOnes) {
    // The second frame is far smaller than the first, whose bytes were in the buffer before.
    VideoSketch video;
    standin::Picture noise = standin::makePicture({103, 8, 4, 1, 1});
    std::uint16_t value = 1;
    for (standin::Plane& plane : noise.planes) {
        for (std::uint16_t& sample : plane.samples) {
            sample = value = static_cast<std::uint16_t>((value * 75 + 74) % 251);
        }
    }
    video.frames = {standin::encodeFrame({103, 8, 4, 1, 1}, noise), frameOf(video, 41)};
    ASSERT_GT(video.frames[0].size(), video.frames[1].size());
    auto clip = openClip("clip.avi", aviFile({videoStream(video)}));
    EXPECT_EQ(clip->frame(0, {frameFormat(PrPixelFormat_VUYX_4444_8u)}).result, 0);
    EXPECT_EQ(shownFor(*clip, 1), 1);
}
