// What a desk chooses, and how it judges. The actions are in DeskActions.cpp.
#include "importhost/validate/checks/state/Desk.h"

#include "hostkit/host/PixelFormatTable.h"
#include "hostkit/sessions/Names.h"

#include <algorithm>
#include <iterator>

namespace importhost::validate {

namespace {

std::string wishText(const FrameWish& wish) {
    return "frame " + std::to_string(wish.frame) + " in " +
           std::string(hostkit::pixelFormatName(wish.format.inPixelFormat)) + " at " +
           std::to_string(wish.format.inFrameWidth) + " x " + std::to_string(wish.format.inFrameHeight);
}

}  // namespace

Desk::Desk(CheckRun& run, PlayedPlugin& plugin, std::vector<KnownFile>& files, Refusals* refusals)
    : m_run(run), m_plugin(plugin), m_files(files), m_refusals(refusals) {}

void Desk::act() { (this->*choose())(); }

void Desk::leave() {
    if (m_async) {
        closeAsync();
    }
    if (m_state.file != ClipState::File::Closed) {
        close();
    }
}

// --- Choosing ---------------------------------------------------------------------------------------------------

Desk::Action Desk::choose() {
    std::vector<Action> actions = {&Desk::senseless};
    const auto add = [&actions](int weight, Action action) {
        actions.insert(actions.end(), static_cast<std::size_t>(weight), action);
    };
    if (m_async) {
        add(5, &Desk::announce);
        add(5, &Desk::collect);
        add(1, &Desk::flush);
        add(1, &Desk::closeAsync);
    }
    switch (m_state.file) {
        case ClipState::File::Closed: add(20, &Desk::openSome); break;
        case ClipState::File::Quiet:
            add(8, &Desk::openAgain);
            add(1, &Desk::close);
            break;
        case ClipState::File::Open:
            add(m_state.hasVideo ? 2 : 8, &Desk::describe);
            add(2, &Desk::formats);
            add(8, &Desk::frame);
            add(4, &Desk::sound);
            add(1, &Desk::layout);
            add(1, &Desk::analyse);
            add(m_async ? 0 : 3, &Desk::createAsync);
            add(1, &Desk::quiet);
            // A file that nobody can import is soon left alone.
            add(m_file->formats().empty() ? 8 : 1, &Desk::close);
            break;
    }
    return actions[m_run.below(actions.size())];
}

// Mostly one of a few frames that there are, at the clip's size, so that the same is asked for often; now and then
// others.
FrameWish Desk::someFrame() {
    const imFileInfoRec8& info = m_file->streams().front().info;
    const std::int64_t count = hostkit::frameCount(info);
    FrameWish wish;
    const std::int64_t usual[] = {0, 1, 2, count / 2, count - 1};
    const std::int64_t last = std::max<std::int64_t>(count - 1, 0);
    wish.frame = std::clamp<std::int64_t>(usual[m_run.below(std::size(usual))], 0, last);
    if (m_run.below(12) == 0) {
        wish.frame = m_run.below(2) == 0 ? count + static_cast<std::int64_t>(m_run.below(5)) : -3;
    }
    const std::vector<PrPixelFormat>& formats = m_file->formats();
    wish.format = {info.vidInfo.imageWidth, info.vidInfo.imageHeight,
                   static_cast<csSDK_uint32>(m_run.below(2) == 0 ? formats.front() : formats.back())};
    switch (m_run.below(20)) {
        case 0: wish.format.inFrameWidth += 1; break;
        case 1: wish.format.inFrameHeight = 0; break;
        case 2: wish.format.inPixelFormat = PrPixelFormat_BGRA_4444_32f; break;
        default: break;
    }
    return wish;
}

imFileInfoRec8 Desk::currentInfo() const { return m_file->streams()[*m_state.stream].info; }

PrTime Desk::timeOf(std::int64_t frame) const {
    return hostkit::timeOfFrame(m_file->streams().front().info, frame, m_plugin.host().profile().ticksPerSecond);
}

// --- Refusing ---------------------------------------------------------------------------------------------------

std::string Desk::whileRefusing(Suffering suffering, const std::function<void()>& call) {
    if (!m_refusals || m_run.below(3) != 0) {
        call();
        return "";
    }
    m_beforeRefusals();
    std::string refusal = m_refusals->begin(suffering);
    call();
    m_struck += m_refusals->end();
    return refusal;
}

// --- Judging ----------------------------------------------------------------------------------------------------

std::string Desk::where() const {
    std::string text = m_file ? m_file->clip().name : "no clip";
    if (m_state.stream) {
        text.append(", described by stream ").append(std::to_string(*m_state.stream));
    }
    return text;
}

void Desk::expectResult(const std::string& what, csSDK_int32 found, csSDK_int32 wanted) {
    m_run.expectResult(where() + ": " + what, found, wanted);
}

void Desk::expectRemembered(const std::string& what, const Outcome& found) {
    expectUsual(m_run, where() + ": " + what, found, m_file->remembered(what, found));
}

void Desk::expectFrame(const FrameWish& wish, const Outcome& found, const std::string& when) {
    m_file->rememberFrame(wish, found);
    expectUsual(m_run, where() + ": " + wishText(wish) + when, found, *m_file->frame(wish));
}

void Desk::expectRefused(const std::string& what, csSDK_int32 found, std::initializer_list<csSDK_int32> legal,
                         const std::string& refusal) {
    m_run.expect(std::find(legal.begin(), legal.end(), found) != legal.end(),
                 where() + ": " + what + " while " + refusal + ": " + hostkit::resultText(found) +
                     " is not an answer to that");
}

Outcome Desk::askForFrame(const FrameWish& wish) {
    return outcomeOf(m_clip->frame(timeOf(wish.frame), {wish.format}));
}

}  // namespace importhost::validate
