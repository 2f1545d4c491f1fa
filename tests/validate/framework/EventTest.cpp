#include "importhost/validate/framework/Event.h"

#include "support/TempFolder.h"

using namespace importhost::validate;

namespace {

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void write(const std::filesystem::path& path, const std::string& content) {
    std::ofstream(path, std::ios::binary) << content;
}

class Events : public testing::Test {
protected:
    const TempFolder m_folder;
    const std::filesystem::path path = m_folder.folder() / "events.jsonl";
};

TEST_F(Events, ReturnsWhatWasWritten) {
    const std::vector<Event> events = {{EventKind::Step, "plain.avi"},
                                       {EventKind::Failure, "a \"quoted\"\nline \xE2\x82\xAC"},
                                       {EventKind::End, ""}};
    EventFile file(path);
    for (const Event& event : events) {
        file.take(event);
    }
    EXPECT_EQ(readEvents(path), events);        // with the file still open, as after a crash
}

TEST_F(Events, ATruncatedLastLineIsSkipped) {
    {
        EventFile file(path);
        file.take({EventKind::Note, "whole"});
        file.take({EventKind::Failure, "cut off"});
    }
    const std::string content = contentOf(path);
    const std::size_t firstLine = content.find('\n') + 1;
    for (std::size_t size = firstLine; size < content.size() - 1; ++size) {
        write(path, content.substr(0, size));
        ASSERT_EQ(readEvents(path), (std::vector<Event>{{EventKind::Note, "whole"}})) << size;
    }
}

TEST_F(Events, InvalidUtf8IsReplaced) {
    EventFile(path).take({EventKind::Note, "a\xFFz"});
    EXPECT_EQ(readEvents(path), (std::vector<Event>{{EventKind::Note, "a\xEF\xBF\xBDz"}}));
}

TEST_F(Events, OtherLinesAreSkipped) {
    write(path, "7\n[]\nnonsense\n{\"kind\":1,\"text\":\"good\"}\n{\"kind\":\"x\",\"text\":7}\n");
    EXPECT_EQ(readEvents(path), (std::vector<Event>{{EventKind::Note, "good"}}));
}

TEST(EventFile, AMissingFileHasNoEvents) { EXPECT_TRUE(readEvents("no such file").empty()); }

TEST(EventFile, AMissingFolderIsAnError) {
    EXPECT_THROW(EventFile("no such folder/events.jsonl"), std::runtime_error);
}

}  // namespace
