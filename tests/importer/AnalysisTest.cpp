// The analysis text and the data rates.
#include "importer/support/ImporterTest.h"

#include "hostkit/host/GuardedBlock.h"

#include <algorithm>
#include <cstring>

using hostkit::ClipSession;
using hostkit::HostRecord;

namespace {

// Two frames of a known size, which are never decoded.
VideoSketch sizedVideo() {
    return {.width = 8, .height = 4, .rate = 30000, .scale = 1001, .frames = {Bytes(1000), Bytes(48)}};
}

constexpr char kVideoText[] =
    "\n"
    "Video stream:\n"
    "Size: 0.00 MiB\n"
    "Codec: 'QVAN', Quorvane 8-bit YUV 4:4:4\n"
    "Frame size: 8 x 4\n"
    "Frame count: 2\n"
    "Frame rate: 29.970\n";

class Analysis : public ImporterTest {
protected:
    std::unique_ptr<ClipSession> clipOf(const std::vector<StreamSketch>& streams) {
        return openClip("clip.avi", aviFile(streams));
    }
    std::unique_ptr<ClipSession> videoClip() { return clipOf({videoStream(sizedVideo())}); }
};

}  // namespace

TEST_F(Analysis, DescribesTheVideo) {
    const auto answer = videoClip()->analysis();
    EXPECT_EQ(answer.result, 0);
    EXPECT_EQ(answer.text, kVideoText);
}

TEST_F(Analysis, DescribesEachSoundByItsStreamNumber) {
    auto clip = clipOf({videoStream(sizedVideo()),
                        audioStream({.chunks = {Bytes(3 * 1024 * 1024 / 2)}}),
                        audioStream({.format = aviwriter::waveFormatEx({.formatTag = 3,
                                                                         .channels = 6,
                                                                         .samplesPerSec = 96000,
                                                                         .bitsPerSample = 32})})});
    EXPECT_EQ(clip->analysis().text, std::string(kVideoText) +
                                         "Audio stream 1:\n"
                                         "Size: 1.50 MiB\n"
                                         "Channels: 2\n"
                                         "Rate: 48000 Hz\n"
                                         "Type: 16 bit\n"
                                         "\n"
                                         "Audio stream 2:\n"
                                         "Size: 0.00 MiB\n"
                                         "Channels: 6\n"
                                         "Rate: 96000 Hz\n"
                                         "Type: 32 bit float\n"
                                         "\n");
}

TEST_F(Analysis, NamesFloatBySubFormat) {
    const Bytes format = aviwriter::waveFormatExtensible({.formatTag = 3, .bitsPerSample = 32});
    auto clip = clipOf({videoStream(sizedVideo()), audioStream({.format = format})});
    EXPECT_NE(clip->analysis().text.find("Type: 32 bit float\n"), std::string::npos);
}

TEST_F(Analysis, CountsStreamNumbersOverAllStreams) {
    auto clip = clipOf({audioStream({}), videoStream(sizedVideo()), audioStream({})});
    const std::string text = clip->analysis().text;
    EXPECT_NE(text.find("Audio stream 0:\n"), std::string::npos) << text;
    EXPECT_NE(text.find("Audio stream 2:\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("Audio stream 1:\n"), std::string::npos) << text;
}

TEST_F(Analysis, NamesTheTypesOfIntegerSamples) {
    auto clip = clipOf({videoStream(sizedVideo()),
                        audioStream({.format = aviwriter::waveFormatEx({.bitsPerSample = 8})}),
                        audioStream({.format = aviwriter::waveFormatEx({.bitsPerSample = 24})}),
                        audioStream({.format = aviwriter::waveFormatEx({.bitsPerSample = 32})})});
    const std::string text = clip->analysis().text;
    EXPECT_NE(text.find("Type: 8 bit\n"), std::string::npos) << text;
    EXPECT_NE(text.find("Type: 24 bit\n"), std::string::npos) << text;
    EXPECT_NE(text.find("Type: 32 bit\n"), std::string::npos) << text;
}

TEST_F(Analysis, OnlyMentionsAnInvalidSound) {
    auto clip = clipOf({videoStream(sizedVideo()), audioStream({.format = Bytes(3)})});
    EXPECT_EQ(clip->analysis().text, std::string(kVideoText) + "Audio stream 1:\nInvalid audio stream\n\n");
}

TEST_F(Analysis, ShowsUnprintableBytesOfTheHandlerAsNumbers) {
    VideoSketch video = sizedVideo();
    video.handler = std::string_view("Q\x01" "V\xFF", 4);
    const std::string text = clipOf({videoStream(video)})->analysis().text;
    EXPECT_NE(text.find("Codec: 'Q[1]V[255]', "), std::string::npos) << text;
}

TEST_F(Analysis, LogsTheBufferAndTheSoundsItDescribes) {
    auto clip = clipOf({videoStream(sizedVideo()), audioStream({}), audioStream({.format = Bytes(3)})});
    EXPECT_EQ(logOf([&] { clip->analysis(1000); }),
              (Lines{"----------------------", "[imAnalysis] (12)", "m_filePathUtf8: '<folder>/clip.avi'",
                     "m_streamIndex:  0", "buffersize: 1000", "AudioInfo::AudioInfo()", "AudioInfo::~AudioInfo()",
                     "AudioInfo::AudioInfo()", "Avi audio stream format size is too small: 3",
                     "AudioInfo::~AudioInfo()", "    [imNoErr] (0)"}));
}

TEST_F(Analysis, FillsABufferOfExactlyTheTextsSize) {
    const std::string text = kVideoText;
    const auto answer = videoClip()->analysis(static_cast<csSDK_int32>(text.size()) + 1);
    EXPECT_EQ(answer.text, text);
    EXPECT_EQ(answer.buffer.back(), '\0');
}

TEST_F(Analysis, CutsTheTextInABufferOneByteTooSmall) {
    const std::string text = kVideoText;
    const auto answer = videoClip()->analysis(static_cast<csSDK_int32>(text.size()));
    EXPECT_EQ(answer.text, text.substr(0, text.size() - 1));
    EXPECT_EQ(answer.buffer.back(), '\0');
}

TEST_F(Analysis, WritesNoMoreThanTheTextIntoALargeBuffer) {
    const std::string text = kVideoText;
    const auto answer = videoClip()->analysis(1000);
    EXPECT_EQ(std::string(answer.buffer.begin() + static_cast<std::ptrdiff_t>(text.size()) + 1, answer.buffer.end()),
              std::string(1000 - text.size() - 1, '\xCD'));
}

TEST_F(Analysis, WritesOnlyTheTerminatorIntoOneByte) {
    const auto answer = videoClip()->analysis(1);
    EXPECT_EQ(answer.result, 0);
    EXPECT_EQ(answer.buffer, std::vector<char>{'\0'});
}

TEST_F(Analysis, WritesOneCharacterIntoTwoBytes) {
    EXPECT_EQ(videoClip()->analysis(2).buffer, (std::vector<char>{'\n', '\0'}));
}

TEST_F(Analysis, WritesNothingIntoNoBytes) {
    EXPECT_EQ(videoClip()->analysis(0).result, 0);
    expectNoViolations();
}

TEST_F(Analysis, WritesNothingIntoANegativeNumberOfBytes) {
    EXPECT_EQ(videoClip()->analysis(-1).result, 0);
    EXPECT_TRUE(contains(log(), "ERROR: the host gave no buffer"));
    expectNoViolations();
}

TEST_F(Analysis, WritesNothingWithoutABuffer) {
    auto clip = videoClip();
    HostRecord<imAnalysisRec> record;
    record->privatedata = clip->privateData();
    record->buffersize = 1000;
    const auto answer = session().exchange(imAnalysis, std::move(record), nullptr);
    EXPECT_EQ(answer.result, 0);
    EXPECT_EQ(hostkit::describe(answer.written), "nothing");
    EXPECT_TRUE(contains(log(), "ERROR: the host gave no buffer"));
}

TEST_F(Analysis, LeavesTheRecordUnchanged) {
    auto clip = videoClip();
    char buffer[100];
    HostRecord<imAnalysisRec> record;
    std::memset(record.get(), 0xCD, sizeof(imAnalysisRec));
    record->privatedata = clip->privateData();
    record->buffersize = sizeof buffer;
    record->buffer = buffer;
    EXPECT_EQ(hostkit::describe(session().exchange(imAnalysis, std::move(record), nullptr).written), "nothing");
}

// --- Data rates ---------------------------------------------------------------------------------------------------

TEST_F(Analysis, RequestsEightBytesForEachFrame) {
    const auto answer = videoClip()->dataRate();
    EXPECT_EQ(answer.sizeCall.result, 0);
    EXPECT_EQ(answer.sizeCall->buffersize, 16);
    EXPECT_EQ(hostkit::describe(answer.sizeCall.written), "16");
}

TEST_F(Analysis, ReturnsDurationAndSizeOfEachFrameAsKeyFrames) {
    const auto answer = videoClip()->dataRate();
    ASSERT_EQ(answer.samples.size(), 2u);
    EXPECT_EQ(answer.samples[0].sampledur, 0x80000000u | 1001u);
    EXPECT_EQ(answer.samples[0].samplesize, 1000u);
    EXPECT_EQ(answer.samples[1].sampledur, 0x80000000u | 1001u);
    EXPECT_EQ(answer.samples[1].samplesize, 48u);
}

TEST_F(Analysis, ReportsNoOtherBytes) {
    auto clip = videoClip();
    imDataSample samples[2];
    HostRecord<imDataRateAnalysisRec> record;
    std::memset(record.get(), 0xCD, sizeof(imDataRateAnalysisRec));
    record->privatedata = clip->privateData();
    record->buffersize = sizeof samples;
    record->buffer = samples;
    const auto answer = session().exchange(imDataRateAnalysis, std::move(record), nullptr);
    EXPECT_EQ(answer->baserate, 0);
    EXPECT_EQ(hostkit::describe(answer.written), "28-31");
}

TEST_F(Analysis, LogsTheBufferOfTheDataRates) {
    auto clip = videoClip();
    EXPECT_EQ(handlerLogOf([&] { clip->dataRate(); }), (Lines{"buffersize: 0", "buffersize: 16"}));
}

TEST_F(Analysis, ReturnsASizeOfZeroForDroppedFrames) {
    VideoSketch video = sizedVideo();
    video.frames[1] = {};
    EXPECT_EQ(clipOf({videoStream(video)})->dataRate().samples.at(1).samplesize, 0u);
}

TEST_F(Analysis, FillsNoMoreSamplesThanTheBufferHolds) {
    auto clip = videoClip();
    for (const csSDK_int32 bytes : {15, 8, 7, 0, -8}) {
        hostkit::GuardedBlock buffer(sizeof(imDataSample) * 2, 0xCD);
        HostRecord<imDataRateAnalysisRec> record;
        record->privatedata = clip->privateData();
        record->buffersize = bytes;
        record->buffer = reinterpret_cast<imDataSample*>(buffer.data());
        EXPECT_EQ(session().exchange(imDataRateAnalysis, std::move(record), nullptr).result, 0);
        const std::ptrdiff_t filled = bytes >= 8 ? 8 : 0;
        EXPECT_EQ(std::count(buffer.data() + filled, buffer.data() + buffer.size(), 0xCD), 16 - filled) << bytes;
    }
}
