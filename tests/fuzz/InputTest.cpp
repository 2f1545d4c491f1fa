#include "support/Input.h"

#include <gtest/gtest.h>

namespace {

using fuzz::Bytes;

Bytes bytesOf(fuzz::ByteView view) { return Bytes(view.begin(), view.end()); }

TEST(Input, AFileAndItsScriptCanBeSplitAgain) {
    const Bytes input = fuzz::joinInput(Bytes{1, 2, 3}, Bytes{9, 8});
    EXPECT_EQ(input, (Bytes{1, 2, 3, 9, 8, 2}));
    EXPECT_EQ(bytesOf(fuzz::splitInput(input).file), (Bytes{1, 2, 3}));
    EXPECT_EQ(bytesOf(fuzz::splitInput(input).script), (Bytes{9, 8}));
}

TEST(Input, AScriptLongerThanTheInputIsIgnored) {
    EXPECT_EQ(bytesOf(fuzz::splitInput(Bytes{1, 2, 3}).file), (Bytes{1, 2, 3}));
    EXPECT_TRUE(fuzz::splitInput(Bytes{1, 2, 3}).script.empty());
}

TEST(Input, AScriptBeyondTheLimitIsIgnored) {
    Bytes input(300, 0);
    input.back() = 121;
    EXPECT_EQ(fuzz::splitInput(input).file.size(), 300u);
    input.back() = 120;
    EXPECT_EQ(fuzz::splitInput(input).file.size(), 179u);
}

TEST(Input, AnEmptyInputIsAnEmptyFileWithoutAScript) {
    EXPECT_TRUE(fuzz::splitInput({}).file.empty());
    EXPECT_TRUE(fuzz::splitInput(Bytes{0}).file.empty());
}

TEST(Script, ReturnsItsBytesInOrderAndThenZeros) {
    const Bytes bytes = {1, 0x34, 0x12, 1, 2, 3, 4};
    fuzz::Script script(bytes);
    EXPECT_EQ(script.next8(), 1);
    EXPECT_EQ(script.next16(), 0x1234);
    EXPECT_EQ(script.next32(), 0x04030201u);
    EXPECT_TRUE(script.atEnd());
    EXPECT_EQ(script.next32(), 0u);
}

}  // namespace
