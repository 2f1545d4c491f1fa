// The selection of a stream and its description for the host.
#include "importer/support/ImporterTest.h"

#include "hostkit/system/Text.h"

#include <cstring>

using hostkit::Answer;
using hostkit::ClipSession;
using hostkit::HostRecord;

namespace {

class FileInfo : public ImporterTest {
protected:
    std::unique_ptr<ClipSession> opened(const std::vector<StreamSketch>& streams) {
        auto clip = std::make_unique<ClipSession>(session(), write("clip.avi", aviFile(streams)));
        EXPECT_EQ(clip->open().result, 0);
        return clip;
    }

    // Fetches stream information into a record filled with `fill`, except for the fields that the host must set.
    Answer<imFileInfoRec8> infoInto(std::uint8_t fill, const ClipSession& clip, csSDK_int32 streamIndex) {
        HostRecord<imFileInfoRec8> record(profile().recordSizes().fileInfo);
        std::memset(record.data(), fill, record.size());
        record->privatedata = clip.privateData();
        record->streamIdx = streamIndex;
        return session().exchange(imGetInfo8, std::move(record), nullptr);
    }

    StreamSketch sound() const { return audioStream({}); }
    StreamSketch badSound() const {
        return audioStream({.format = aviwriter::waveFormatEx({.channels = 1, .bitsPerSample = 20})});
    }
};

class FileInfoOfALaterHost : public FileInfo {
protected:
    hostkit::HostProfile profile() const override { return hostkit::hostProfile("editor-14"); }
};

constexpr char kVideoAndSoundFields[] =
    // has video, has audio, width, height
    "0-9 "
    // depth, subtype, field type; alpha type; pixel aspect
    "12-18 22 34-41 "
    // asynchronous reads, source video and no pulldown
    "50-61 "
    // scale to the number of sample frames, access modes
    "162-197 "
    // has data rate
    "214";

}  // namespace

// --- Results and streams ------------------------------------------------------------------------------------------

TEST_F(FileInfo, OfAFileWithoutSoundIsOnlyVideo) {
    auto clip = opened({shortVideo()});
    const auto info = clip->info(0);
    EXPECT_EQ(info.result, 0);
    EXPECT_EQ(info->hasVideo, 1);
    EXPECT_EQ(info->hasAudio, 0);
}

TEST_F(FileInfo, OfAFileWithoutSoundIsLogged) {
    auto clip = opened({shortVideo()});
    EXPECT_EQ(handlerLogOf([&] { clip->info(0); }),
              (Lines{"fileInfoRec8P->streamIdx: 0", "VideoInfo::VideoInfo()",
                     "Acquiring suite: r: 0, v: 1, n: 'Premiere PPix Creator Suite', ptr: <pointer>",
                     "Acquiring suite: r: 0, v: 6, n: 'Premiere PPix Cache Suite', ptr: <pointer>",
                     "Acquiring suite: r: 0, v: 1, n: 'Premiere PPix Suite', ptr: <pointer>",
                     "Acquiring suite: r: 0, v: 1, n: 'Premiere Time Suite', ptr: <pointer>",
                     "Acquiring suite: r: 0, v: 2, n: 'Premiere Image Processing Suite', ptr: <pointer>",
                     "Acquiring suite: r: 0, v: 1, n: 'Premiere Audio Suite', ptr: <pointer>",
                     "Compressed format info: 8 x 4, YUV 4:4:4 8 (103), Rec.601 (1), range: 1", "Decode formats:",
                     "    PrPixelFormat_VUYX_4444_8u [vuyx]", "    PrPixelFormat_VUYX_4444_8u_709 [vux7]",
                     "AudioInfo::AudioInfo()", "Avi has no audio stream", "AudioInfo::~AudioInfo()"}));
}

TEST_F(FileInfo, OfAFileWithOneSoundHasBothInOneStream) {
    auto clip = opened({shortVideo(), sound()});
    const auto info = clip->info(0);
    EXPECT_EQ(info.result, 0);
    EXPECT_EQ(info->hasVideo, 1);
    EXPECT_EQ(info->hasAudio, 1);
}

TEST_F(FileInfo, OfAFileWithThreeSoundsReturnsOneAfterAnother) {
    auto clip = opened({shortVideo(), sound(), audioStream({.length = 200}), audioStream({.length = 300})});
    const auto infos = clip->infos();
    ASSERT_EQ(infos.size(), 3u);
    EXPECT_EQ(infos[0].result, 18);
    EXPECT_EQ(infos[0]->hasVideo, 1);
    EXPECT_EQ(infos[0]->audDuration, 100);
    EXPECT_EQ(infos[1].result, 18);
    EXPECT_EQ(infos[1]->hasVideo, 0);
    EXPECT_EQ(infos[1]->audDuration, 200);
    EXPECT_EQ(infos[2].result, 19);
    EXPECT_EQ(infos[2]->hasVideo, 0);
    EXPECT_EQ(infos[2]->hasAudio, 1);
    EXPECT_EQ(infos[2]->audDuration, 300);
}

TEST_F(FileInfo, OfAFileWithOnlySoundIsRefused) {
    auto clip = opened({sound()});
    const auto info = clip->info(0);
    EXPECT_EQ(info.result, 2);
    EXPECT_EQ(hostkit::describe(info.written), "nothing");
}

TEST_F(FileInfo, OfAFileWithOnlySoundIsLogged) {
    auto clip = opened({sound()});
    EXPECT_EQ(handlerLogOf([&] { clip->info(0); }),
              (Lines{"fileInfoRec8P->streamIdx: 0", "Avi has no video stream"}));
}

TEST_F(FileInfo, OfALaterSoundNeedsNoVideo) {
    auto clip = opened({sound(), audioStream({.length = 7})});
    const auto info = clip->info(1);
    EXPECT_EQ(info.result, 19);
    EXPECT_EQ(info->audDuration, 7);
}

TEST_F(FileInfo, BeyondTheSoundsKeepsAnInvalidSound) {
    auto clip = opened({shortVideo(), sound(), sound()});
    Answer<imFileInfoRec8> info;
    EXPECT_EQ(handlerLogOf([&] { info = clip->info(5); }).at(2), "Avi invalid audio stream index: 5");
    EXPECT_EQ(info.result, 19);
    EXPECT_EQ(info->hasVideo, 0);
    EXPECT_EQ(info->hasAudio, 1);
    EXPECT_EQ(info->audInfo.numChannels, 1);
    EXPECT_EQ(info->audInfo.sampleRate, 1000.0f);
    EXPECT_EQ(info->audInfo.sampleType, 14);
    EXPECT_EQ(info->audDuration, 0);
}

TEST_F(FileInfo, WithANegativeIndexKeepsAnInvalidSound) {
    auto clip = opened({shortVideo(), sound(), sound()});
    clip->info(0);
    Answer<imFileInfoRec8> info;
    EXPECT_EQ(handlerLogOf([&] { info = clip->info(-2); }),
              (Lines{"fileInfoRec8P->streamIdx: -2", "VideoInfo::~VideoInfo()", "AudioInfo::~AudioInfo()",
                     "AudioInfo::AudioInfo()", "Avi invalid audio stream index: -2", "Audio is INVALID! Dummy:",
                     "Audio info:", "    wFormatTag:      0",
                     "    format guid:     00000000-0000-0010-8000-00aa00389b71", "    nChannels:       0",
                     "    nSamplesPerSec:  0", "    wBitsPerSample:  0", "    dwChannelMask:   0x0",
                     "    numSampleFrames: 0"}));
    EXPECT_EQ(info.result, 19);
    EXPECT_EQ(info->hasVideo, 0);
    EXPECT_EQ(info->hasAudio, 1);
}

TEST_F(FileInfo, BeyondASingleSoundKeepsAnInvalidSound) {
    auto clip = opened({shortVideo(), sound()});
    const auto info = clip->info(1);
    EXPECT_EQ(info.result, 19);
    EXPECT_EQ(info->hasAudio, 1);
    EXPECT_EQ(info->audInfo.sampleType, 14);
}

TEST_F(FileInfo, BeyondAFileWithoutSoundKeepsAnInvalidSound) {
    auto clip = opened({shortVideo()});
    const auto info = clip->info(1);
    EXPECT_EQ(info.result, 19);
    EXPECT_EQ(info->hasAudio, 1);
}

TEST_F(FileInfo, DropsAnUnusableSoundThatIsTheOnlyOne) {
    auto clip = opened({shortVideo(), badSound()});
    const auto info = clip->info(0);
    EXPECT_EQ(info.result, 0);
    EXPECT_EQ(info->hasVideo, 1);
    EXPECT_EQ(info->hasAudio, 0);
}

TEST_F(FileInfo, KeepsAnUnusableSoundThatIsOneOfTwo) {
    auto clip = opened({shortVideo(), badSound(), sound()});
    const auto info = clip->info(0);
    EXPECT_EQ(info.result, 18);
    EXPECT_EQ(info->hasAudio, 1);
    EXPECT_EQ(info->audInfo.sampleType, 14);
}

TEST_F(FileInfo, UsesTheFirstVideoOfTwo) {
    auto clip = opened({shortVideo(2, {.width = 12}), shortVideo(5, {.width = 20})});
    const auto info = clip->info(0);
    EXPECT_EQ(info.result, 0);
    EXPECT_EQ(info->vidInfo.imageWidth, 12);
}

TEST_F(FileInfo, FindsTheVideoAnywhereInTheFile) {
    auto clip = opened({sound(), shortVideo(2, {.width = 12})});
    const auto info = clip->info(0);
    EXPECT_EQ(info.result, 0);
    EXPECT_EQ(info->vidInfo.imageWidth, 12);
    EXPECT_EQ(info->hasAudio, 1);
}

TEST_F(FileInfo, SkipsStreamsThatAreNeitherVideoNorSound) {
    StreamSketch text = sound();
    text.header.type = "txts";
    auto clip = opened({text, shortVideo()});
    const auto info = clip->info(0);
    EXPECT_EQ(info.result, 0);
    EXPECT_EQ(info->hasAudio, 0);
}

TEST_F(FileInfo, OfAnotherStreamReplacesTheDescription) {
    auto clip = opened({shortVideo(), sound(), sound()});
    clip->info(0);
    const Lines lines = handlerLogOf([&] { clip->info(1); });
    EXPECT_EQ(lines.at(0), "fileInfoRec8P->streamIdx: 1");
    EXPECT_EQ(lines.at(1), "VideoInfo::~VideoInfo()");
    EXPECT_EQ(lines.at(2), "AudioInfo::~AudioInfo()");
    EXPECT_EQ(standin().counters().openInstances, 0u);
}

TEST_F(FileInfo, OfTheSameStreamAgainIsTheSame) {
    auto clip = opened({shortVideo(), sound()});
    const auto first = clip->info(0);
    const auto second = clip->info(0);
    EXPECT_EQ(std::memcmp(first.record.data(), second.record.data(), sizeof(imFileInfoRec8)), 0);
    EXPECT_EQ(standin().counters().openInstances, 1u);
}

TEST_F(FileInfo, AcquiresTheSuitesOnlyOnce) {
    auto clip = opened({shortVideo()});
    clip->info(0);
    const Lines lines = logOf([&] { clip->info(0); });
    for (const std::string& line : lines) {
        EXPECT_FALSE(line.starts_with("Acquiring suite")) << line;
    }
}

// --- Fields -------------------------------------------------------------------------------------------------------

TEST_F(FileInfo, WritesOnlyItsFieldsForVideoAndSound) {
    auto clip = opened({shortVideo(), sound()});
    EXPECT_EQ(hostkit::describe(infoInto(0xCD, *clip, 0).written), kVideoAndSoundFields);
}

TEST_F(FileInfoOfALaterHost, WritesNoMoreInTheLongerRecord) {
    auto clip = opened({shortVideo(), sound()});
    const auto info = infoInto(0xCD, *clip, 0);
    EXPECT_EQ(info.record.size(), 5376u);
    EXPECT_EQ(hostkit::describe(info.written), kVideoAndSoundFields);
}

TEST_F(FileInfo, WritesNoSoundFieldsWithoutSound) {
    auto clip = opened({shortVideo()});
    EXPECT_EQ(hostkit::describe(infoInto(0xCD, *clip, 0).written), "0-9 12-18 22 34-41 50-61 162-173 194-197 214");
}

TEST_F(FileInfo, WritesNoVideoFieldsForOnlySound) {
    auto clip = opened({shortVideo(), sound(), sound()});
    EXPECT_EQ(hostkit::describe(infoInto(0xCD, *clip, 1).written), "0-1 174-197 214");
}

TEST_F(FileInfo, WritesNothingWhenItFails) {
    auto clip = opened({sound()});
    const auto info = infoInto(0xCD, *clip, 0);
    EXPECT_EQ(info.result, 2);
    EXPECT_EQ(hostkit::describe(info.written), "nothing");
}

TEST_F(FileInfo, DescribesTheVideo) {
    auto clip = opened({shortVideo(3, {.width = 34, .height = 18, .rate = 25, .scale = 1})});
    const auto info = clip->info(0);
    EXPECT_EQ(info->vidInfo.imageWidth, 34);
    EXPECT_EQ(info->vidInfo.imageHeight, 18);
    EXPECT_EQ(info->vidInfo.fieldType, 0);
    EXPECT_EQ(info->vidInfo.pixelAspectNum, 1u);
    EXPECT_EQ(info->vidInfo.pixelAspectDen, 1u);
    EXPECT_EQ(info->vidInfo.supportsAsyncIO, 1);
    EXPECT_EQ(info->vidInfo.supportsGetSourceVideo, 1);
    EXPECT_EQ(info->vidInfo.hasPulldown, 0);
    EXPECT_EQ(info->accessModes, 4);
    EXPECT_EQ(info->hasDataRate, 1);
}

TEST_F(FileInfo, ReturnsTheDurationInUnitsOfTheScale) {
    auto clip = opened({shortVideo(100, {.rate = 30000, .scale = 1001})});
    const auto info = clip->info(0);
    EXPECT_EQ(info->vidScale, 30000);
    EXPECT_EQ(info->vidSampleSize, 1001);
    EXPECT_EQ(info->vidDuration, 100100);
}

TEST_F(FileInfo, LetsAnOverlongDurationWrapAround) {
    auto clip = opened({shortVideo(3, {.rate = 25, .scale = 0x60000000})});
    EXPECT_EQ(clip->info(0)->vidDuration, 0x20000000);
}

TEST_F(FileInfo, CountsTheFramesOfTheIndexNotOfTheHeader) {
    StreamSketch video = shortVideo(3);
    video.header.length = 1000;
    EXPECT_EQ(opened({video})->info(0)->vidDuration, 3);
}

struct TypeCase {
    std::uint32_t type;
    const char* subType;
    int depth;
    int alphaType;
};

TEST_F(FileInfo, ReturnsSubtypeDepthAndAlphaOfEachType) {
    for (const TypeCase& row :
         {TypeCase{102, "AR8Q", 32, 1}, TypeCase{101, "GR8Q", 24, 5}, TypeCase{106, "AY8Q", 32, 1},
          TypeCase{103, "4Y8Q", 24, 5}, TypeCase{104, "2Y8Q", 24, 5}, TypeCase{105, "0Y8Q", 24, 5},
          TypeCase{107, "0G8Q", 24, 5}, TypeCase{110, "AR0Q", 32, 1}, TypeCase{109, "GR0Q", 24, 5},
          TypeCase{118, "4Y0Q", 24, 5}, TypeCase{108, "2Y0Q", 24, 5}, TypeCase{115, "0G0Q", 24, 5},
          TypeCase{112, "AR2Q", 32, 1}, TypeCase{111, "GR2Q", 24, 5}, TypeCase{114, "AR4Q", 32, 1},
          TypeCase{113, "GR4Q", 24, 5}}) {
        SCOPED_TRACE(row.type);
        auto clip = opened({shortVideo(1, {.type = row.type})});
        const auto info = clip->info(0);
        EXPECT_EQ(hostkit::codeText(static_cast<csSDK_uint32>(info->vidInfo.subType)), row.subType);
        EXPECT_EQ(info->vidInfo.depth, row.depth);
        EXPECT_EQ(info->vidInfo.alphaType, row.alphaType);
    }
}

// --- Files that cannot be described -------------------------------------------------------------------------------

TEST_F(FileInfo, OfAFileThatIsNotAviLogsTheParsersText) {
    ClipSession clip(session(), write("text.avi", aviwriter::text("this is not an AVI file, not at all")));
    clip.open();
    const Lines lines = logOf([&] { EXPECT_EQ(clip.info(0).result, 2); });
    EXPECT_EQ(lines.at(5), "Failed to parse avi: AVI chunk missing");
    EXPECT_EQ(lines.back(), "    [imBadFile] (2)");
}

TEST_F(FileInfo, OfAnEmptyFileFails) {
    ClipSession clip(session(), write("empty.avi", {}));
    clip.open();
    EXPECT_EQ(handlerLogOf([&] { EXPECT_EQ(clip.info(0).result, 2); }),
              (Lines{"fileInfoRec8P->streamIdx: 0", "Failed to parse avi: riff structure is empty", ""}));
}

TEST_F(FileInfo, ThatFailsRemovesTheEarlierDescription) {
    const std::filesystem::path path = write("clip.avi", aviFile({shortVideo(), sound()}));
    auto clip = openClip(path);
    clip->quiet();
    write("clip.avi", {});
    clip->open();
    EXPECT_EQ(clip->info(0).result, 2);
    EXPECT_EQ(clip->pixelFormat(0).result, 99);
    EXPECT_EQ(clip->channelLayout().result, 99);
}

TEST_F(FileInfo, AfterQuietFailsForLackOfAFile) {
    auto clip = openClip("clip.avi", aviFile({shortVideo()}));
    clip->quiet();
    EXPECT_EQ(clip->info(0).result, 2);
}

TEST_F(FileInfo, WithoutADescriptionVideoCallsFail) {
    auto clip = opened({shortVideo()});
    EXPECT_EQ(logOf([&] { EXPECT_EQ(clip->pixelFormat(0).result, 99); }),
              (Lines{"----------------------", "[imGetIndPixelFormat] (27)", "m_filePathUtf8: '<folder>/clip.avi'",
                     "m_streamIndex:  0",
                     "FATAL: Unhandled exception during [imGetIndPixelFormat] (27): m_videoInfo is NULL"}));
}

TEST_F(FileInfo, WithoutADescriptionTheRecordIsStillLogged) {
    auto clip = opened({shortVideo()});
    const std::string missing = ": m_videoInfo is NULL";
    const std::string fatal = "FATAL: Unhandled exception during ";
    EXPECT_EQ(handlerLogOf([&] { EXPECT_EQ(clip->analysis(50).result, 99); }),
              (Lines{"buffersize: 50", fatal + "[imAnalysis] (12)" + missing}));
    EXPECT_EQ(handlerLogOf([&] { EXPECT_EQ(clip->dataRate().sizeCall.result, 99); }),
              (Lines{"buffersize: 0", fatal + "[imDataRateAnalysis] (13)" + missing}));
    EXPECT_EQ(handlerLogOf([&] {
                  EXPECT_EQ(clip->frame(0, {frameFormat(PrPixelFormat_BGRA_4444_8u)}).result, 99);
              }),
              (Lines{"outFrame: <pointer>", fatal + "[imGetSourceVideo] (47)" + missing}));
}

TEST_F(FileInfo, WithoutSoundTheChannelLayoutReportsAnError) {
    auto clip = opened({shortVideo()});
    clip->info(0);
    EXPECT_EQ(clip->channelLayout().result, 99);
    EXPECT_EQ(host().errorEvents(),
              (std::vector<hostkit::ErrorEvent>{
                  {3, "QuorvaneImporter: Internal error",
                   "FATAL: Unhandled exception during [imGetAudioChannelLayout] (64): m_audioInfo is NULL"}}));
}
