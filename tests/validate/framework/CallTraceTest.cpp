#include "importhost/validate/framework/CallTrace.h"

#include "support/TempFolder.h"

using importhost::validate::CallTrace;
using importhost::validate::readCallTrace;

namespace {

std::vector<std::string> numbered(int first, int end) {
    std::vector<std::string> lines;
    for (int i = first; i < end; ++i) {
        lines.push_back("call " + std::to_string(i));
    }
    return lines;
}

TEST(CallTrace, KeepsTheLastLinesInOrder) {
    const TempFolder folder;
    CallTrace trace(folder.folder() / "calls.txt");
    for (const std::string& line : numbered(0, 120)) {
        trace.add(line);
    }
    EXPECT_EQ(trace.latest(), numbered(120 - 48, 120));
    EXPECT_EQ(readCallTrace(folder.folder() / "calls.txt"), numbered(120 - 48, 120));
}

TEST(CallTrace, FewLinesAreAllThere) {
    const TempFolder folder;
    CallTrace trace(folder.folder() / "calls.txt");
    trace.add("first");
    trace.add("  indented");
    EXPECT_EQ(readCallTrace(folder.folder() / "calls.txt"), (std::vector<std::string>{"first", "  indented"}));
}

TEST(CallTrace, ALineIsInTheFileBeforeTheTraceEnds) {
    const TempFolder folder;
    CallTrace trace(folder.folder() / "calls.txt");
    trace.add("the last words");
    EXPECT_EQ(readCallTrace(folder.folder() / "calls.txt").size(), 1u);
}

TEST(CallTrace, ALongLineAndOneWithLineEndsStayOneLine) {
    const TempFolder folder;
    CallTrace trace(folder.folder() / "calls.txt");
    trace.add(std::string(1000, 'x'));
    trace.add("a\nb");
    trace.add("after");
    const std::vector<std::string> lines = readCallTrace(folder.folder() / "calls.txt");
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0], std::string(253, 'x'));
    EXPECT_EQ(lines[1], "a b");
    EXPECT_EQ(lines[2], "after");
}

TEST(CallTrace, AFileThatIsNotThereHasNoLines) { EXPECT_TRUE(readCallTrace("no such file").empty()); }

TEST(CallTrace, AFolderThatIsNotThereIsAnError) {
    EXPECT_THROW(CallTrace("no such folder/calls.txt"), std::runtime_error);
}

}  // namespace
