// Files beyond 4 GiB, written with a hole in the middle. The hole takes no space if the file system supports sparse
// files; a real Windows fills it with zeros, and there the tests need that space.
#include "files/SampleClip.h"

#include "support/TempFolder.h"

namespace {

constexpr std::uint64_t kGibibyte = std::uint64_t{1} << 30;
constexpr std::uint64_t kFourGibibytes = 4 * kGibibyte;

// Position of the first frame of the second segment if the hole has `hole` bytes.
std::uint64_t positionAfterHole(aviwriter::SampleOptions options, std::uint64_t hole) {
    constexpr std::uint64_t kSmallestHole = 8;
    options.hole = kSmallestHole;
    const aviwriter::Bytes file = aviwriter::sampleBytes(options);
    constexpr std::uint64_t kListType = 4;
    constexpr std::uint64_t kChunkHeader = 8;
    return aviwriter::positionOf(file, "movi", 1) + kListType + kChunkHeader - kSmallestHole + hole;
}

class BigFile : public ::testing::Test {
protected:
    std::filesystem::path written(const aviwriter::SampleOptions& options) {
        const std::filesystem::path path = m_folder.folder() / "big.avi";
        writeSampleFile(path, options);
        return path;
    }

    TempFolder m_folder;
    aviwriter::SampleOptions m_options = smallSample();
};

TEST_F(BigFile, FramesOnBothSidesOfFourGibibytesImport) {
    m_options.layout.index = aviwriter::IndexKind::openDml;
    m_options.hole = kFourGibibytes;
    const std::filesystem::path path = written(m_options);
    ASSERT_GT(positionAfterHole(m_options, m_options.hole), kFourGibibytes);
    ASSERT_GT(std::filesystem::file_size(path), kFourGibibytes);
    EXPECT_TRUE(imports(path, m_options));
}

TEST_F(BigFile, FramesBeyondNineGibibytesImport) {
    m_options.hole = 9 * kGibibyte;
    EXPECT_TRUE(imports(written(m_options), m_options));
}

TEST_F(BigFile, AFrameAcrossTheFourGibibyteMarkImports) {
    const std::uint64_t begin = kFourGibibytes - 6;
    m_options.hole = begin - positionAfterHole(m_options, 0);
    ASSERT_EQ(positionAfterHole(m_options, m_options.hole), begin);
    EXPECT_TRUE(imports(written(m_options), m_options));
}

TEST_F(BigFile, FramesBeyondTwoGibibytesOfOneSegmentImport) {
    m_options.layout.index = aviwriter::IndexKind::idx1;
    m_options.hole = 2 * kGibibyte;
    EXPECT_TRUE(imports(written(m_options), m_options));
}

TEST_F(BigFile, SoundOnBothSidesOfFourGibibytesIsRead) {
    m_options.audio = {aviwriter::SampleAudio{}};
    const std::filesystem::path small = m_folder.folder() / "small.avi";
    writeSampleFile(small, m_options);
    m_options.hole = kFourGibibytes;
    const std::filesystem::path big = written(m_options);

    LoadedImporter importer;
    hostkit::FrameClip smallClip(importer.session(), small);
    hostkit::FrameClip bigClip(importer.session(), big);
    const hostkit::AudioAnswer wanted = smallClip.session().audio(0, 8 * 1920, 2);
    const hostkit::AudioAnswer found = bigClip.session().audio(0, 8 * 1920, 2);
    ASSERT_EQ(wanted.result, imNoErr);
    ASSERT_GT(wanted.channels.at(1).at(6 * 1920 + 17), 0.01f);      // not silence
    EXPECT_EQ(found.channels, wanted.channels);
}

}  // namespace
