// Files that are write-protected, in use by another program, or open more than once.
#include "files/OtherProgram.h"
#include "files/SampleClip.h"

#include "support/TempFolder.h"

#include <fstream>
#include <iterator>

namespace {

class SharedFile : public ::testing::Test {
protected:
    void SetUp() override { writeSampleFile(m_path, m_options); }

    TempFolder m_folder;
    std::filesystem::path m_path = m_folder.folder() / "clip.avi";
    aviwriter::SampleOptions m_options = smallSample();
};

std::string contents(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// On POSIX root may write to such a file anyway, so there this shows less; the tests with other readers below show that
// the importer does not ask for write access.
TEST_F(SharedFile, AWriteProtectedFileImports) {
    using std::filesystem::perms;
    constexpr perms kWriting = perms::owner_write | perms::group_write | perms::others_write;
    std::filesystem::permissions(m_path, kWriting, std::filesystem::perm_options::remove);
    EXPECT_TRUE(imports(m_path, m_options));
    std::filesystem::permissions(m_path, kWriting, std::filesystem::perm_options::add);
}

TEST_F(SharedFile, ImportingLeavesTheFileUnchanged) {
    const std::string before = contents(m_path);
    EXPECT_TRUE(imports(m_path, m_options));
    EXPECT_EQ(contents(m_path), before);
}

TEST_F(SharedFile, AFileThatAnotherProgramReadsImports) {
    const OtherReader other(m_path);
    ASSERT_TRUE(other.isOpen());
    EXPECT_TRUE(imports(m_path, m_options));
}

TEST_F(SharedFile, AnotherProgramMayReadAnImportedFile) {
    LoadedImporter importer;
    hostkit::FrameClip clip(importer.session(), m_path);
    const OtherReader other(m_path);
    EXPECT_TRUE(other.isOpen());
    EXPECT_TRUE(showsTestPicture(clip, m_options));
}

TEST_F(SharedFile, AFileThatAnotherProgramWritesIsABadFile) {
    const OtherWriter other(m_path);
    ASSERT_TRUE(other.isOpen());
    LoadedImporter importer;
    hostkit::ClipSession clip(importer.session(), m_path);
    EXPECT_EQ(clip.open().result, imBadFile);
}

TEST_F(SharedFile, AnotherProgramCannotWriteToAnImportedFile) {
    LoadedImporter importer;
    const hostkit::FrameClip clip(importer.session(), m_path);
    EXPECT_FALSE(OtherWriter(m_path).isOpen());
}

TEST_F(SharedFile, AQuietFileIsReleasedAndCanBeReopened) {
    LoadedImporter importer;
    hostkit::FrameClip clip(importer.session(), m_path);
    ASSERT_EQ(clip.session().quiet(), imNoErr);
    EXPECT_TRUE(OtherWriter(m_path).isOpen());
    ASSERT_EQ(clip.session().open().result, imNoErr);
    EXPECT_TRUE(showsTestPicture(clip, m_options));
}

TEST_F(SharedFile, AClosedFileCanBeDeleted) {
    LoadedImporter importer;
    {
        hostkit::FrameClip clip(importer.session(), m_path);
        EXPECT_TRUE(showsFrame(clip, m_options, 3));
    }
    EXPECT_TRUE(std::filesystem::remove(m_path));
}

TEST_F(SharedFile, TwoOpenFilesDoNotMixTheirPictures) {
    aviwriter::SampleOptions otherOptions = m_options;
    otherOptions.type = 105;
    otherOptions.width = 50;
    otherOptions.height = 22;
    const std::filesystem::path otherPath = m_folder.folder() / "other.avi";
    writeSampleFile(otherPath, otherOptions);

    LoadedImporter importer;
    hostkit::FrameClip clip(importer.session(), m_path);
    hostkit::FrameClip other(importer.session(), otherPath);
    for (const std::uint32_t number : {0U, 7U, 3U, 3U, 4U}) {
        EXPECT_TRUE(showsFrame(clip, m_options, number)) << number;
        EXPECT_TRUE(showsFrame(other, otherOptions, 7 - number)) << number;
    }
}

TEST_F(SharedFile, OneFileOpenTwiceDeliversFramesToEach) {
    LoadedImporter importer;
    hostkit::FrameClip first(importer.session(), m_path);
    hostkit::FrameClip second(importer.session(), m_path);
    for (const std::uint32_t number : {0U, 7U, 3U, 4U}) {
        EXPECT_TRUE(showsFrame(first, m_options, number)) << number;
        EXPECT_TRUE(showsFrame(second, m_options, 7 - number)) << number;
    }
}

}  // namespace
