#include "importhost/validate/checks/stage/Playthrough.h"

#include "importhost/validate/checks/stage/Delivered.h"

#include "hostkit/host/PixelFormatTable.h"
#include "hostkit/sessions/Names.h"

#include <algorithm>
#include <cstring>

namespace importhost::validate {

namespace {

constexpr csSDK_uint32 kSoundSamples = 1500;

bool isAsync(Asked asked) {
    return asked == Asked::AsyncAnnounce || asked == Asked::AsyncFrame || asked == Asked::AsyncFlush ||
           asked == Asked::AsyncClose;
}

}  // namespace

bool Answered::operator==(const Answered& other) const {
    const auto sameBits = [](const std::vector<float>& a, const std::vector<float>& b) {
        return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0;
    };
    return asked == other.asked && result == other.result && digest == other.digest &&
           std::equal(sound.begin(), sound.end(), other.sound.begin(), other.sound.end(), sameBits);
}

std::string resultText(const Answered& answer) {
    return isAsync(answer.asked) ? hostkit::asyncResultText(answer.result) : hostkit::resultText(answer.result);
}

// --- The steps --------------------------------------------------------------------------------------------------

Playthrough::~Playthrough() { start(); }

void Playthrough::start() { m_clip = nullptr; }

bool Playthrough::look() {
    m_clip = std::make_unique<hostkit::ClipSession>(m_plugin.session(), m_path);
    if (m_clip->open().result != imNoErr) {
        return false;
    }
    m_streams = static_cast<csSDK_int32>(m_clip->infos().size());
    const auto info = m_clip->info(0);
    if (!hostkit::isDescribed(info.result) || !info->hasVideo || hostkit::frameCount(*info.record.get()) == 0) {
        return false;
    }
    m_info = *info.record.get();
    m_formats = m_clip->pixelFormats();
    return !m_formats.empty();
}

bool Playthrough::learn() {
    const bool serves = look();
    start();
    if (!serves) {
        return false;
    }
    makeSteps();
    for (const Step& step : m_steps) {
        m_usual.push_back(step.take());
    }
    start();
    return true;
}

void Playthrough::addStep(std::string name, std::function<Answers()> take, bool canBeRepeated) {
    m_steps.push_back({std::move(name), canBeRepeated, std::move(take)});
}

void Playthrough::makeSteps() {
    const auto frameStep = [this](const Wanted& wanted) {
        addStep(nameOf(wanted), [this, wanted]() -> Answers {
            const auto answer = m_clip->frame(timeOf(wanted.frame), formatsOf(wanted));
            return {frameOf(wanted, answer.result, answer.frame, Asked::Frame)};
        });
    };
    addStep("opening", [this] { return openStep(); });
    addStep("description", [this] { return describeStep(); });
    for (const Wanted& wanted : wantedFrames()) {
        frameStep(wanted);
    }
    if (m_info.hasAudio && m_info.audInfo.numChannels > 0 && m_info.audDuration > 0) {
        const PrAudioSample end = m_info.audDuration;
        for (const PrAudioSample position : {PrAudioSample{0}, end / 2, end - std::min<PrAudioSample>(end, 700)}) {
            addStep("sound at " + std::to_string(position),
                    [this, position] { return soundStep(position, kSoundSamples); });
        }
    }
    addStep("asynchronous importer", [this] { return asyncStep(); });
    addStep("quiet", [this]() -> Answers { return {{Asked::Quiet, "quiet", m_clip->quiet()}}; }, false);
    addStep("opening again", [this] { return openStep(); });
    frameStep(wantedFrames().front());
    addStep("closing", [this]() -> Answers { return {{Asked::Close, "closing", m_clip->close()}}; }, false);
}

// First, middle and last, with changes of the format in between.
std::vector<Playthrough::Wanted> Playthrough::wantedFrames() const {
    const std::int64_t last = hostkit::frameCount(m_info) - 1;
    const PrPixelFormat one = m_formats.front();
    const PrPixelFormat other = m_formats.back();
    return {{0, one}, {last / 2, one}, {last, other}, {0, other}, {last / 3, one}};
}

std::string Playthrough::nameOf(const Wanted& wanted) {
    return "frame " + std::to_string(wanted.frame) + " in " + std::string(hostkit::pixelFormatName(wanted.format));
}

Answers Playthrough::openStep() {
    if (!m_clip) {
        m_clip = std::make_unique<hostkit::ClipSession>(m_plugin.session(), m_path);
    }
    return {{Asked::Open, "opening", m_clip->open().result}};
}

// Stream 0 last: frames and sound are asked for with the description of the stream that was described last.
Answers Playthrough::describeStep() {
    Answers answers;
    for (csSDK_int32 stream = m_streams; stream-- > 0;) {
        const auto info = m_clip->info(stream);
        answers.push_back({Asked::Info, "description of stream " + std::to_string(stream), info.result,
                           delivered(info)});
    }
    if (!hostkit::isDescribed(answers.back().result)) {
        return answers;
    }
    const std::vector<PrPixelFormat> formats = m_clip->pixelFormats();
    answers.push_back({Asked::Formats, "pixel formats", formats.empty() ? imBadFormatIndex : imNoErr,
                       delivered(formats)});
    const auto analysis = m_clip->analysis();
    answers.push_back({Asked::Analysis, "analysis text", analysis.result, delivered(analysis)});
    const auto rate = m_clip->dataRate();
    answers.push_back({Asked::DataRate, "data rates", resultOf(rate), delivered(rate)});
    return answers;
}

Answers Playthrough::soundStep(PrAudioSample position, csSDK_uint32 size) {
    auto answer = m_clip->audio(position, size, m_info.audInfo.numChannels);
    Answered answered{Asked::Sound, "sound at " + std::to_string(position), answer.result};
    answered.sound = std::move(answer.channels);
    return {std::move(answered)};
}

// Announced ahead and collected in another order, one collected without having been announced, and two dropped.
Answers Playthrough::asyncStep() {
    hostkit::AsyncSession async(m_plugin.session(), *m_clip);
    Answers answers = {{Asked::AsyncCreate, "making an asynchronous importer", async.create().result}};
    if (!async.isOpen()) {
        return answers;
    }
    const auto announce = [&](const Wanted& wanted) {
        answers.push_back({Asked::AsyncAnnounce, "announcing frame " + std::to_string(wanted.frame),
                           async.announce(timeOf(wanted.frame), formatsOf(wanted)).result});
    };
    const auto collect = [&](const Wanted& wanted) {
        const auto answer = async.get(timeOf(wanted.frame), formatsOf(wanted));
        answers.push_back(frameOf(wanted, answer.result, answer.frame, Asked::AsyncFrame));
    };
    const std::vector<Wanted> wanted = {
        {0, m_formats.front()}, {hostkit::frameCount(m_info) - 1, m_formats.back()}};
    announce(wanted[0]);
    announce(wanted[1]);
    collect(wanted[1]);
    collect(wanted[0]);
    collect(wanted[0]);
    announce(wanted[0]);
    answers.push_back({Asked::AsyncFlush, "flushing", async.flush()});
    announce(wanted[1]);
    answers.push_back({Asked::AsyncClose, "closing the asynchronous importer", async.close()});
    return answers;
}

Answered Playthrough::frameOf(const Wanted& wanted, csSDK_int32 result, const hostkit::HostFrame& frame,
                           Asked asked) const {
    return {asked, nameOf(wanted), result, delivered(frame)};
}

std::vector<imFrameFormat> Playthrough::formatsOf(const Wanted& wanted) const {
    return {{m_info.vidInfo.imageWidth, m_info.vidInfo.imageHeight, static_cast<csSDK_uint32>(wanted.format)}};
}

PrTime Playthrough::timeOf(std::int64_t frame) const {
    return hostkit::timeOfFrame(m_info, frame, m_plugin.host().profile().ticksPerSecond);
}

// --- Playing ----------------------------------------------------------------------------------------------------

namespace {

std::string wantedText(const Answered& usual, const Answered& found) {
    return usual.result == found.result ? "other content than before" : "wanted " + resultText(usual);
}

void expectUsual(CheckRun& run, const Answers& usual, const Answers& found, const std::string& when) {
    for (std::size_t i = 0; i < std::min(usual.size(), found.size()); ++i) {
        if (!(usual[i] == found[i])) {
            run.fail(found[i].name + when + ": found " + resultText(found[i]) + ", " + wantedText(usual[i], found[i]));
            return;
        }
    }
    run.expectEqual("the number of answers" + when, found.size(), usual.size());
}

void expectLegal(CheckRun& run, const Answers& usual, const Answers& found, const Disturbance& disturbance) {
    for (std::size_t i = 0; i < std::min(usual.size(), found.size()); ++i) {
        if (usual[i] == found[i]) {
            continue;
        }
        if (found[i].result == usual[i].result) {
            run.expect(disturbance.mayDiffer.contains(found[i].asked) &&
                           (found[i].asked != Asked::Sound || breaksOffIntoSilence(usual[i], found[i])),
                       found[i].name + ": " + resultText(found[i]) + " with other content than before");
        } else {
            run.expect(disturbance.mayAnswer(found[i].asked, found[i].result),
                       found[i].name + ": " + resultText(found[i]) + " is not the answer to this failure");
        }
    }
}

}  // namespace

int playDisturbed(CheckRun& run, Playthrough& play, const Disturbance& disturbance) {
    run.step(disturbance.name);
    play.start();
    disturbance.begin();
    for (std::size_t i = 0; i < play.steps().size(); ++i) {
        const Step& step = play.steps()[i];
        const int before = disturbance.happened();
        const Answers found = step.take();
        const bool wasStruck = disturbance.happened() != before || (disturbance.lasts && before > 0);
        if (!wasStruck) {
            expectUsual(run, play.usual(i), found, "");
            continue;
        }
        expectLegal(run, play.usual(i), found, disturbance);
        if (!disturbance.lasts && step.canBeRepeated && found != play.usual(i)) {
            expectUsual(run, play.usual(i), step.take(), ", asked for again");
        }
    }
    const int struck = disturbance.happened();
    disturbance.end();
    play.start();
    return struck;
}

void playWell(CheckRun& run, Playthrough& play, const std::string& name) {
    Disturbance none;
    none.name = name;
    none.begin = none.end = [] {};
    none.happened = [] { return 0; };
    playDisturbed(run, play, none);
}

void forPlaythroughs(CheckRun& run, PlayedPlugin& plugin, std::size_t most,
                  const std::function<void(Playthrough& play, const std::string& clip)>& look) {
    std::size_t looked = 0;
    for (const Clip& clip : run.clips()) {
        if (looked > 0 && looked < most && !run.hasTime()) {
            run.step("");
            run.note("stopped before " + clip.name + ": half of the time has passed");
            break;
        }
        run.step(clip.name);
        Playthrough play(plugin, clip.path);
        // What can be had of a damaged file may hang on the very read that fails.
        if (looked < most && clip.kind != ClipKind::Damaged && play.learn()) {
            ++looked;
            look(play, clip.name);
        }
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
