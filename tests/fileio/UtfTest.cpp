#include "text/FourCC.h"
#include "text/Utf.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_view_literals;

TEST(Utf, EmptyTextGivesEmptyText) {
    EXPECT_EQ(utf8FromUtf16(u""), "");
    EXPECT_EQ(utf16FromUtf8(""), u"");
}

TEST(Utf, OneToFourByteCharactersConvertBothWays) {
    const std::u16string wide = u"A\u00E9\u65E5\U0001F3AC";
    const std::string narrow = "A\xC3\xA9\xE6\x97\xA5\xF0\x9F\x8E\xAC";
    EXPECT_EQ(utf8FromUtf16(wide), narrow);
    EXPECT_EQ(utf16FromUtf8(narrow), wide);
}

TEST(Utf, TheFirstAndLastCodePointOfEachLengthSurvive) {
    const std::u16string wide = u"\u0001\u007F\u0080\u07FF\u0800\uD7FF\uE000\uFFFF\U00010000\U0010FFFF";
    EXPECT_EQ(utf16FromUtf8(utf8FromUtf16(wide)), wide);
    EXPECT_EQ(utf8FromUtf16(u"\u07FF\u0800\U0010FFFF"), "\xDF\xBF\xE0\xA0\x80\xF4\x8F\xBF\xBF");
}

TEST(Utf, EmbeddedZerosAreKept) {
    EXPECT_EQ(utf8FromUtf16(u"a\0b"sv), "a\0b"sv);
    EXPECT_EQ(utf16FromUtf8("a\0b"sv), u"a\0b"sv);
}

TEST(Utf, ALoneSurrogateIsTheReplacementCharacter) {
    const char16_t high[] = {u'a', 0xD83C, u'b'};
    const char16_t low[] = {u'a', 0xDFAC, u'b'};
    EXPECT_EQ(utf8FromUtf16({high, 3}), "a\xEF\xBF\xBD" "b");
    EXPECT_EQ(utf8FromUtf16({low, 3}), "a\xEF\xBF\xBD" "b");
}

TEST(Utf, AFinalHighSurrogateIsTheReplacementCharacter) {
    const char16_t text[] = {u'a', 0xD83C};
    EXPECT_EQ(utf8FromUtf16({text, 2}), "a\xEF\xBF\xBD");
}

TEST(Utf, SwappedSurrogatesAreTwoReplacementCharacters) {
    const char16_t text[] = {0xDFAC, 0xD83C};
    EXPECT_EQ(utf8FromUtf16({text, 2}), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

// One U+FFFD for each longest start of a valid character, and one for each byte that starts none: the same on every
// system, whatever the system's own converter does.
struct IllFormed {
    std::string_view utf8;
    std::u16string_view utf16;
};

constexpr IllFormed kIllFormed[] = {
    {"a\x80" "b", u"a\uFFFDb"},                             // a continuation byte alone
    {"\xFE" "a\xFF", u"\uFFFDa\uFFFD"},                     // bytes that never occur
    {"\xC3" "a", u"\uFFFDa"},                               // a lead byte without its continuation
    {"a\xC3", u"a\uFFFD"},
    {"\xC3\xC3\xA9", u"\uFFFD\u00E9"},
    {"\xC0\xAF", u"\uFFFD\uFFFD"},                          // overlong
    {"\xE0\x80\x80", u"\uFFFD\uFFFD\uFFFD"},
    {"\xF0\x80\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
    {"\xF0\x8F\xBF\xBF", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
    {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},                // a surrogate
    {"\xED\xBF\xBF" "a", u"\uFFFD\uFFFD\uFFFDa"},
    {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},      // beyond U+10FFFF
    {"\xF5\x80\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
    {"\xE2\x82", u"\uFFFD"},                                // cut off: one for the whole start
    {"\xE2\x82z", u"\uFFFDz"},
    {"\xE2\x82\xE2\x82\xAC", u"\uFFFD\u20AC"},
    {"\xF0\x9F\x8E", u"\uFFFD"},
    {"\xF0\x9F" "a", u"\uFFFDa"},
    {"\xF1\x80" "ab", u"\uFFFDab"},
    {"\xF4\x8F\xBF\xC3", u"\uFFFD\uFFFD"},
    {"\xE0\x80", u"\uFFFD\uFFFD"},                          // cut off after a byte that cannot continue it
    {"\xF4\x90" "a", u"\uFFFD\uFFFDa"},
};

TEST(Utf, EachMaximalSubpartBecomesOneReplacementCharacter) {
    for (const IllFormed& row : kIllFormed) {
        EXPECT_EQ(utf16FromUtf8(row.utf8), row.utf16) << testing::PrintToString(row.utf8);
    }
}

TEST(FourCC, IsLittleEndian) {
    EXPECT_EQ(fourCC("AVI "), 0x20495641u);
    EXPECT_EQ(fourCC("00dc"), 0x63643030u);
}

TEST(FourCC, BytesFrom0x80AreNotNegative) {
    EXPECT_EQ(fourCC("\xFF\xFE\x80\x01"), 0x0180FEFFu);
}

TEST(FourCCToString, CopiesLettersDigitsPunctuationAndBlanks) {
    EXPECT_EQ(FourCCToString(fourCC("AVI "), false), "AVI ");
    EXPECT_EQ(FourCCToString(fourCC("a1~!"), false), "a1~!");
}

TEST(FourCCToString, ReversedBeginsWithTheHighestByte) {
    EXPECT_EQ(FourCCToString(0x41564956, true), "AVIV");
    EXPECT_EQ(FourCCToString(0x41564956, false), "VIVA");
}

TEST(FourCCToString, WritesOtherBytesAsTheirValueInBrackets) {
    EXPECT_EQ(FourCCToString(0, false), "[0][0][0][0]");
    EXPECT_EQ(FourCCToString(0x7F1F2041, false), "A [31][127]");
    EXPECT_EQ(FourCCToString(0xFF80E909, false), "[9][233][128][255]");
}

TEST(FourCCToString, FourUnprintableBytesAreTheLongestText) {
    EXPECT_EQ(FourCCToString(0xFFFFFFFF, true), "[255][255][255][255]");
}

}  // namespace
