// Disks that fail while a clip is open, tested through the exported entry: a share that disappears and returns, reads
// that are short or fail in the middle of a picture, truncated and replaced files. Results and lines of the log are
// fixed, and the next request tries again.
#include "damage/catalogue/FilesOnDisk.h"
#include "damage/catalogue/Sighting.h"

#include "hostkit/sessions/AsyncSession.h"
#include "hostkit/watch/DiskFaults.h"
#include "log/PluginRun.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace damage {

namespace {

using hostkit::ClipSession;
using hostkit::DiskCall;
using hostkit::DiskFaults;
using Lines = std::vector<std::string>;

class BrokenDisk : public testing::Test {
protected:
    BrokenDisk()
        : m_file(writeBytes(m_folder.folder() / "clip.avi", honestClip())), m_library(pluginPath()) {
        m_plugin.session().start();
        m_clip = std::make_unique<ClipSession>(m_plugin.session(), m_file);
        EXPECT_EQ(m_clip->open().result, imNoErr);
        EXPECT_EQ(m_clip->info(0).result, imNoErr);
        m_plugin.newMessages();
    }

    ~BrokenDisk() override {
        m_clip.reset();
        m_plugin.session().shutdown();
        EXPECT_EQ(m_plugin.host().problems(), Lines{});
    }

    csSDK_int32 picture(int number) {
        const auto answer = m_clip->frame(number * kTicksPerPicture, {{0, 0, PrPixelFormat_VUYX_4444_8u}});
        if (answer.result == imNoErr) {
            EXPECT_EQ(answer.frame.view()->pixels[0], kFirstPictureValue + number);
        }
        return answer.result;
    }

    // Number of samples in the first tenth of a second that are the clip's; the rest must be silence.
    std::size_t soundHeard() {
        const auto answer = m_clip->audio(0, 4800, 2);
        EXPECT_EQ(answer.result, imNoErr);
        std::size_t heard = 0;
        for (std::size_t i = 0; i < 4800; ++i) {
            const float wanted = static_cast<float>(soundSample(static_cast<std::uint32_t>(i), 0)) / 32768.0f;
            const float found = answer.channels[0][i];
            EXPECT_TRUE(found == 0.0f || (found == wanted && heard == i)) << "sample " << i;
            heard += found != 0.0f ? 1 : 0;
        }
        return heard;
    }

    Lines newDamageLines() { return damageLines(m_plugin.newMessages()); }

    // Truncates the file as another program would.
    void cutFile(std::size_t bytes) { std::filesystem::resize_file(m_file, bytes); }

    static std::size_t pictureAt(std::size_t number) {
        return aviwriter::positionOf(honestClip(), "00dc", number) + 8;
    }
    static std::string at(std::size_t position) { return std::to_string(position); }

    TempFolder m_folder;
    std::filesystem::path m_file;
    PluginRun m_plugin;
    hostkit::PluginLibrary m_library;   // the same library again, for its handle
    std::unique_ptr<ClipSession> m_clip;
};

TEST_F(BrokenDisk, AMissingShareLosesOnlyThePicturesMeanwhile) {
    DiskFaults disk(m_library);
    EXPECT_EQ(picture(0), imNoErr);
    disk.fail(DiskCall::Read, 1, DiskFaults::kForEver);
    EXPECT_EQ(picture(1), imFileReadFailed);
    EXPECT_EQ(picture(2), imFileReadFailed);
    EXPECT_EQ(soundHeard(), 0u);
    EXPECT_EQ(newDamageLines(), (Lines{"Failed to read frame from AVI: Read error: size: 64, read: 0",
                                        "importAudio: read error: 7680, read: 0"}));
    disk.clear();
    EXPECT_EQ(picture(1), imNoErr);
    EXPECT_EQ(picture(2), imNoErr);
    EXPECT_EQ(soundHeard(), 4800u);
    EXPECT_EQ(newDamageLines(), Lines{});
}

TEST_F(BrokenDisk, AFailedSeekIsLoggedWithItsPosition) {
    DiskFaults disk(m_library);
    disk.fail(DiskCall::Seek, 1, DiskFaults::kForEver);
    EXPECT_EQ(picture(1), imFileReadFailed);
    EXPECT_EQ(newDamageLines(), Lines{"Failed to read frame from AVI: Seek error: pos: " + at(pictureAt(1))});
    EXPECT_EQ(soundHeard(), 0u);
    disk.clear();
    EXPECT_EQ(picture(1), imNoErr);
    EXPECT_EQ(soundHeard(), 4800u);
}

TEST_F(BrokenDisk, DescribingOnAMissingShareIsABadFileUntilItReturns) {
    DiskFaults disk(m_library);
    disk.fail(DiskCall::Read, 1, DiskFaults::kForEver);
    EXPECT_EQ(m_clip->info(0).result, imBadFile);
    EXPECT_EQ(newDamageLines(), Lines{"Failed to parse avi: riff structure is corrupt or invalid"});
    disk.clear();
    EXPECT_EQ(m_clip->info(0).result, imNoErr);
    EXPECT_EQ(picture(3), imNoErr);
}

TEST_F(BrokenDisk, ReopeningOnAMissingShareIsABadFileUntilItReturns) {
    DiskFaults disk(m_library);
    m_clip->quiet();
    disk.fail(DiskCall::Open, 1, 2);
    EXPECT_EQ(m_clip->open().result, imBadFile);
    EXPECT_EQ(picture(3), imFileReadFailed);
    EXPECT_EQ(m_clip->open().result, imBadFile);
    EXPECT_EQ(m_clip->open().result, imNoErr);
    EXPECT_EQ(picture(3), imNoErr);
}

TEST_F(BrokenDisk, AShortReadLosesOnePicture) {
    DiskFaults disk(m_library);
    disk.halveReads();
    EXPECT_EQ(picture(4), imFileReadFailed);
    EXPECT_EQ(newDamageLines(), Lines{"Failed to read frame from AVI: Read error: size: 64, read: 32"});
    EXPECT_EQ(picture(4), imNoErr);
}

TEST_F(BrokenDisk, AShortReadSilencesTheRestOfOneRequest) {
    DiskFaults disk(m_library);
    disk.halveReads(2);
    EXPECT_EQ(soundHeard(), 1920u + 960u);
    EXPECT_EQ(newDamageLines(), Lines{"importAudio: read error: 7680, read: 3840"});
    EXPECT_EQ(soundHeard(), 4800u);
}

TEST_F(BrokenDisk, AFileEndingWithinAPictureKeepsThePicturesBefore) {
    DiskFaults disk(m_library);
    disk.endFilesAt(static_cast<std::int64_t>(pictureAt(5)) + 10);
    EXPECT_EQ(picture(4), imNoErr);
    EXPECT_EQ(picture(5), imFileReadFailed);
    EXPECT_EQ(picture(6), imFileReadFailed);
    EXPECT_EQ(newDamageLines(), (Lines{"Failed to read frame from AVI: Read error: size: 64, read: 10",
                                        "Failed to read frame from AVI: Read error: size: 64, read: 0"}));
    disk.clear();
    EXPECT_EQ(picture(5), imNoErr);
}

TEST_F(BrokenDisk, AHalfReadPictureIsNeverMixedWithAnEarlierOne) {
    DiskFaults disk(m_library);
    EXPECT_EQ(picture(7), imNoErr);     // the next request gets its buffer, with its bytes
    disk.halveReads();
    EXPECT_EQ(picture(8), imFileReadFailed);
    EXPECT_EQ(m_plugin.host().frames().alive(), 0);
}

TEST_F(BrokenDisk, AsynchronousPicturesFailAndRecoverToo) {
    DiskFaults disk(m_library);
    const std::vector<imFrameFormat> formats = {{0, 0, PrPixelFormat_VUYX_4444_8u}};
    hostkit::AsyncSession async(m_plugin.session(), *m_clip);
    ASSERT_EQ(async.create().result, imNoErr);
    disk.fail(DiskCall::Read, 1, DiskFaults::kForEver);
    EXPECT_EQ(async.get(2 * kTicksPerPicture, formats).result, aiUnknownError);
    disk.clear();
    const auto answer = async.get(2 * kTicksPerPicture, formats);
    ASSERT_EQ(answer.result, aiNoError);
    EXPECT_EQ(answer.frame.view()->pixels[0], kFirstPictureValue + 2);
}

TEST_F(BrokenDisk, AReplacedFileIsNoticedByTheNextDescription) {
    m_clip->quiet();
    writeBytes(m_file, Bytes(honestClip().size(), 0x20));
    ASSERT_EQ(m_clip->open().result, imNoErr);
    EXPECT_EQ(picture(3), imBadCompression);
    EXPECT_EQ(m_clip->info(0).result, imBadFile);
    EXPECT_EQ(newDamageLines(),
              (Lines{"Decompress failed: Quorvane error (-2147466494): the frame is not one of this codec",
                     "Failed to parse avi: AVI chunk missing"}));
    m_clip->quiet();
    writeBytes(m_file, honestClip());
    ASSERT_EQ(m_clip->open().result, imNoErr);
    EXPECT_EQ(m_clip->info(0).result, imNoErr);
    EXPECT_EQ(picture(3), imNoErr);
}

TEST_F(BrokenDisk, AFileCutWhileQuietKeepsThePicturesBefore) {
    m_clip->quiet();
    cutFile(pictureAt(6));
    ASSERT_EQ(m_clip->open().result, imNoErr);
    EXPECT_EQ(picture(5), imNoErr);
    EXPECT_EQ(picture(6), imFileReadFailed);
    EXPECT_EQ(m_clip->info(0).result, imNoErr);   // the index was cut off: a clip without pictures
    EXPECT_EQ(picture(5), imFrameNotFound);
}

// --- The picture size above which the file's size is checked first --------------------------------------------------

class LargePicture : public BrokenDisk {
protected:
    // Number of size queries for one picture of `bytes` bytes. The file has the bytes, but they are not a picture.
    int sizeQueriesFor(std::uint32_t bytes) {
        std::vector<aviwriter::Idx1Entry> entries = mediaEntries();
        entries[0].length = bytes;
        const Bytes file = aviwriter::join({clipIndexedBy(entries), aviwriter::filled(std::size_t{5} << 20)});
        const auto path = writeBytes(m_folder.folder() / "large.avi", file);
        ClipSession clip(m_plugin.session(), path);
        EXPECT_EQ(clip.open().result, imNoErr);
        EXPECT_EQ(clip.info(0).result, imNoErr);
        DiskFaults disk(m_library);
        EXPECT_EQ(clip.frame(0, {{0, 0, PrPixelFormat_VUYX_4444_8u}}).result, imBadCompression);
        EXPECT_EQ(disk.calls(DiskCall::Read), 1);
        return disk.calls(DiskCall::Size);
    }
};

TEST_F(LargePicture, OfFourMebibytesIsReadWithoutASizeQuery) { EXPECT_EQ(sizeQueriesFor(4u << 20), 0); }

TEST_F(LargePicture, OfOneByteMoreIsReadIfTheFileIsLargeEnough) {
    EXPECT_EQ(sizeQueriesFor((4u << 20) + 1), 1);
}

TEST_F(LargePicture, LargerThanTheFileIsNotRead) {
    std::vector<aviwriter::Idx1Entry> entries = mediaEntries();
    entries[0].length = (4u << 20) + 1;
    ClipSession clip(m_plugin.session(), writeBytes(m_folder.folder() / "large.avi", clipIndexedBy(entries)));
    ASSERT_EQ(clip.open().result, imNoErr);
    ASSERT_EQ(clip.info(0).result, imNoErr);
    DiskFaults disk(m_library);
    EXPECT_EQ(clip.frame(0, {{0, 0, PrPixelFormat_VUYX_4444_8u}}).result, imFileReadFailed);
    EXPECT_EQ(disk.calls(DiskCall::Read), 0);
}

// --- The largest frame that a picture of 8 x 4 pixels can have -----------------------------------------------------

constexpr std::uint32_t kLargestFrame = (4u << 20) + 32 * 8 * 4;

TEST_F(LargePicture, OfTheLargestSizeForItsPixelsIsRead) { EXPECT_EQ(sizeQueriesFor(kLargestFrame), 1); }

class TooLargePicture : public BrokenDisk {
protected:
    // Writes the clip with pictures of `bytes` bytes, all within the file, mostly in a hole.
    std::filesystem::path fileWithPicturesOf(std::uint32_t bytes) {
        std::vector<aviwriter::Idx1Entry> entries = mediaEntries();
        for (aviwriter::Idx1Entry& entry : entries) {
            entry.length = bytes;
        }
        const auto path = writeBytes(m_folder.folder() / "too-large.avi", clipIndexedBy(entries));
        std::filesystem::resize_file(path, (std::uint64_t{1} << 20) + bytes);
        return path;
    }
};

TEST_F(TooLargePicture, ByOneByteIsNotReadEvenIfTheFileHasIt) {
    ClipSession clip(m_plugin.session(), fileWithPicturesOf(kLargestFrame + 1));
    ASSERT_EQ(clip.open().result, imNoErr);
    ASSERT_EQ(clip.info(0).result, imNoErr);
    DiskFaults disk(m_library);
    EXPECT_EQ(clip.frame(0, {{0, 0, PrPixelFormat_VUYX_4444_8u}}).result, imFileReadFailed);
    EXPECT_EQ(disk.calls(DiskCall::Read), 0);
    EXPECT_EQ(newDamageLines(), Lines{"Failed to read frame from AVI: Frame too large: size: 4195329"});
}

TEST_F(TooLargePicture, ByGigabytesIsNotReadForAnyAnnouncement) {
    ClipSession clip(m_plugin.session(), fileWithPicturesOf(0xFFFFFFFF));
    ASSERT_EQ(clip.open().result, imNoErr);
    ASSERT_EQ(clip.info(0).result, imNoErr);
    const std::vector<imFrameFormat> formats = {{0, 0, PrPixelFormat_VUYX_4444_8u}};
    hostkit::AsyncSession async(m_plugin.session(), clip);
    ASSERT_EQ(async.create().result, imNoErr);
    DiskFaults disk(m_library);
    for (PrTime number = 0; number < kPictures; ++number) {
        async.announce(number * kTicksPerPicture, formats);
    }
    for (PrTime number = 0; number < kPictures; ++number) {
        EXPECT_EQ(async.get(number * kTicksPerPicture, formats).result, aiUnknownError) << number;
    }
    EXPECT_EQ(async.flush(), aiNoError);
    EXPECT_EQ(async.close(), aiNoError);
    EXPECT_EQ(disk.calls(DiskCall::Read), 0);
}

}  // namespace

}  // namespace damage
