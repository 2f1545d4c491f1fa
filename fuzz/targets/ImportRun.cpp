#include "targets/ImportRun.h"

#include "sdk/SdkImporterCodes.h"
#include "support/Expect.h"
#include "support/FaultyDisk.h"
#include "support/HeapWatch.h"
#include "support/ParserChecks.h"

#include <algorithm>
#include <string>

namespace fuzz {

namespace {

// Limits per input, so that none takes seconds.
constexpr int kMostSteps = 48;
constexpr int kMostParses = 10;
constexpr int kMostFrames = 24;
constexpr csSDK_int64 kMostPixels = 1 << 15;
constexpr csSDK_uint32 kMostSoundFrames = 2048;

// Memory that a frame may take: pixels, planes and compressed bytes, for a picture of at most kMostPixels.
constexpr std::size_t kMemoryOfAFrame = std::size_t{16} << 20;

constexpr csSDK_int32 kUnhandled = 99;

// The steps of an editor when a clip is imported and played for a moment.
constexpr Step kUsualSteps[] = {
    Step::AllInfos, Step::Info, Step::PixelFormats, Step::ChannelLayout, Step::Analysis, Step::DataRate,
    Step::NextFrame, Step::NextFrame, Step::NextSound, Step::NextSound, Step::AsyncCreate, Step::Announce,
    Step::Announce, Step::Collect, Step::Collect, Step::Flush, Step::AsyncClose, Step::Quiet, Step::Open,
    Step::Info, Step::NextFrame, Step::NextSound,
};

}  // namespace

ImportRun::ImportRun(hostkit::ImporterSession& session, ByteView file, csSDK_int32 access, Script& script)
    : m_session(session), m_file(file), m_script(script), m_clip(session, kFuzzedName, {.access = access}),
      m_parsesLeft(kMostParses), m_framesLeft(kMostFrames) {}

void ImportRun::run() {
    const bool isUsual = m_script.atEnd();
    open();
    if (isUsual) {
        for (const Step step : kUsualSteps) {
            doStep(step, m_script);
        }
    }
    for (int steps = 0; steps < kMostSteps && !m_script.atEnd(); ++steps) {
        doStep(static_cast<Step>(m_script.below(static_cast<std::uint32_t>(Step::Count))), m_script);
    }
    m_async.reset();
    expectResult("close", m_clip.close(), {imNoErr});
}

void ImportRun::doStep(Step step, Script& script) {
    if (step >= Step::CutFile) {
        doFaultStep(step, script);
    } else if (step == Step::Open) {
        open();
    } else if (m_clip.privateData() == nullptr) {
        return;   // the editor asks nothing of a clip that never opened
    } else if (step >= Step::AsyncCreate) {
        doAsyncStep(step, script);
    } else {
        doClipStep(step, script);
    }
}

void ImportRun::doClipStep(Step step, Script& script) {
    switch (step) {
    case Step::Info: info(script.below(6)); break;
    case Step::AllInfos: allInfos(); break;
    case Step::PixelFormats: m_offered = m_clip.pixelFormats(); break;
    case Step::ChannelLayout: channelLayout(); break;
    case Step::Analysis: analysis(script); break;
    case Step::DataRate: dataRate(); break;
    case Step::Frame: frame(script); break;
    case Step::NextFrame:
        if (takesFrames()) {
            const PrTime time = hostkit::timeOfFrame(m_described.info, m_nextFrame++,
                                                     m_session.host().profile().ticksPerSecond);
            frameAt(time, {{0, 0, static_cast<csSDK_uint32>(m_offered.front())}}, false);
        }
        break;
    case Step::Sound: {
        const auto high = static_cast<std::int8_t>(script.next8());
        const auto position = static_cast<PrAudioSample>(high) << (script.next8() % 56);
        sound(position, script.next16() % kMostSoundFrames);
        break;
    }
    case Step::NextSound: sound(-1, 700); break;
    case Step::Quiet:
        expectResult("quiet", m_clip.quiet(), {imNoErr});
        m_isOpen = false;
        break;
    default: break;
    }
}

void ImportRun::open() {
    const auto answer = m_clip.open();
    expectResult("open", answer.result, {imNoErr, imBadFile});
    m_isOpen = answer.result == imNoErr;
}

csSDK_int32 ImportRun::info(csSDK_int32 streamIndex) {
    if (m_parsesLeft-- <= 0) {
        return imNoErr;
    }
    const bool isAlone = m_async == nullptr;   // otherwise its tasks take memory too
    HeapWatch::start();
    const auto answer = m_clip.info(streamIndex);
    if (isAlone) {
        checkDescriptionMemory(HeapWatch::peak(), m_file.size());
    }
    expectResult("info", answer.result, {imNoErr, imBadFile, imOtherErr, imIterateStreams, imBadStreamIndex});
    m_described = {};
    m_offered.clear();
    if (answer.result == imNoErr || answer.result == imIterateStreams || answer.result == imBadStreamIndex) {
        m_described = {answer->hasVideo != 0, answer->hasAudio != 0, answer->vidInfo.imageWidth,
                       answer->vidInfo.imageHeight, answer->audInfo.numChannels, *answer.record.get()};
        expect(m_described.video == (streamIndex == 0), "the first stream has no video, or another one has");
        expect(m_described.channels >= 0 && m_described.channels <= kMaxAudioChannelCount, "too many channels");
    }
    if (m_described.video) {
        m_offered = m_clip.pixelFormats();
        expect(!m_offered.empty(), "no pixel format is offered for a picture");
    }
    return answer.result;
}

void ImportRun::allInfos() {
    for (csSDK_int32 stream = 0; info(stream) == imIterateStreams; ++stream) {
    }
}

void ImportRun::channelLayout() {
    const auto answer = m_clip.channelLayout();
    expectResult("channel layout", answer.result, {imNoErr, imUnsupported}, !m_described.audio);
}

void ImportRun::analysis(Script& script) {
    const csSDK_int32 size = script.next8() * 8;
    const auto answer = m_clip.analysis(size);
    expectResult("analysis", answer.result, {imNoErr}, !m_described.video);
    if (answer.result == imNoErr && size > 0) {
        expect(std::find(answer.buffer.begin(), answer.buffer.end(), '\0') != answer.buffer.end(),
               "the analysis text is not terminated");
    }
}

void ImportRun::dataRate() {
    const auto answer = m_clip.dataRate();
    expectResult("data rate size", answer.sizeCall.result, {imNoErr}, !m_described.video);
    if (answer.dataCall) {
        expectResult("data rate", answer.dataCall->result, {imNoErr});
    }
}

bool ImportRun::takesFrames() const {
    const csSDK_int64 pixels = static_cast<csSDK_int64>(m_described.width) * m_described.height;
    return m_described.video && !m_offered.empty() && pixels <= kMostPixels;
}

void ImportRun::frame(Script& script) {
    const PrTime time = someTime(script);
    bool mayBeUnknown = false;
    const std::vector<imFrameFormat> formats = someFormats(script, mayBeUnknown);
    frameAt(time, formats, mayBeUnknown);
}

void ImportRun::frameAt(PrTime time, const std::vector<imFrameFormat>& formats, bool mayBeUnknown) {
    if (m_framesLeft-- <= 0) {
        return;
    }
    HeapWatch::start();
    const hostkit::FrameAnswer answer = m_clip.frame(time, formats);
    expect(m_async != nullptr || HeapWatch::peak() <= kMemoryOfAFrame, "a frame took too much memory");
    expectResult("frame", answer.result, {imNoErr, imOtherErr, imBadCompression, imFrameNotFound, imFileReadFailed},
                 !m_described.video || mayBeUnknown);
    if (answer.result == imNoErr) {
        const auto view = answer.frame.view();
        expect(view && view->width() == m_described.width && view->height() == m_described.height,
               "a frame's size is not the described one");
    }
}

void ImportRun::sound(PrAudioSample position, csSDK_uint32 frames) {
    const hostkit::AudioAnswer answer = m_clip.audio(position, frames, m_described.channels);
    expectResult("sound", answer.result, {imNoErr}, !m_described.audio);
}

PrTime ImportRun::someTime(Script& script) {
    const std::uint8_t kind = script.next8();
    if (kind < 200) {
        return hostkit::timeOfFrame(m_described.info, kind % 16, m_session.host().profile().ticksPerSecond);
    }
    const std::uint64_t high = script.next32();
    return static_cast<PrTime>(high << 32 | script.next32());
}

// Mostly one of the offered formats, in the picture's size. A picture too large to be decoded here is never asked for
// in its own size.
std::vector<imFrameFormat> ImportRun::someFormats(Script& script, bool& mayBeUnknown) {
    std::vector<imFrameFormat> formats;
    const std::uint8_t kind = script.next8();
    for (unsigned count = kind % 4 == 3 ? script.below(4) : 1; count > 0; --count) {
        imFrameFormat format = {m_described.width, m_described.height, 0};
        if (!takesFrames()) {
            format = {m_described.width + 1, 1, 0};
        } else if ((kind & 4) != 0) {
            format = {0, 0, 0};
        } else if ((kind & 8) != 0) {
            format.inFrameHeight += static_cast<csSDK_int32>(script.next8()) - 128;
            // Zero would mean the picture's own size.
        }
        if (m_offered.empty() || (kind & 0xE0) == 0xE0) {
            format.inPixelFormat = script.next32();
            mayBeUnknown = true;
        } else {
            format.inPixelFormat = static_cast<csSDK_uint32>(m_offered[script.below(
                static_cast<std::uint32_t>(m_offered.size()))]);
        }
        formats.push_back(format);
    }
    return formats;
}

void ImportRun::expectResult(const char* call, csSDK_int32 result, std::initializer_list<csSDK_int32> allowed,
                             bool mayFail) const {
    const bool known = std::find(allowed.begin(), allowed.end(), result) != allowed.end();
    if (!known && (result != kUnhandled || !(mayFail || m_hostFails))) {
        fail(std::string(call) + " returned " + std::to_string(result));
    }
}

}  // namespace fuzz
