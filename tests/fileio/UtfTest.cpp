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

TEST(Utf, AStrayContinuationByteBecomesTheReplacementCharacter) {
    EXPECT_EQ(utf16FromUtf8("a\x80" "b"), u"a\uFFFDb");
}

TEST(Utf, BytesThatNeverOccurBecomeReplacementCharacters) {
    EXPECT_EQ(utf16FromUtf8("\xFE" "a\xFF"), u"\uFFFDa\uFFFD");
}

TEST(Utf, ALeadByteWithoutItsContinuationKeepsTheNextCharacter) {
    EXPECT_EQ(utf16FromUtf8("\xC3" "a"), u"\uFFFDa");
}

TEST(Utf, AnOverlongFormIsNotAccepted) {
    EXPECT_EQ(utf16FromUtf8("\xC0\xAF"), u"\uFFFD\uFFFD");
}

TEST(Utf, ALeadByteAtTheEndBecomesTheReplacementCharacter) {
    EXPECT_EQ(utf16FromUtf8("a\xC3"), u"a\uFFFD");
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
