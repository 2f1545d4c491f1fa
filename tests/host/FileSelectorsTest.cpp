// The lifetime of a file's object, the host's private data: from the first open to the close.
#include "HostFixture.h"

#include "sdk/SdkAsyncImporter.h"

#include <algorithm>

namespace {

constexpr char kBorn[] = "QuorvaneImporter::QuorvaneImporter()";
constexpr char kGone[] = "QuorvaneImporter::~QuorvaneImporter()";
constexpr char kAsyncBorn[] = "QuorvaneAsyncImporter::QuorvaneAsyncImporter()";
constexpr char kAsyncGone[] = "QuorvaneAsyncImporter::~QuorvaneAsyncImporter()";

class FileObjects : public testing::Test {
protected:
    FileObjects() { m_run.session().init(); }

    std::ptrdiff_t logged(const char* line) {
        const Lines messages = m_run.messages();
        return std::count(messages.begin(), messages.end(), line);
    }

    hostkit::Answer<imAsyncImporterCreationRec> createAsyncImporter() {
        hostkit::HostRecord<imAsyncImporterCreationRec> record;
        record->inPrivateData = m_clip.privateData();
        return m_run.session().exchangeFirst(imCreateAsyncImporter, std::move(record));
    }

    ClipFile m_file;
    PluginRun m_run;
    hostkit::ClipSession m_clip{m_run.session(), m_file.path()};
};

TEST_F(FileObjects, AnOpenStoresTheNewObject) {
    const auto answer = m_clip.open();
    EXPECT_EQ(answer.result, imNoErr);
    EXPECT_NE(hostkit::valueOf(answer->privatedata), nullptr);
    EXPECT_EQ(logged(kBorn), 1);
    EXPECT_EQ(logged(kGone), 0);
}

TEST_F(FileObjects, AFailedOpenDestroysTheNewObjectAndStoresNothing) {
    hostkit::ClipSession missing(m_run.session(), m_file.path().parent_path() / "missing.avi");
    const auto answer = missing.open();
    EXPECT_EQ(answer.result, imBadFile);
    EXPECT_EQ(hostkit::valueOf(answer->privatedata), nullptr);
    EXPECT_EQ(answer.written, std::vector<hostkit::ByteRange>{});
    EXPECT_EQ(logged(kBorn), 1);
    EXPECT_EQ(logged(kGone), 1);
    EXPECT_EQ(m_run.messages().back(), "    [imBadFile] (2)");
}

TEST_F(FileObjects, AnOpenWithAnObjectCreatesNoSecondOne) {
    m_clip.open();
    void* const object = m_clip.privateData();
    EXPECT_EQ(m_clip.open().result, imNoErr);
    EXPECT_EQ(m_clip.open().result, imNoErr);
    EXPECT_EQ(m_clip.privateData(), object);
    EXPECT_EQ(logged(kBorn), 1);
}

TEST_F(FileObjects, QuietKeepsTheObjectAndTheNextOpenUsesIt) {
    m_clip.open();
    void* const object = m_clip.privateData();
    EXPECT_EQ(m_clip.quiet(), imNoErr);
    EXPECT_EQ(logged(kGone), 0);
    EXPECT_EQ(m_clip.open().result, imNoErr);
    EXPECT_EQ(m_clip.privateData(), object);
    EXPECT_EQ(m_clip.info(0).result, imNoErr);
    EXPECT_EQ(logged(kBorn), 1);
}

TEST_F(FileObjects, AFailedReopenKeepsTheObject) {
    m_clip.open();
    void* const object = m_clip.privateData();
    m_clip.quiet();
    std::filesystem::rename(m_file.path(), m_file.path().parent_path() / "elsewhere.avi");
    EXPECT_EQ(m_clip.open().result, imBadFile);
    EXPECT_EQ(m_clip.privateData(), object);
    EXPECT_EQ(logged(kGone), 0);
    std::filesystem::rename(m_file.path().parent_path() / "elsewhere.avi", m_file.path());
    EXPECT_EQ(m_clip.open().result, imNoErr);
    EXPECT_EQ(logged(kBorn), 1);
}

TEST_F(FileObjects, CloseDestroysTheObject) {
    m_clip.open();
    EXPECT_EQ(m_clip.close(), imNoErr);
    EXPECT_EQ(logged(kGone), 1);
    EXPECT_EQ(m_clip.fileRef(), imInvalidHandleValue());
}

TEST_F(FileObjects, CloseAfterQuietDestroysTheObject) {
    m_clip.open();
    m_clip.quiet();
    EXPECT_EQ(m_clip.close(), imNoErr);
    EXPECT_EQ(logged(kGone), 1);
}

TEST_F(FileObjects, TwoFilesHaveTwoObjects) {
    hostkit::ClipSession other(m_run.session(), m_file.path());
    m_clip.open();
    other.open();
    EXPECT_NE(m_clip.privateData(), other.privateData());
    EXPECT_EQ(logged(kBorn), 2);
}

TEST_F(FileObjects, ObjectsOutliveAShutdownUntilTheyAreClosed) {
    m_clip.open();
    m_clip.info(0);
    EXPECT_EQ(m_run.session().shutdown(), imNoErr);
    EXPECT_EQ(m_clip.close(), imNoErr);
    EXPECT_EQ(m_run.host().problems(), Lines{});
    expectCodecAtRest();
}

TEST_F(FileObjects, AnAsyncImporterIsWrittenAfterTheHostsFields) {
    m_clip.open();
    m_clip.info(0);
    const auto answer = createAsyncImporter();
    EXPECT_EQ(answer.result, imNoErr);
    ASSERT_NE(answer->outAsyncEntry, nullptr);
    ASSERT_NE(answer->outAsyncPrivateData, nullptr);
    EXPECT_NE(answer->outAsyncPrivateData, m_clip.privateData());
    for (const hostkit::ByteRange& range : answer.written) {
        EXPECT_GE(range.offset, 16u);
    }
    EXPECT_EQ(m_run.messages().back(), "    [imNoErr] (0)");
    EXPECT_EQ(logged(kAsyncBorn), 1);
    EXPECT_EQ(answer->outAsyncEntry(aiClose, answer->outAsyncPrivateData), aiNoError);
    EXPECT_EQ(logged(kAsyncGone), 1);
}

TEST_F(FileObjects, AnAsyncImporterOutlivesItsFilesObject) {
    m_clip.open();
    m_clip.info(0);
    const auto answer = createAsyncImporter();
    ASSERT_EQ(answer.result, imNoErr);
    EXPECT_EQ(m_clip.close(), imNoErr);
    EXPECT_EQ(answer->outAsyncEntry(aiClose, answer->outAsyncPrivateData), aiNoError);
    m_run.session().shutdown();
    EXPECT_EQ(m_run.host().problems(), Lines{});
    expectCodecAtRest();
}

TEST_F(FileObjects, AFailedAsyncImporterIsDestroyedAndReported) {
    m_clip.open();
    m_clip.info(0);
    m_clip.quiet();
    std::filesystem::remove(m_file.path());
    const auto answer = createAsyncImporter();
    EXPECT_EQ(answer.result, imBadFile);
    EXPECT_EQ(answer.written, std::vector<hostkit::ByteRange>{});
    EXPECT_EQ(logged(kAsyncBorn), 1);
    EXPECT_EQ(logged(kAsyncGone), 1);
    EXPECT_EQ(m_run.messages().back(), "    [imBadFile] (2)");
}

TEST_F(FileObjects, AFailedAsyncImporterKeepsItsFilesObject) {
    m_clip.open();
    m_clip.info(0);
    m_clip.quiet();
    const std::filesystem::path aside = m_file.path().parent_path() / "elsewhere.avi";
    std::filesystem::rename(m_file.path(), aside);
    EXPECT_EQ(createAsyncImporter().result, imBadFile);
    std::filesystem::rename(aside, m_file.path());
    EXPECT_EQ(m_clip.open().result, imNoErr);
    EXPECT_EQ(m_clip.frame(0, smallFrame()).result, imNoErr);
}

}  // namespace
