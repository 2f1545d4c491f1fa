#include "importhost/validate/checks/stage/Scenario.h"

#include "importhost/validate/checks/stage/Delivered.h"

#include "hostkit/sessions/Names.h"

#include <algorithm>

namespace importhost::validate {

namespace {

constexpr csSDK_uint32 kSoundFrames = 500;
constexpr csSDK_int32 kMostStreams = 8;
constexpr std::size_t kMostFormats = 1000;

}  // namespace

std::string ScenarioStep::resultText(csSDK_int32 result) const {
    return isAsync ? hostkit::asyncResultText(result) : hostkit::resultText(result);
}

// --- Facts ------------------------------------------------------------------------------------------------------

ScenarioClip scenarioClipOf(CheckRun& run, PlayedPlugin& plugin, OpenClip& clip) {
    ScenarioClip facts;
    facts.path = clip.clip().path;
    const std::int64_t frames = clip.frameCount();
    for (const std::int64_t index : {std::int64_t{0}, frames / 2, frames - 1}) {
        facts.times.push_back(clip.timeOf(index));
    }
    const std::vector<PrPixelFormat>& offered = clip.formats();
    const std::size_t most = static_cast<std::size_t>(run.effort(1, 3));
    for (std::size_t i = 0; i < std::min(most, offered.size()); ++i) {
        facts.formats.push_back(clip.wanted(offered[i * (offered.size() - 1) / std::max<std::size_t>(most - 1, 1)]));
    }
    hostkit::ClipSession session(plugin.session(), facts.path);
    session.open();
    csSDK_int32 result = imIterateStreams;
    for (csSDK_int32 stream = 0; result == imIterateStreams && stream < kMostStreams; ++stream) {
        const auto info = session.info(stream);
        result = info.result;
        facts.channels.push_back(info->hasAudio != 0 ? hostkit::valueOf(info->audInfo.numChannels) : 0);
    }
    return facts;
}

// --- The steps --------------------------------------------------------------------------------------------------

Scenario::Scenario(PlayedPlugin& plugin, const ScenarioClip& facts)
    : m_plugin(plugin), m_facts(facts), m_clip(plugin.session(), facts.path), m_async(plugin.session(), m_clip) {
    add("opening", imOpenFile8, [this] { return StepOutcome{m_clip.open().result, 0}; });
    add("the description of stream 0", imGetInfo8, [this] { return describe(0); });
    addDescription();
    add("the first frame", imGetSourceVideo, [this] { return frame(0); });
    add("a frame amid", imGetSourceVideo, [this] { return frame(1); });
    addStreams();
    addAsyncFrames();
    addEnd();
    addStart();
}

void Scenario::add(std::string name, csSDK_int32 selector, std::function<StepOutcome()> act) {
    m_steps.push_back({std::move(name), selector, false, std::move(act)});
}

void Scenario::addAsync(std::string name, csSDK_int32 selector, std::function<StepOutcome()> act) {
    m_steps.push_back({std::move(name), selector, true, std::move(act)});
}

void Scenario::addDescription() {
    add("the list of pixel formats", imGetIndPixelFormat, [this] {
        std::vector<PrPixelFormat> formats;
        for (;;) {
            const auto answer = m_clip.pixelFormat(static_cast<csSDK_int32>(formats.size()));
            if (answer.result != imNoErr || formats.size() > kMostFormats) {
                return StepOutcome{answer.result, delivered(formats)};
            }
            formats.push_back(static_cast<PrPixelFormat>(hostkit::valueOf(answer->outPixelFormat)));
        }
    });
    add("the analysis", imAnalysis, [this] {
        const hostkit::AnalysisAnswer answer = m_clip.analysis();
        return StepOutcome{answer.result, delivered(answer)};
    });
    add("the data rate", imDataRateAnalysis, [this] {
        const hostkit::DataRateAnswer answer = m_clip.dataRate();
        return StepOutcome{resultOf(answer), delivered(answer)};
    });
}

void Scenario::addStreams() {
    for (std::size_t i = 0; i < m_facts.channels.size(); ++i) {
        const csSDK_int32 channels = m_facts.channels[i];
        if (i > 0) {
            add("the description of stream " + std::to_string(i), imGetInfo8,
                [this, i] { return describe(static_cast<csSDK_int32>(i)); });
        }
        if (channels > 0) {
            add("the channel layout of stream " + std::to_string(i), imGetAudioChannelLayout, [this] {
                const hostkit::LayoutAnswer answer = m_clip.channelLayout();
                return StepOutcome{answer.result, delivered(answer)};
            });
            add("sound of stream " + std::to_string(i), imImportAudio7, [this, channels] { return sound(channels); });
        }
    }
    if (m_facts.channels.size() > 1) {
        add("the description of stream 0 again", imGetInfo8, [this] { return describe(0); });
    }
}

void Scenario::addAsyncFrames() {
    add("an asynchronous importer", imCreateAsyncImporter, [this] { return StepOutcome{m_async.create().result, 0}; });
    addAsync("announcing a frame", aiInitiateAsyncRead, [this] { return announce(1); });
    addAsync("collecting it", aiGetFrame, [this] { return collect(1); });
    addAsync("collecting a frame that was not announced", aiGetFrame, [this] { return collect(0); });
    addAsync("announcing a frame to be dropped", aiInitiateAsyncRead, [this] { return announce(0); });
    addAsync("flushing", aiFlush, [this] { return StepOutcome{m_async.flush(), 0}; });
    addAsync("announcing the last frame", aiInitiateAsyncRead, [this] { return announce(last()); });
    addAsync("closing the asynchronous importer", aiClose, [this] { return StepOutcome{m_async.close(), 0}; });
}

void Scenario::addEnd() {
    add("quieting", imQuietFile, [this] { return StepOutcome{m_clip.quiet(), 0}; });
    add("opening it again", imOpenFile8, [this] { return StepOutcome{m_clip.open().result, 0}; });
    add("the last frame", imGetSourceVideo, [this] { return frame(last()); });
    add("closing", imCloseFile, [this] { return StepOutcome{m_clip.close(), 0}; });
    add("the shutdown", imShutdown, [this] { return StepOutcome{m_plugin.session().shutdown(), 0}; });
}

void Scenario::addStart() {
    add("the start", imInit, [this] { return StepOutcome{m_plugin.session().init().result, 0}; });
    add("the list of import formats", imGetIndFormat, [this] {
        return StepOutcome{m_plugin.session().formats().back().result, 0};
    });
    if (!m_plugin.started().formats.empty()) {
        const csSDK_int32 fileType = m_plugin.started().formats.front()->filetype;
        add("the list of subtypes", imGetSubTypeNames, [this, fileType] {
            const hostkit::SubTypesAnswer answer = m_plugin.session().subTypeNames(fileType);
            return StepOutcome{answer.result, static_cast<std::uint64_t>(answer.blockBytes)};
        });
    }
}

void Scenario::prepareAnotherTry(const ScenarioStep& failed) {
    if (failed.isAsync && m_async.isOpen()) {
        m_async.close();
        m_async.create();
    } else if (!failed.isAsync && m_clip.privateData() && failed.selector != imOpenFile8) {
        m_clip.info(m_stream);
    }
}

// --- Single calls -----------------------------------------------------------------------------------------------

StepOutcome Scenario::describe(csSDK_int32 stream) {
    m_stream = stream;
    const auto answer = m_clip.info(stream);
    return {answer.result, delivered(answer)};
}

std::vector<imFrameFormat> Scenario::formatOf(std::size_t which) const {
    return {m_facts.formats[which % m_facts.formats.size()]};
}

StepOutcome Scenario::frame(std::size_t which) {
    const hostkit::FrameAnswer answer = m_clip.frame(m_facts.times[which], formatOf(which));
    return {answer.result, delivered(answer.frame)};
}

StepOutcome Scenario::sound(csSDK_int32 channels) {
    const hostkit::AudioAnswer answer = m_clip.audio(0, kSoundFrames, channels);
    return {answer.result, delivered(answer)};
}

StepOutcome Scenario::announce(std::size_t which) {
    return {m_async.announce(m_facts.times[which], formatOf(which)).result, 0};
}

StepOutcome Scenario::collect(std::size_t which) {
    const hostkit::AsyncFrameAnswer answer = m_async.get(m_facts.times[which], formatOf(which));
    return {answer.result, delivered(answer.frame)};
}

}  // namespace importhost::validate
