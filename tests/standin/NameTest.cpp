// The library's texts.
#include "StandinFixture.h"

#include <set>
#include <string>

namespace standin::test {
namespace {

std::string typeName(std::uint32_t number) {
    return quorvane_get_string(1, number);
}

TEST(Names, DecodeTypes) {
    EXPECT_EQ("YUYV", typeName(4));
    EXPECT_EQ("UYVY", typeName(5));
    EXPECT_EQ("VUYA", typeName(50));
    EXPECT_EQ("VUYX", typeName(49));
    EXPECT_EQ("BGRA", typeName(2));
    EXPECT_EQ("ARGB", typeName(19));
    EXPECT_EQ("BGRX", typeName(1));
    EXPECT_EQ("XRGB", typeName(16));
    EXPECT_EQ("v210", typeName(11));
    EXPECT_EQ("RGB10", typeName(15));
    EXPECT_EQ("BGRA16", typeName(31));
    EXPECT_EQ("BGRX16", typeName(32));
}

TEST(Names, CompressedTypes) {
    EXPECT_EQ("RGB 8", typeName(101));
    EXPECT_EQ("YUVA 4:4:4:4 8", typeName(106));
    EXPECT_EQ("YUV 4:0:0 10", typeName(115));
    EXPECT_EQ("YUV 4:4:4 10", typeName(118));
}

TEST(Names, EveryNumberFrom1To50HasAUniqueName) {
    std::set<std::string> names;
    for (std::uint32_t number = 1; number <= 50; ++number)
        names.insert(typeName(number));
    EXPECT_EQ(50u, names.size());
    EXPECT_EQ("type 3", typeName(3));
    EXPECT_EQ("type 48", typeName(48));
    EXPECT_EQ(0u, names.count("unknown type"));
}

TEST(Names, OtherTypeNumbersAreUnknown) {
    for (const std::uint32_t number : {0u, 51u, 100u, 116u, 117u, 119u, 0xFFFFFFFFu})
        EXPECT_EQ("unknown type", typeName(number)) << number;
}

TEST(Names, ColorSpacesAndParameters) {
    EXPECT_STREQ("Rec.601", quorvane_get_string(3, 1));
    EXPECT_STREQ("Rec.709", quorvane_get_string(3, 2));
    EXPECT_STREQ("unknown colour space", quorvane_get_string(3, 0));
    EXPECT_STREQ("can flip", quorvane_get_string(4, 7));
    EXPECT_STREQ("supports 0-32768", quorvane_get_string(4, 9));
    EXPECT_STREQ("unknown parameter", quorvane_get_string(4, 8));
}

TEST(Names, UnknownCategoriesHaveATextToo) {
    EXPECT_STREQ("unknown string category", quorvane_get_string(0, 1));
    EXPECT_STREQ("unknown string category", quorvane_get_string(5, 1));
}

TEST(Names, EveryFailingCodeHasAUniqueText) {
    std::set<std::string> texts;
    std::size_t count = 0;
    for (std::uint32_t code = 0x80004000; code < 0x80004500; ++code) {
        const std::string text = quorvane_get_string(2, code);
        if (text == "unknown error")
            continue;
        texts.insert(text);
        ++count;
    }
    EXPECT_EQ(39u, count);
    EXPECT_EQ(count, texts.size());
}

TEST(Names, ErrorTexts) {
    EXPECT_STREQ("no error", quorvane_get_string(2, 0));
    EXPECT_STREQ("the frame is truncated", quorvane_get_string(2, 0x80004301));
    EXPECT_STREQ("unknown error", quorvane_get_string(2, 1));
}

}  // namespace
}  // namespace standin::test
