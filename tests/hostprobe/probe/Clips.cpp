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
    if (!clip) {
        complain(Sentence::UnknownPrivateData, {selectorName(selector)});
        return;
    }
    if (clip->isBusy.exchange(true)) {
        complain(Sentence::CallsOverlap, {selectorName(selector)});
        return;
    }
    m_clip = clip;
    if (!isLegal(*clip)) {
        clip->isBusy = false;
        m_clip = nullptr;
    }
}

ClipCall::~ClipCall() {
    if (m_clip) {
        m_clip->isBusy = false;
    }
}

bool ClipCall::isLegal(const Clip& clip) const {
    const bool isAboutOpening = m_selector == imOpenFile8 || m_selector == imCloseFile;
    const bool isDescription = m_selector == imGetInfo8 || m_selector == imQuietFile;
    if (clip.state == Clip::State::Closed) {
        complain(Sentence::AfterClose, {selectorName(m_selector)});
        return false;
    }
    if (clip.state == Clip::State::Quiet && !isAboutOpening) {
        complain(Sentence::WhileQuiet, {selectorName(m_selector)});
        return false;
    }
    if (clip.state == Clip::State::Open && m_selector == imOpenFile8) {
        complain(Sentence::OpenTwice);
        return false;
    }
    if (!clip.isDescribed && !isAboutOpening && !isDescription) {
        complain(Sentence::BeforeInfo, {selectorName(m_selector)});
        return false;
    }
    return true;
}

bool ClipCall::expectReference(imFileRef reference) const {
    if (m_clip && reference != m_clip->reference) {
        complain(Sentence::OtherFileReference, {selectorName(m_selector)});
        return false;
    }
    return true;
}

}  // namespace hostprobe
