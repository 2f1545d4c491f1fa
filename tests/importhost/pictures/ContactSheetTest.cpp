#include "importhost/console/Progress.h"
#include "importhost/pictures/Canvas.h"
#include "importhost/pictures/ContactSheet.h"
#include "importhost/pictures/ThirdParty.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace importhost;

namespace {

Picture plain(int width, int height, std::uint16_t red, std::uint16_t green, std::uint16_t blue) {
    Picture picture{width, height, 8, false, {}};
    for (int i = 0; i < width * height; ++i) {
        picture.components.insert(picture.components.end(), {red, green, blue});
    }
    return picture;
}

int countOf(const Picture& picture, Ink ink) {
    int count = 0;
    for (std::size_t i = 0; i < picture.components.size(); i += 3) {
        count += picture.components[i] == ink.red && picture.components[i + 1] == ink.green &&
                 picture.components[i + 2] == ink.blue;
    }
    return count;
}

constexpr Ink kBlack = {0, 0, 0};
constexpr Ink kWhite = {255, 255, 255};

TEST(Canvas, RectanglesAreClippedAtTheEdges) {
    Canvas canvas(4, 3, kBlack);
    canvas.fill(-1, -1, 3, 2, kWhite);
    canvas.fill(3, 2, 100, 100, kWhite);
    EXPECT_EQ(countOf(canvas.result(), kWhite), 3);
}

TEST(Canvas, APlainPictureStaysPlainWhenScaled) {
    Canvas canvas(20, 20, kBlack);
    canvas.picture(5, 5, 10, 10, plain(37, 23, 10, 200, 30));
    EXPECT_EQ(countOf(canvas.result(), {10, 200, 30}), 100);
}

TEST(Canvas, TransparentPixelsShowACheckerboard) {
    Canvas canvas(32, 32, kBlack);
    Picture picture{32, 32, 8, true, std::vector<std::uint16_t>(32 * 32 * 4, 0)};
    canvas.picture(0, 0, 32, 32, picture);
    const Picture drawn = canvas.result();
    EXPECT_EQ(drawn.components[0], 96);
    EXPECT_EQ(drawn.components[12 * 3], 144);
}

TEST(Canvas, SixteenBitsAreShownAsEight) {
    Canvas canvas(4, 4, kBlack);
    Picture picture = plain(4, 4, 0x1234, 0x8000, 0xFFFF);
    picture.bits = 16;
    canvas.picture(0, 0, 4, 4, picture);
    EXPECT_EQ(countOf(canvas.result(), {0x12, 0x80, 0xFF}), 16);
}

// If a font runs out of room, strokes are missing and two digits look alike or empty.
TEST(Canvas, CharactersDoNotDependOnTheirNeighbours) {
    for (char character = '!'; character <= '~'; ++character) {
        const std::string alone(1, character);
        const std::size_t strokes = textQuads(alone).size();
        EXPECT_GT(strokes, 0u) << alone;
        EXPECT_EQ(textQuads(alone + std::string(50, ' ')).size(), strokes) << alone;
    }
}

TEST(Canvas, NonAsciiCharactersAreQuestionMarks) {
    EXPECT_EQ(textQuads("a\xE2\x82\xAC").size(), textQuads("a?").size());
    EXPECT_EQ(textUnits("a\xE2\x82\xAC"), textUnits("a?"));
}

TEST(ContactSheet, TileHeightsFollowTheFrame) {
    EXPECT_EQ(tileHeightFor(320, 1920, 1080), 180);
    EXPECT_EQ(tileHeightFor(320, 720, 576), 256);
    EXPECT_EQ(tileHeightFor(320, 1, 100000), 1280);
    EXPECT_EQ(tileHeightFor(320, 100000, 1), 1);
}

TEST(ContactSheet, EveryTileIsOnTheSheet) {
    std::vector<SheetTile> tiles;
    for (std::uint16_t i = 0; i < 5; ++i) {
        const Picture picture = plain(16, 9, static_cast<std::uint16_t>(100 + i), 7, 9);
        tiles.push_back({picture, std::to_string(i), "0:00:00.000", ""});
    }
    const Picture sheet = drawSheet("clip.avi", "16 x 9", tiles, {2, 160, 90});
    EXPECT_EQ(sheet.width, 2 * 24 + 2 * 160 + 20);
    EXPECT_EQ(sheet.height, 2 * 24 + 72 + 3 * (90 + 26 + 20) - 20);
    for (std::uint8_t i = 0; i < 5; ++i) {
        EXPECT_EQ(countOf(sheet, {static_cast<std::uint8_t>(100 + i), 7, 9}), 160 * 90);
    }
}

TEST(ContactSheet, WithoutATitleReservesNoRoom) {
    const SheetTile tile{plain(16, 9, 1, 2, 3), "0", "0:00:00.000", ""};
    EXPECT_EQ(drawSheet("", "", {tile}, {1, 160, 90}).height, 2 * 24 + 90 + 26);
}

TEST(ContactSheet, AFrameThatFailedShowsItsResult) {
    const SheetTile failed{std::nullopt, "0", "0:00:00.000", "imFrameNotFound"};
    const SheetTile silent{std::nullopt, "0", "0:00:00.000", ""};
    constexpr Ink alarm = {236, 112, 99};
    EXPECT_GT(countOf(drawSheet("a", "b", {failed}, {}), alarm), 100);
    EXPECT_EQ(countOf(drawSheet("a", "b", {silent}, {}), alarm), 0);
}

TEST(ContactSheet, ALongTitleStaysInsideTheMargin) {
    const SheetTile tile{plain(16, 9, 1, 2, 3), "0", "0:00:00.000", ""};
    const Picture sheet = drawSheet(std::string(500, 'W'), "b", {tile}, {1, 160, 90});
    for (int y = 0; y < sheet.height; ++y) {
        for (int x = sheet.width - 24; x < sheet.width - 1; ++x) {
            const std::size_t at = static_cast<std::size_t>(y * sheet.width + x) * 3;
            ASSERT_LT(sheet.components[at], 100) << x << " " << y;
        }
    }
}

TEST(Progress, TheBarFillsUp) {
    EXPECT_EQ(Progress::bar("frames", 0, 24), "frames [..............................]   0%  0 of 24");
    EXPECT_EQ(Progress::bar("frames", 12, 24), "frames [###############...............]  50%  12 of 24");
    EXPECT_EQ(Progress::bar("frames", 24, 24), "frames [##############################] 100%  24 of 24");
}

}  // namespace
