#include "probe/Clips.h"

#include "probe/Complaints.h"
#include "probe/Names.h"

#include <algorithm>
#include <memory>
#include <mutex>
#include <vector>

namespace hostprobe {

namespace {

std::mutex clipsMutex;
std::vector<std::unique_ptr<Clip>> clips;

Clip* find(void* privateData) {
    const std::lock_guard lock(clipsMutex);
    const auto found = std::find_if(clips.begin(), clips.end(), [=](const auto& clip) {
        return clip.get() == privateData;
    });
    return found == clips.end() ? nullptr : found->get();
}

}  // namespace

Clip* addClip() {
    const std::lock_guard lock(clipsMutex);
    return clips.emplace_back(std::make_unique<Clip>()).get();
}

bool isAnyClipOpen() {
    const std::lock_guard lock(clipsMutex);
    return std::any_of(clips.begin(), clips.end(), [](const auto& clip) {
        return clip->state != Clip::State::Closed;
    });
}

void dropClips() {
    const std::lock_guard lock(clipsMutex);
    for (const auto& clip : clips) {
        clip->frames.reset();
    }
}

ClipCall::ClipCall(csSDK_int32 selector, void* privateData) : m_selector(selector) {
    Clip* clip = find(privateData);
    if (!expect(clip, Sentence::UnknownPrivateData, {selectorName(selector)}) ||
        !expect(!clip->isBusy.exchange(true), Sentence::CallsOverlap, {selectorName(selector)})) {
        return;
    }
    if (isLegal(*clip)) {
        m_clip = clip;
    } else {
        clip->isBusy = false;
    }
}

ClipCall::ClipCall(csSDK_int32 selector, void* privateData, imFileRef reference) : ClipCall(selector, privateData) {
    expectReference(reference);
}

ClipCall::~ClipCall() {
    if (m_clip) {
        m_clip->isBusy = false;
    }
}

bool ClipCall::isLegal(const Clip& clip) const {
    const std::string name = selectorName(m_selector);
    const bool isAboutOpening = m_selector == imOpenFile8 || m_selector == imCloseFile;
    const bool isDescription = m_selector == imGetInfo8 || m_selector == imQuietFile;
    return expect(clip.state != Clip::State::Closed, Sentence::AfterClose, {name}) &&
           expect(clip.state != Clip::State::Quiet || isAboutOpening, Sentence::WhileQuiet, {name}) &&
           expect(clip.state != Clip::State::Open || m_selector != imOpenFile8, Sentence::OpenTwice) &&
           expect(clip.isDescribed || isAboutOpening || isDescription, Sentence::BeforeInfo, {name});
}

void ClipCall::expectReference(imFileRef reference) const {
    expect(!m_clip || reference == m_clip->reference, Sentence::OtherFileReference, {selectorName(m_selector)});
}

}  // namespace hostprobe
