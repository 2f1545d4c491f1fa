// The byte layouts, each shown by one row.
#include "StandinFixture.h"

namespace standin::test {
namespace {

class Packing : public StandinTest {
protected:
    // Packs one row, given as the samples of its planes, without a change of colour.
    Bytes row(std::uint32_t streamType, const std::vector<std::vector<std::uint16_t>>& planes,
              const QuorvaneFormat& wanted) {
        const bool rgb = typeLayout(streamType).rgb;
        const StreamInfo info = stream(streamType, static_cast<std::uint32_t>(planes[0].size()), 1, kRec709,
                                       rgb ? kFull : kLimited);
        Picture picture = makePicture(info);
        for (std::size_t i = 0; i < planes.size(); ++i)
            picture.planes[i].samples = planes[i];
        return decoded(info, picture, wanted);
    }
};

// The bytes of a v210 group with these 10-bit samples.
Bytes words(const std::vector<std::vector<std::uint32_t>>& triples) {
    Bytes bytes;
    for (const auto& triple : triples) {
        const std::uint32_t word = triple[0] | triple[1] << 10 | triple[2] << 20;
        for (int shift = 0; shift < 32; shift += 8)
            bytes.push_back(static_cast<std::uint8_t>(word >> shift));
    }
    return bytes;
}

TEST_F(Packing, YuyvAlternatesLumaAndChroma) {
    EXPECT_EQ((Bytes{1, 11, 2, 21, 3, 12, 4, 22}), row(104, {{1, 2, 3, 4}, {11, 12}, {21, 22}}, request(4)));
}

TEST_F(Packing, UyvyBeginsWithChroma) {
    EXPECT_EQ((Bytes{11, 1, 21, 2, 12, 3, 22, 4}), row(104, {{1, 2, 3, 4}, {11, 12}, {21, 22}}, request(5)));
}

TEST_F(Packing, AnOddWidthRepeatsTheLastPixel) {
    EXPECT_EQ((Bytes{1, 11, 2, 21, 3, 12, 3, 22}), row(104, {{1, 2, 3}, {11, 12}, {21, 22}}, request(4)));
    EXPECT_EQ((Bytes{9, 1, 8, 1}), row(104, {{1}, {9}, {8}}, request(5)));
}

TEST_F(Packing, PairsOf444GetTheirMeanChromaHalvesUp) {
    EXPECT_EQ((Bytes{1, 12, 2, 26, 3, 13, 3, 40}), row(103, {{1, 2, 3}, {11, 12, 13}, {21, 30, 40}}, request(4)));
}

TEST_F(Packing, BgraArgbAndTheirOpaqueForms) {
    const std::vector<std::vector<std::uint16_t>> planes = {{1, 5}, {2, 6}, {3, 7}, {4, 8}};
    EXPECT_EQ((Bytes{3, 2, 1, 4, 7, 6, 5, 8}), row(102, planes, request(2)));
    EXPECT_EQ((Bytes{4, 1, 2, 3, 8, 5, 6, 7}), row(102, planes, request(19)));
    EXPECT_EQ((Bytes{3, 2, 1, 255, 7, 6, 5, 255}), row(102, planes, request(1)));
    EXPECT_EQ((Bytes{255, 1, 2, 3, 255, 5, 6, 7}), row(102, planes, request(16)));
}

TEST_F(Packing, VuyaAndVuyx) {
    const std::vector<std::vector<std::uint16_t>> planes = {{1}, {2}, {3}, {4}};
    EXPECT_EQ((Bytes{3, 2, 1, 4}), row(106, planes, request(50)));
    EXPECT_EQ((Bytes{3, 2, 1, 255}), row(106, planes, request(49)));
}

TEST_F(Packing, AStreamWithoutAlphaIsOpaque) {
    EXPECT_EQ((Bytes{3, 2, 1, 255}), row(101, {{1}, {2}, {3}}, request(2)));
    EXPECT_EQ((Bytes{3, 2, 1, 255}), row(103, {{1}, {2}, {3}}, request(50)));
    EXPECT_EQ((Bytes{255, 255, 255, 255, 255, 255, 255, 255}), row(101, {{255}, {255}, {255}}, request(31)));
    EXPECT_EQ((Bytes{0, 128, 0, 128, 0, 128, 0, 128}), row(101, {{255}, {255}, {255}}, request(31, 2)));
    EXPECT_EQ((Bytes{0, 0, 0, 0, 0, 0, 0, 128}), row(101, {{0}, {0}, {0}}, request(32, 2)));
}

TEST_F(Packing, AlphaIsScaledToTheTargetsRange) {
    EXPECT_EQ((Bytes{0, 0, 0, 0, 0, 0, 0xC1, 0x40}), row(102, {{0}, {0}, {0}, {129}}, request(31, 2)));   // 16576.75
    EXPECT_EQ((Bytes{0, 0, 0, 0, 0, 0, 0x81, 0x81}), row(102, {{0}, {0}, {0}, {129}}, request(31)));
    EXPECT_EQ((Bytes{0, 0, 0, 129}), row(114, {{0}, {0}, {0}, {8256}}, request(2)));                       // 128.504
}

TEST_F(Packing, V210PutsTwelveSamplesInFourWords) {
    EXPECT_EQ(words({{101, 1, 201}, {2, 102, 3}, {202, 4, 103}, {5, 203, 6}}),
              row(108, {{1, 2, 3, 4, 5, 6}, {101, 102, 103}, {201, 202, 203}}, request(11)));
}

TEST_F(Packing, V210FillsItsLastGroupWithTheLastPixel) {
    EXPECT_EQ(words({{101, 1, 201}, {1, 101, 1}, {201, 1, 101}, {1, 201, 1}}),
              row(108, {{1}, {101}, {201}}, request(11)));
    EXPECT_EQ(words({{101, 1, 201}, {2, 102, 3}, {202, 3, 102}, {3, 202, 3}}),
              row(108, {{1, 2, 3}, {101, 102}, {201, 202}}, request(11)));
}

TEST_F(Packing, V210KeepsAllCodes) {
    EXPECT_EQ(words({{0, 1023, 1023}, {0, 0, 0}, {1023, 0, 0}, {0, 1023, 0}}),
              row(108, {{1023, 0}, {0}, {1023}}, request(11)));
}

TEST_F(Packing, Rgb10HasRedOnTopAndTwoLowBitsFree) {
    EXPECT_EQ((Bytes{0xFC, 0x0F, 0x00, 0x00}), row(109, {{0}, {0}, {1023}}, request(15)));
    EXPECT_EQ((Bytes{0x00, 0xF0, 0x3F, 0x00}), row(109, {{0}, {1023}, {0}}, request(15)));
    EXPECT_EQ((Bytes{0x00, 0x00, 0xC0, 0xFF}), row(109, {{1023}, {0}, {0}}, request(15)));
}

TEST_F(Packing, SixteenBitComponentsAreLittleEndianInBgraOrder) {
    // 14-bit codes are scaled by 32768/16383, a little more than 2.
    EXPECT_EQ((Bytes{0x00, 0x06, 0x00, 0x04, 0x00, 0x02, 0x00, 0x08}),
              row(114, {{0x0100}, {0x0200}, {0x0300}, {0x0400}}, request(31, 2)));
}

}  // namespace
}  // namespace standin::test
