#include "aviwriter/TestPicture.h"
#include "aviwriter/ToPicture.h"
#include "aviwriter/Types.h"

#include <gtest/gtest.h>

#include <set>
#include <stdexcept>

using namespace aviwriter;

namespace {

// A picture of one colour, with the components of a type.
standin::Picture flat(const Color& color, const standin::StreamInfo& info) {
    Canvas canvas(info.width, info.height);
    canvas.fill(0, 0, canvas.width(), canvas.height(), color);
    return toPicture(canvas, info);
}

std::vector<int> firstCodes(const standin::Picture& picture) {
    std::vector<int> codes;
    for (const standin::Plane& plane : picture.planes) {
        codes.push_back(plane.samples.at(0));
    }
    return codes;
}

constexpr Color kWhite{0xFFFF, 0xFFFF, 0xFFFF};
constexpr Color kBlack{0, 0, 0};
constexpr Color kRed{0xFFFF, 0, 0};
constexpr Color kBlue{0, 0, 0xFFFF};

TEST(ToPicture, LimitedRangeYuvHasTheKnownCodes) {
    const standin::StreamInfo rec601{103, 2, 2, 1, 1};
    EXPECT_EQ(firstCodes(flat(kWhite, rec601)), (std::vector<int>{235, 128, 128}));
    EXPECT_EQ(firstCodes(flat(kBlack, rec601)), (std::vector<int>{16, 128, 128}));
    EXPECT_EQ(firstCodes(flat(kRed, rec601)), (std::vector<int>{81, 90, 240}));
    EXPECT_EQ(firstCodes(flat(kBlue, rec601)), (std::vector<int>{41, 240, 110}));
}

TEST(ToPicture, Rec709WeighsColoursDifferently) {
    const standin::StreamInfo rec709{103, 2, 2, 2, 1};
    EXPECT_EQ(firstCodes(flat(kRed, rec709)), (std::vector<int>{63, 102, 240}));
    EXPECT_EQ(firstCodes(flat(kBlue, rec709)), (std::vector<int>{32, 240, 118}));
}

TEST(ToPicture, FullRangeYuvReachesBothEnds) {
    const standin::StreamInfo full{103, 2, 2, 1, 2};
    EXPECT_EQ(firstCodes(flat(kWhite, full)), (std::vector<int>{255, 128, 128}));
    EXPECT_EQ(firstCodes(flat(kBlack, full)), (std::vector<int>{0, 128, 128}));
    EXPECT_EQ(firstCodes(flat(kRed, full)), (std::vector<int>{76, 85, 255}));
}

TEST(ToPicture, TenBitCodesAreFourTimesAsFine) {
    EXPECT_EQ(firstCodes(flat(kWhite, {118, 2, 2, 1, 1})), (std::vector<int>{940, 512, 512}));
    EXPECT_EQ(firstCodes(flat(kRed, {118, 2, 2, 1, 1})), (std::vector<int>{326, 361, 960}));
}

TEST(ToPicture, RgbKeepsItsOrderAndDepth) {
    EXPECT_EQ(firstCodes(flat({0xFFFF, 0x8000, 0, 0x8000}, {114, 2, 2, 2, 2})),
              (std::vector<int>{16383, 8192, 0, 8192}));
}

TEST(ToPicture, LimitedRgbLeavesAlphaFull) {
    EXPECT_EQ(firstCodes(flat({0xFFFF, 0, 0, 0xFFFF}, {102, 2, 2, 2, 1})), (std::vector<int>{235, 16, 16, 255}));
}

TEST(ToPicture, GreyIsOnlyLuma) {
    EXPECT_EQ(firstCodes(flat(kRed, {107, 2, 2, 1, 1})), (std::vector<int>{81}));
}

TEST(ToPicture, SubsampledChromaIsTheMeanOfItsPixels) {
    Canvas canvas(3, 1);
    canvas.dot(0, 0, kRed);
    canvas.dot(1, 0, kWhite);
    canvas.dot(2, 0, kBlue);
    const standin::Picture picture = toPicture(canvas, {104, 3, 1, 1, 1});
    EXPECT_EQ(picture.planes[0].samples, (std::vector<std::uint16_t>{81, 235, 41}));
    EXPECT_EQ(picture.planes[1].samples, (std::vector<std::uint16_t>{109, 240}));   // (90.2 + 128) / 2, only blue
    EXPECT_EQ(picture.planes[2].samples, (std::vector<std::uint16_t>{184, 110}));
}

TEST(TestPicture, EveryTypeIsDrawnAtEverySize) {
    for (const TypeName& name : typeNames()) {
        for (const auto& [width, height] : {std::pair{1U, 1U}, {16U, 16U}, {17U, 3U}, {3U, 170U}, {321U, 181U}}) {
            const standin::StreamInfo info{name.type, width, height, 2, 1};
            EXPECT_NO_THROW(standin::encodeFrame(info, TestPicture(info).frame(7))) << name.code << " " << width;
        }
    }
}

TEST(TestPicture, AWhiteFrameRunsAlongAllFourEdges) {
    const Canvas canvas = TestPicture({101, 64, 48, 2, 2}).drawing(3);
    for (int x = 0; x < 64; ++x) {
        ASSERT_EQ(canvas.at(x, 0), kWhite);
        ASSERT_EQ(canvas.at(x, 47), kWhite);
    }
    for (int y = 0; y < 48; ++y) {
        ASSERT_EQ(canvas.at(0, y), kWhite);
        ASSERT_EQ(canvas.at(63, y), kWhite);
    }
    EXPECT_NE(canvas.at(1, 1), kWhite);
    EXPECT_NE(canvas.at(62, 46), kWhite);
}

TEST(TestPicture, TheBarsStandInTheirUsualOrder) {
    const Canvas canvas = TestPicture({101, 640, 360, 2, 2}).drawing(0);
    const std::uint16_t on = 0xBFFF;
    const std::vector<Color> bars = {{on, on, on}, {on, on, 0}, {0, on, on}, {0, on, 0},
                                     {on, 0, on}, {on, 0, 0}, {0, 0, on}, {0, 0, 0}};
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(canvas.at(80 * i + 40, 100), bars[static_cast<std::size_t>(i)]) << "bar " << i;
    }
}

TEST(TestPicture, TheRampOfADeepTypeShowsNearlyAllCodes) {
    const standin::Picture picture = TestPicture({113, 640, 360, 2, 2}).frame(0);
    std::set<std::uint16_t> codes;
    const auto& samples = picture.planes[0].samples;
    for (std::size_t y = 158; y < 201; ++y) {
        codes.insert(samples.begin() + static_cast<std::ptrdiff_t>(y * 640 + 1),
                     samples.begin() + static_cast<std::ptrdiff_t>(y * 640 + 639));
    }
    EXPECT_GT(codes.size(), 16000U);   // of 16384, less the few under the white frame
}

TEST(TestPicture, OnlyTypesWithAlphaFadeOut) {
    const auto smallestAlpha = [](std::uint32_t type) {
        const Canvas canvas = TestPicture({type, 640, 360, 2, 2}).drawing(0);
        std::uint16_t smallest = 0xFFFF;
        for (int x = 0; x < 640; ++x) {
            smallest = std::min(smallest, canvas.at(x, 300).a);
        }
        return smallest;
    };
    EXPECT_EQ(smallestAlpha(102), 0);
    EXPECT_EQ(smallestAlpha(101), 0xFFFF);
}

TEST(TestPicture, NeighbouringFramesDifferEvenWithoutLetters) {
    const TestPicture picture({104, 64, 36, 2, 1});
    for (std::uint32_t number = 0; number < 100; ++number) {
        EXPECT_NE(picture.frame(number).planes[0].samples, picture.frame(number + 1).planes[0].samples) << number;
    }
}

TEST(TestPicture, LettersDifferWhenTheShapesRepeat) {
    const TestPicture picture({104, 320, 180, 2, 1});
    EXPECT_NE(picture.frame(5).planes[0].samples, picture.frame(5 + 50 * 36).planes[0].samples);
}

TEST(TestPicture, AnUnknownTypeOrAnEmptyPictureIsRefused) {
    EXPECT_THROW(TestPicture({999, 16, 16, 2, 1}), std::invalid_argument);
    EXPECT_THROW(TestPicture({104, 0, 16, 2, 1}), std::invalid_argument);
}

}  // namespace
