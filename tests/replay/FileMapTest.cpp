// Mapping a log's files, from another machine, to local ones.
#include "Recording.h"

using Files = std::vector<std::filesystem::path>;

namespace {

replay::RecordedLog logOf(const std::vector<std::string>& paths) {
    replay::RecordedLog log;
    for (const std::string& path : paths) {
        log.calls.emplace_back().messages.push_back("m_filePathUtf8: '" + path + "'");
    }
    return log;
}

std::string chosen(const replay::FileMap& map, const std::string& logged) {
    const replay::MappedFile* file = map.find(logged);
    return file && file->file ? hostkit::toUtf8(*file->file) : "none";
}

TEST(FileMap, MatchesByFileNameIgnoringSystemAndCase) {
    const replay::FileMap map(logOf({"C:\\Clips\\One.AVI", "D:/two.avi"}), Files{"here/two.avi", "here/one.avi"});
    EXPECT_EQ(chosen(map, "C:\\Clips\\One.AVI"), "here/one.avi");
    EXPECT_EQ(chosen(map, "D:/two.avi"), "here/two.avi");
}

TEST(FileMap, EqualNamesAreMatchedByFolder) {
    const replay::FileMap map(logOf({"C:\\a\\clip.avi", "C:\\b\\clip.avi"}), Files{"x/b/clip.avi", "x/a/clip.avi"});
    EXPECT_EQ(chosen(map, "C:\\a\\clip.avi"), "x/a/clip.avi");
    EXPECT_EQ(chosen(map, "C:\\b\\clip.avi"), "x/b/clip.avi");
}

TEST(FileMap, TheOnlyFileMatchesTheOnlyPath) {
    const replay::FileMap map(logOf({"C:\\clip.avi", "C:\\clip.avi"}), Files{"renamed.avi"});
    EXPECT_EQ(chosen(map, "C:\\clip.avi"), "renamed.avi");
    EXPECT_EQ(map.entries().front().calls, 2u);
}

TEST(FileMap, TheOnlyFileNeedsTheNameOfOneOfTwoPaths) {
    const replay::FileMap map(logOf({"one.avi", "two.avi"}), Files{"other.avi"});
    EXPECT_EQ(chosen(map, "one.avi"), "none");
    EXPECT_EQ(chosen(map, "two.avi"), "none");
    EXPECT_EQ(map.unused(), Files{"other.avi"});
}

TEST(FileMap, OddPathsDoNotFail) {
    for (const char* path : {"", "/", "\\\\", "C:", "//a//", "\xff\xfe"}) {
        const replay::FileMap map(logOf({path, "other"}), Files{"/", "a", ""});
        EXPECT_EQ(map.entries().size(), 2u) << path;
    }
}

}  // namespace
