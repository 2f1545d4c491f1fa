#include "importhost/validate/framework/CallTrace.h"

#include "support/TempFolder.h"

using importhost::validate::CallTrace;
using importhost::validate::readCallTrace;

namespace {

class TracedCalls : public testing::Test {
protected:
    std::vector<std::string> written() const { return readCallTrace(m_path); }

    const TempFolder m_folder;
    const std::filesystem::path m_path = m_folder.folder() / "calls.txt";
    CallTrace trace{m_path};
};

std::vector<std::string> numbered(int first, int end) {
    std::vector<std::string> lines;
    for (int i = first; i < end; ++i) {
        lines.push_back("call " + std::to_string(i));
    }
    return lines;
}

TEST_F(TracedCalls, KeepsTheLastLinesInOrder) {
    for (const std::string& line : numbered(0, 120)) {
        trace.add(line);
    }
    EXPECT_EQ(trace.latest(), numbered(120 - 48, 120));
    EXPECT_EQ(written(), numbered(120 - 48, 120));
}

TEST_F(TracedCalls, KeepsAFewLinesWhole) {
    trace.add("first");
    trace.add("  indented");
    EXPECT_EQ(written(), (std::vector<std::string>{"first", "  indented"}));
}

TEST_F(TracedCalls, LinesAreWrittenAtOnce) {
    trace.add("the last words");
    EXPECT_EQ(written().size(), 1u);
}

TEST_F(TracedCalls, LongLinesAndLineEndsStayOneLine) {
    trace.add(std::string(1000, 'x'));
    trace.add("a\nb");
    trace.add("after");
    const std::vector<std::string> lines = written();
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0], std::string(253, 'x'));
    EXPECT_EQ(lines[1], "a b");
    EXPECT_EQ(lines[2], "after");
}

TEST(CallTrace, AMissingFileHasNoLines) { EXPECT_TRUE(readCallTrace("no such file").empty()); }

TEST(CallTrace, AMissingFolderIsAnError) {
    EXPECT_THROW(CallTrace("no such folder/calls.txt"), std::runtime_error);
}

}  // namespace
