#include "importhost/validate/checks/stage/Playthrough.h"

#include "importhost/validate/checks/stage/Digest.h"

#include "hostkit/host/PixelFormatTable.h"
#include "hostkit/sessions/Names.h"

#include <algorithm>

namespace importhost::validate {

namespace {

constexpr csSDK_uint32 kSoundSamples = 1500;
constexpr std::size_t kMostFormats = 1000;

// The list as one call; its result is the one that ends it.
Answered formatsOf(hostkit::ClipSession& clip) {
    Digest digest;
    for (std::size_t index = 0;; ++index) {
        const auto answer = clip.pixelFormat(static_cast<csSDK_int32>(index));
        if (answer.result != imNoErr || index > kMostFormats) {
            return {{answer.result, digest.value()}};
        }
        digest.add(&answer->outPixelFormat, sizeof(answer->outPixelFormat));
    }
}

}  // namespace

std::string Step::resultText(csSDK_int32 result) const {
    return isAsync ? hostkit::asyncResultText(result) : hostkit::resultText(result);
}

PlayedClip playedClipOf(OpenClip& clip) {
    PlayedClip played{&clip.clip(), clip.info(), clip.formats(), {}};
    for (const auto& answer : clip.session().infos()) {
        played.streams.push_back(*answer.record);
    }
    return played;
}

// --- The steps --------------------------------------------------------------------------------------------------

Playthrough::Playthrough(PlayedPlugin& plugin, const PlayedClip& clip)
    : m_plugin(plugin), m_facts(clip), m_clip(plugin.session(), clip.clip().path), m_async(plugin.session(), m_clip) {
    add("opening", imOpenFile8, [this] { return Answered{{m_clip.open().result}}; });
    addDescription();
    // With changes of the format in between.
    addFrame(0, m_facts.formats.front());
    addFrame(lastFrame() / 2, m_facts.formats.back());
    addFrame(lastFrame(), m_facts.formats.front());
    addFrame(0, m_facts.formats.back());
    addStreams();
    addAsyncFrames();
    addEnd();
    addStart();
}

void Playthrough::add(std::string name, csSDK_int32 selector, std::function<Answered()> take, bool isAsync) {
    m_steps.push_back({std::move(name), selector, isAsync, std::move(take)});
}

void Playthrough::addInfo(csSDK_int32 stream, const std::string& when) {
    add("the description of stream " + std::to_string(stream) + when, imGetInfo8, [this, stream] {
        m_stream = stream;
        return Answered{outcomeOf(m_clip.info(stream))};
    });
}

void Playthrough::addDescription() {
    addInfo(0);
    add("the list of pixel formats", imGetIndPixelFormat, [this] { return validate::formatsOf(m_clip); });
    add("the analysis", imAnalysis, [this] { return Answered{outcomeOf(m_clip.analysis())}; });
    add("the data rate", imDataRateAnalysis, [this] { return Answered{outcomeOf(m_clip.dataRate())}; });
}

void Playthrough::addFrame(std::int64_t index, PrPixelFormat format) {
    add("frame " + std::to_string(index) + " in " + std::string(hostkit::pixelFormatName(format)), imGetSourceVideo,
        [this, index, format] { return Answered{outcomeOf(m_clip.frame(timeOf(index), formatsOf(format)))}; });
}

void Playthrough::addStreams() {
    for (std::size_t i = 0; i < m_facts.streams.size(); ++i) {
        const imFileInfoRec8& info = m_facts.streams[i];
        const csSDK_int32 channels = info.audInfo.numChannels;
        const PrAudioSample end = info.audDuration;
        const std::string stream = " of stream " + std::to_string(i);
        if (i > 0) {
            addInfo(static_cast<csSDK_int32>(i));
        }
        if (info.hasAudio == 0 || channels <= 0 || end <= 0) {
            continue;
        }
        add("the channel layout" + stream, imGetAudioChannelLayout,
            [this] { return Answered{outcomeOf(m_clip.channelLayout())}; });
        for (const PrAudioSample position : {PrAudioSample{0}, end / 2, end - std::min<PrAudioSample>(end, 700)}) {
            add("sound" + stream + " at " + std::to_string(position), imImportAudio7, [this, position, channels] {
                hostkit::AudioAnswer answer = m_clip.audio(position, kSoundSamples, channels);
                const Outcome outcome = outcomeOf(answer);
                return Answered{outcome, std::move(answer.channels)};
            });
        }
    }
    if (m_facts.streams.size() > 1) {
        addInfo(0, " again");
    }
}

// Announced ahead and collected in another order, one collected without having been announced, and two dropped.
void Playthrough::addAsyncFrames() {
    const auto announce = [this](std::int64_t index, PrPixelFormat format, const std::string& why = "") {
        add("announcing frame " + std::to_string(index) + why, aiInitiateAsyncRead, [this, index, format] {
            return Answered{{m_async.announce(timeOf(index), formatsOf(format)).result}};
        }, true);
    };
    const auto collect = [this](std::int64_t index, PrPixelFormat format, const std::string& why = "") {
        add("collecting frame " + std::to_string(index) + why, aiGetFrame,
            [this, index, format] { return Answered{outcomeOf(m_async.get(timeOf(index), formatsOf(format)))}; }, true);
    };
    const PrPixelFormat one = m_facts.formats.front();
    const PrPixelFormat other = m_facts.formats.back();
    add("making an asynchronous importer", imCreateAsyncImporter,
        [this] { return Answered{{m_async.create().result}}; });
    announce(0, one);
    announce(lastFrame(), other);
    collect(lastFrame(), other);
    collect(0, one);
    collect(0, one, ", which is not announced");
    announce(0, one, ", to be dropped by a flush");
    add("flushing", aiFlush, [this] { return Answered{{m_async.flush()}}; }, true);
    announce(lastFrame(), other, ", to be dropped by the close");
    add("closing the asynchronous importer", aiClose, [this] { return Answered{{m_async.close()}}; }, true);
}

void Playthrough::addEnd() {
    add("quieting", imQuietFile, [this] { return Answered{{m_clip.quiet()}}; });
    add("opening again", imOpenFile8, [this] { return Answered{{m_clip.open().result}}; });
    addFrame(lastFrame() / 3, m_facts.formats.front());
    add("closing", imCloseFile, [this] { return Answered{{m_clip.close()}}; });
    add("the shutdown", imShutdown, [this] { return Answered{{m_plugin.session().shutdown()}}; });
}

void Playthrough::addStart() {
    add("the start", imInit, [this] { return Answered{{m_plugin.session().init().result}}; });
    add("the list of import formats", imGetIndFormat,
        [this] { return Answered{{m_plugin.session().formats().back().result}}; });
    if (!m_plugin.started().formats.empty()) {
        const csSDK_int32 fileType = m_plugin.started().formats.front()->filetype;
        add("the list of subtypes", imGetSubTypeNames, [this, fileType] {
            const hostkit::SubTypesAnswer answer = m_plugin.session().subTypeNames(fileType);
            return Answered{{answer.result, static_cast<std::uint64_t>(answer.blockBytes)}};
        });
    }
}

PrTime Playthrough::timeOf(std::int64_t index) const {
    return hostkit::timeOfFrame(m_facts.info, index, m_plugin.host().profile().ticksPerSecond);
}

std::vector<imFrameFormat> Playthrough::formatsOf(PrPixelFormat format) const {
    const imImageInfoRec& video = m_facts.info.vidInfo;
    return {{video.imageWidth, video.imageHeight, static_cast<csSDK_uint32>(format)}};
}

// --- Playing ----------------------------------------------------------------------------------------------------

bool Playthrough::canTake(const Step& step) const {
    const bool needsNothing = step.selector == imOpenFile8 || step.selector == imShutdown ||
                              step.selector == imInit || step.selector == imGetIndFormat ||
                              step.selector == imGetSubTypeNames;
    return step.isAsync ? m_async.isOpen() : needsNothing || m_clip.privateData() != nullptr;
}

Answers Playthrough::takeAll() {
    Answers answers;
    for (const Step& step : m_steps) {
        answers.push_back(canTake(step) ? step.take() : Answered());
    }
    return answers;
}

void Playthrough::prepareAnotherTry(const Step& failed) {
    if (failed.isAsync && m_async.isOpen()) {
        m_async.close();
        m_async.create();
    } else if (!failed.isAsync && m_clip.privateData() && failed.selector != imOpenFile8) {
        m_clip.info(m_stream);
    }
}

bool expectUsual(CheckRun& run, const std::string& what, const Step& step, const Outcome& found, const Outcome& usual) {
    return run.expectEqual(what, step.resultText(found.result), step.resultText(usual.result)) &&
           run.expect(found.digest == usual.digest, what + " is not what it was before");
}

namespace {

void expectLegal(CheckRun& run, const Step& step, const Answered& found, const Answered& usual,
                 const Disturbance& disturbance) {
    const std::string answer = step.name + ": " + step.resultText(found.result);
    if (found.result != usual.result) {
        run.expect(disturbance.mayAnswer(step, found.result), answer + " is not the answer to this failure");
    } else if (found != usual) {
        run.expect(disturbance.mayDiffer(step) && breaksOffIntoSilence(usual, found),
                   answer + " with other content than before");
    }
}

}  // namespace

int playDisturbed(PlayedPlugin& plugin, const PlayedClip& clip, const Disturbance& disturbance) {
    CheckRun& run = plugin.run();
    run.step(disturbance.name);
    Playthrough play(plugin, clip);
    disturbance.begin();
    int before = 0;
    for (std::size_t i = 0; i < play.steps().size(); ++i) {
        const Step& step = play.steps()[i];
        if (!play.canTake(step)) {
            continue;
        }
        // Frames are decoded after they were announced: what struck since the importer was made may concern them all.
        before = step.isAsync ? before : disturbance.happened();
        const Answered found = step.take();
        const bool wasStruck = disturbance.happened() != before || (disturbance.lasts && before > 0);
        if (!wasStruck) {
            expectUsual(run, step.name, step, found, clip.usual[i]);
            continue;
        }
        expectLegal(run, step, found, clip.usual[i], disturbance);
        // A description, or an asynchronous importer, that was struck may know less of the file than there is.
        const bool isDescription = !step.isAsync && step.selector == imGetInfo8;
        if (!disturbance.lasts && (isDescription || found != clip.usual[i])) {
            if (step.isAsync) {
                play.prepareAnotherTry(step);
            }
            expectUsual(run, step.name + ", asked for again", step, step.take(), clip.usual[i]);
        }
    }
    const int struck = disturbance.happened();
    disturbance.end();
    return struck;
}

void playWell(PlayedPlugin& plugin, const PlayedClip& clip, const std::string& name) {
    const auto nothing = [] {};
    playDisturbed(plugin, clip, {name, nothing, [] { return 0; }, nothing, {}});
}

void forPlayedClips(PlayedPlugin& plugin, std::size_t most, const std::function<void(const PlayedClip& clip)>& look) {
    CheckRun& run = plugin.run();
    std::size_t looked = 0;
    for (const Clip& clip : run.clips()) {
        if (looked > 0 && looked < most && !run.hasTime()) {
            run.step("");
            run.note("stopped before " + clip.name + ": half of the time has passed");
            break;
        }
        // What can be had of a damaged file may depend on the very read that fails.
        if (looked == most || clip.kind == ClipKind::Damaged) {
            continue;
        }
        run.step(clip.name);
        PlayedClip played;
        {
            OpenClip open(plugin, clip);
            if (!open.has(Need::Pictures)) {
                continue;
            }
            played = playedClipOf(open);
        }
        played.usual = Playthrough(plugin, played).takeAll();
        ++looked;
        look(played);
    }
    run.step("");
    if (looked == 0) {
        run.skip("no file with pictures that the plug-in opens");
    }
}

bool breaksOffIntoSilence(const Answered& usual, const Answered& found) {
    if (usual.sound.size() != found.sound.size()) {
        return false;
    }
    for (std::size_t channel = 0; channel < usual.sound.size(); ++channel) {
        const std::vector<float>& right = usual.sound[channel];
        const std::vector<float>& heard = found.sound[channel];
        const auto broken = std::mismatch(right.begin(), right.end(), heard.begin(), heard.end()).second;
        // Silence of 8-bit sound is its lowest value.
        const bool isSilent = broken == heard.end() || std::all_of(broken + 1, heard.end(), [&](float sample) {
                                  return sample == heard.back() && (sample == 0.0f || sample == -1.0f);
                              });
        if (!isSilent) {
            return false;
        }
    }
    return true;
}

}  // namespace importhost::validate
