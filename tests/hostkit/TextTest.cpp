#include "hostkit/system/Text.h"

#include <gtest/gtest.h>

using namespace hostkit;

namespace {

TEST(Text, AFieldWithoutATerminatorIsTakenWhole) {
    const char field[3] = {'a', 'b', 'c'};
    EXPECT_EQ(fieldText(field, 3), "abc");
}

TEST(Text, AFieldEndsAtItsTerminator) { EXPECT_EQ(fieldText("ab\0cd", 5), "ab"); }

TEST(Text, CodesAreWrittenFromEitherEnd) {
    EXPECT_EQ(codeText(0x61726762), "bgra");
    EXPECT_EQ(codeTextHighFirst(0x41564956), "AVIV");
}

TEST(Text, PathsKeepEveryCharacter) {
    EXPECT_EQ(toUtf8(pathFromUtf8("clip \xE2\x82\xAC \xF0\x9F\x8E\xAC.avi")), "clip \xE2\x82\xAC \xF0\x9F\x8E\xAC.avi");
}

}  // namespace
