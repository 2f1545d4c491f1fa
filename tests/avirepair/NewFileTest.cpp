// The new file appears when it is complete, and nothing else is ever touched.
#include "avirepair/NewFile.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace {

namespace fs = std::filesystem;
using avirepair::NewFile;

std::string contentOf(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

class NewFileTest : public testing::Test {
protected:
    NewFileTest() { std::ofstream(m_input, std::ios::binary) << "input"; }

    // What the constructor refuses, or nothing.
    std::string refusalOf(const fs::path& path, bool overwrites = false, std::uint64_t bytes = 10) const {
        try {
            NewFile file(path, {m_input}, overwrites, bytes);
            return "";
        } catch (const std::runtime_error& error) {
            return error.what();
        }
    }

    void write(const fs::path& path, bool overwrites) const {
        NewFile file(path, {m_input}, overwrites, 10);
        file.sink().write(0, {'n', 'e', 'w'});
        file.finish();
    }

    TempFolder m_folder;
    fs::path m_input = m_folder.folder() / "input.avi";
    fs::path m_output = m_folder.folder() / "output.avi";
};

constexpr const char* kIsInput = "the output is the input: it is never overwritten";

TEST_F(NewFileTest, AppearsWhenItIsFinished) {
    {
        NewFile file(m_output, {m_input}, false, 10);
        file.sink().write(0, {'n', 'e', 'w'});
        EXPECT_FALSE(fs::exists(m_output));
        file.finish();
    }
    EXPECT_EQ(contentOf(m_output), "new");
    EXPECT_FALSE(fs::exists(m_folder.folder() / "output.avi.part"));
}

TEST_F(NewFileTest, LeavesNothingWhenItIsNotFinished) {
    { NewFile file(m_output, {m_input}, false, 10); }
    EXPECT_FALSE(fs::exists(m_output));
    EXPECT_FALSE(fs::exists(m_folder.folder() / "output.avi.part"));
}

TEST_F(NewFileTest, IsNeverTheInput) {
    EXPECT_EQ(refusalOf(m_input, true), kIsInput);
    EXPECT_EQ(refusalOf(m_folder.folder() / "." / "input.avi", true), kIsInput);
}

TEST_F(NewFileTest, IsNeverAHardLinkToTheInput) {
    std::error_code error;
    fs::create_hard_link(m_input, m_output, error);
    if (error) {
        GTEST_SKIP() << "no hard links here";
    }
    EXPECT_EQ(refusalOf(m_output, true), kIsInput);
}

TEST_F(NewFileTest, IsNeverASymbolicLinkToTheInput) {
    std::error_code error;
    fs::create_symlink(m_input, m_output, error);
    if (error) {
        GTEST_SKIP() << "no symbolic links here";
    }
    EXPECT_EQ(refusalOf(m_output, true), kIsInput);
}

TEST_F(NewFileTest, ReplacesAnotherOnlyByForce) {
    std::ofstream(m_output) << "old";
    EXPECT_EQ(refusalOf(m_output), "the output exists; --force overwrites it");
    EXPECT_EQ(contentOf(m_output), "old");
    write(m_output, true);
    EXPECT_EQ(contentOf(m_output), "new");
}

TEST_F(NewFileTest, NeedsRoomOnTheDisk) {
    const std::string refusal = refusalOf(m_output, false, std::uint64_t{1} << 60);
    EXPECT_NE(refusal.find("MiB left, and 1099511627777 MiB are needed"), std::string::npos) << refusal;
    EXPECT_FALSE(fs::exists(m_folder.folder() / "output.avi.part"));
}

TEST_F(NewFileTest, IsNoFolder) { EXPECT_EQ(refusalOf(m_folder.folder(), true), "the output is a folder"); }

TEST_F(NewFileTest, NeedsAFolderToBeIn) {
    EXPECT_EQ(refusalOf(m_folder.folder() / "missing" / "output.avi"), "cannot create the file");
}

}  // namespace
