// The failing disk, seen through the real plug-in.
#include "hostkit/sessions/ClipSession.h"
#include "hostkit/watch/DiskFaults.h"
#include "importhost/validate/framework/Clip.h"
#include "importhost/validate/framework/WorkFolder.h"

#include <gtest/gtest.h>

namespace {

using hostkit::DiskCall;
using hostkit::DiskFaults;

class FailingDisk : public testing::Test {
protected:
    void SetUp() override {
        importhost::validate::writeSamples(m_folder.path(), 1);
        m_clip.emplace(m_session, m_folder.path() / "plain.avi");
        m_session.start();
    }
    void TearDown() override {
        m_clip.reset();
        m_session.shutdown();
    }

    void openAndDescribe() {
        ASSERT_EQ(m_clip->open().result, imNoErr);
        ASSERT_EQ(m_clip->info(0).result, imNoErr);
    }
    csSDK_int32 firstFrame() {
        return m_clip->frame(0, {{0, 0, static_cast<csSDK_uint32>(m_clip->pixelFormats().front())}}).result;
    }

    importhost::validate::WorkFolder m_folder;
    hostkit::Host m_host;
    hostkit::PluginLibrary m_plugin{hostkit::PluginLibrary::programFolder() /
                                    hostkit::PluginLibrary::usualFileName()};
    hostkit::ImporterSession m_session{m_host, m_plugin.entry()};
    std::optional<hostkit::ClipSession> m_clip;
};

TEST_F(FailingDisk, SeesEveryKindOfCall) {
    const DiskFaults disk(m_plugin);
    for (const DiskCall call : {DiskCall::Open, DiskCall::Seek, DiskCall::Read, DiskCall::Size}) {
        EXPECT_TRUE(disk.covers(call)) << hostkit::diskCallName(call);
    }
}

TEST_F(FailingDisk, CountsTheCallsOfAFrame) {
    openAndDescribe();
    DiskFaults disk(m_plugin);
    EXPECT_EQ(firstFrame(), imNoErr);
    EXPECT_EQ(disk.calls(DiskCall::Read), 1);
    EXPECT_EQ(disk.calls(DiskCall::Seek), 1);
    EXPECT_EQ(disk.calls(DiskCall::Open), 0);
    EXPECT_EQ(disk.disturbed(), 0);
}

TEST_F(FailingDisk, CountsTheBytesRead) {
    openAndDescribe();
    DiskFaults disk(m_plugin);
    EXPECT_EQ(firstFrame(), imNoErr);
    const std::uint64_t frameBytes = disk.bytesRead();
    EXPECT_GT(frameBytes, 1U);
    disk.halveReads();
    EXPECT_EQ(firstFrame(), imFileReadFailed);
    EXPECT_EQ(disk.bytesRead(), frameBytes + frameBytes / 2);
    disk.clear();
    EXPECT_EQ(disk.bytesRead(), 0U);
}

TEST_F(FailingDisk, AFailedReadCountsNoBytes) {
    openAndDescribe();
    DiskFaults disk(m_plugin);
    disk.fail(DiskCall::Read);
    EXPECT_EQ(firstFrame(), imFileReadFailed);
    EXPECT_EQ(disk.bytesRead(), 0U);
}

TEST_F(FailingDisk, FailsOnlyTheSecondRead) {
    openAndDescribe();
    DiskFaults disk(m_plugin);
    disk.fail(DiskCall::Read, 2);
    EXPECT_EQ(firstFrame(), imNoErr);
    EXPECT_EQ(firstFrame(), imFileReadFailed);
    EXPECT_EQ(firstFrame(), imNoErr);
    EXPECT_EQ(disk.disturbed(), 1);
}

TEST_F(FailingDisk, FailsForEverUntilCleared) {
    openAndDescribe();
    DiskFaults disk(m_plugin);
    disk.fail(DiskCall::Seek, 1, DiskFaults::kForEver);
    EXPECT_EQ(firstFrame(), imFileReadFailed);
    EXPECT_EQ(firstFrame(), imFileReadFailed);
    disk.clear();
    EXPECT_EQ(firstFrame(), imNoErr);
}

TEST_F(FailingDisk, HalvesARead) {
    openAndDescribe();
    DiskFaults disk(m_plugin);
    disk.halveReads();
    EXPECT_EQ(firstFrame(), imFileReadFailed);
    EXPECT_EQ(disk.disturbed(), 1);
}

TEST_F(FailingDisk, FilesCanEndEarly) {
    openAndDescribe();
    DiskFaults disk(m_plugin);
    disk.endFilesAt(100);
    EXPECT_EQ(firstFrame(), imFileReadFailed);
    disk.endFilesAt(std::int64_t{1} << 40);
    EXPECT_EQ(firstFrame(), imNoErr);
}

TEST_F(FailingDisk, RefusesToOpen) {
    DiskFaults disk(m_plugin);
    disk.fail(DiskCall::Open);
    EXPECT_EQ(m_clip->open().result, imBadFile);
    EXPECT_EQ(m_clip->open().result, imNoErr);
}

TEST_F(FailingDisk, EndsWithItsObject) {
    openAndDescribe();
    {
        DiskFaults disk(m_plugin);
        disk.fail(DiskCall::Read, 1, DiskFaults::kForEver);
    }
    EXPECT_EQ(firstFrame(), imNoErr);
}

TEST_F(FailingDisk, ASecondOneIsRefused) {
    const DiskFaults disk(m_plugin);
    EXPECT_THROW(DiskFaults another(m_plugin), std::logic_error);
}

TEST_F(FailingDisk, AnImpossibleFailureIsRefused) {
    DiskFaults disk(m_plugin);
    EXPECT_THROW(disk.fail(DiskCall::Read, 0), std::invalid_argument);
    EXPECT_THROW(disk.halveReads(1, 0), std::invalid_argument);
}

}  // namespace
