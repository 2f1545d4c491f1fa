#include "hostkit/system/Text.h"

#include <gtest/gtest.h>

using namespace hostkit;

namespace {

TEST(Text, Utf16BecomesUtf8) {
    EXPECT_EQ(toUtf8(std::u16string_view(u"a\u00e9\u20ac\U0001F3AC")), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8E\xAC");
}

TEST(Text, Utf8BecomesUtf16) {
    EXPECT_EQ(toUtf16("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8E\xAC"), u"a\u00e9\u20ac\U0001F3AC");
}

TEST(Text, HalfASurrogatePairBecomesTheReplacementCharacter) {
    EXPECT_EQ(toUtf8(std::u16string_view(u"a\xD83C")), "a\xEF\xBF\xBD");
}

TEST(Text, AnOverlongSequenceBecomesTheReplacementCharacter) {
    EXPECT_EQ(toUtf16("\xE0\x80\xAF"), u"\uFFFD");
}

TEST(Text, ATruncatedSequenceKeepsTheNextCharacter) {
    EXPECT_EQ(toUtf16("\xE2\x82z"), u"\uFFFDz");
}

TEST(Text, AFieldWithoutATerminatorIsTakenWhole) {
    const char field[3] = {'a', 'b', 'c'};
    EXPECT_EQ(fieldText(field, 3), "abc");
}

TEST(Text, AFieldEndsAtItsTerminator) { EXPECT_EQ(fieldText("ab\0cd", 5), "ab"); }

TEST(Text, CodesAreWrittenFromEitherEnd) {
    EXPECT_EQ(codeText(0x61726762), "bgra");
    EXPECT_EQ(codeTextHighFirst(0x41564956), "AVIV");
}

TEST(Text, AnUnprintableByteOfACodeIsWrittenAsItsNumber) { EXPECT_EQ(codeText(0x20000141), "A[1][0] "); }

TEST(Text, PathsKeepEveryCharacter) {
    EXPECT_EQ(toUtf8(pathFromUtf8("clip \xE2\x82\xAC \xF0\x9F\x8E\xAC.avi")), "clip \xE2\x82\xAC \xF0\x9F\x8E\xAC.avi");
}

}  // namespace
