// Which differences between two runs count, and which do not.
#include "replay/MessageDiff.h"

#include <gtest/gtest.h>

using replay::comparable;
using replay::LoggedCall;
using Texts = std::vector<std::string>;

namespace {

LoggedCall callOf(Texts messages, Texts decode = {}) {
    LoggedCall call;
    call.messages = std::move(messages);
    call.decode = std::move(decode);
    return call;
}

Texts diffLines(const LoggedCall& then, const LoggedCall& now, bool decodeIsWhole = true) {
    return replay::compareMessages(then, now, decodeIsWhole).lines;
}

TEST(MessageDiff, AddressesAreEqualExceptNull) {
    EXPECT_EQ(comparable("Acquiring suite: r: 0, v: 1, n: 'X', ptr: 0x55aa"),
              comparable("Acquiring suite: r: 0, v: 1, n: 'X', ptr: 00007FF7C0"));
    EXPECT_NE(comparable("Acquiring suite: r: 0, v: 1, n: 'X', ptr: 0x55aa"),
              comparable("Acquiring suite: r: 0, v: 1, n: 'X', ptr: (nil)"));
    EXPECT_EQ(comparable("outFrame: (nil)"), comparable("outFrame: 0000000000000000"));
    EXPECT_EQ(comparable("Decompress failed: x: decompress({16 bytes}, {93824992,128,512},{0,0,0})"),
              "Decompress failed: x: decompress({16 bytes}, {<pointer>,128,512},{0,0,0})");
}

TEST(MessageDiff, TheFolderOfAFileDoesNotMatter) {
    EXPECT_EQ(comparable("m_filePathUtf8: 'C:\\a.avi'"), comparable("m_filePathUtf8: '/b.avi'"));
    EXPECT_EQ(comparable("Open: 'C:\\a.avi', stream: 1"), "Open: '<file>', stream: 1");
}

TEST(MessageDiff, EqualMessagesHaveNoDifferences) {
    EXPECT_EQ(diffLines(callOf({"a", "b"}, {"c"}), callOf({"a", "b"}, {"c"})), Texts{});
}

TEST(MessageDiff, OnlyTheChangedLineIsReported) {
    EXPECT_EQ(diffLines(callOf({"a", "b", "c"}), callOf({"a", "x", "c"})), (Texts{"- b", "+ x"}));
}

TEST(MessageDiff, AddedAndRemovedLinesAreReportedInOrder) {
    EXPECT_EQ(diffLines(callOf({"a", "b", "c"}), callOf({"b", "c", "d"})), (Texts{"- a", "+ d"}));
}

TEST(MessageDiff, WhichDecodeOpenedTheSessionDoesNotMatter) {
    EXPECT_EQ(diffLines(callOf({}, {"a", "Starting decompression: x"}), callOf({}, {"a"})), Texts{});
    EXPECT_EQ(diffLines(callOf({"a", "Starting decompression: x"}), callOf({"a"})),
              Texts{"- Starting decompression: x"});
}

TEST(MessageDiff, AnUnfinishedLastDecodeIsComparedToItsEnd) {
    EXPECT_EQ(diffLines(callOf({}, {"a"}), callOf({}, {"a", "b"}), false), Texts{});
    EXPECT_EQ(diffLines(callOf({}, {"a"}), callOf({}, {"a", "b"}), true), Texts{"+ b"});
    EXPECT_EQ(diffLines(callOf({}, {"x"}), callOf({}, {"a", "b"}), false), (Texts{"- x", "+ a"}));
}

TEST(MessageDiff, VeryLongListsAreReportedCompletely) {
    const Texts then(3000, "then");
    Texts now = then;
    now.back() = "now";
    EXPECT_EQ(diffLines(callOf(then), callOf(now)).size(), 6000u);
}

}  // namespace
