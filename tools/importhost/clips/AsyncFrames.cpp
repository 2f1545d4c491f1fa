#include "importhost/clips/AsyncFrames.h"

#include "hostkit/sessions/Names.h"

namespace importhost {

using hostkit::asyncResultText;

AsyncFrames::AsyncFrames(Editor& editor, VideoClip& clip, PrPixelFormat format)
    : m_clip(clip), m_format(format), m_async(editor.session(), clip.session()) {
    if (!clip.info().vidInfo.supportsAsyncIO) {
        throw ClipFailure("The plug-in does not offer asynchronous frames for this clip.");
    }
    create();
}

void AsyncFrames::create() {
    const csSDK_int32 created = m_async.create().result;
    if (!m_async.isOpen()) {
        throw ClipFailure("The plug-in gave no asynchronous importer: " + hostkit::resultText(created) + ".");
    }
}

// The editor drops pending frames, closes the asynchronous importer and quiets the file; on return, it opens the file
// again with the same private data.
void AsyncFrames::refocus() {
    if (const csSDK_int32 flushed = m_async.flush(); flushed != aiNoError) {
        throw ClipFailure("Announced frames could not be dropped: " + asyncResultText(flushed) + ".");
    }
    if (const csSDK_int32 closed = m_async.close(); closed != aiNoError) {
        throw ClipFailure("The asynchronous importer could not be closed: " + asyncResultText(closed) + ".");
    }
    m_clip.session().quiet();
    if (const csSDK_int32 opened = m_clip.session().open().result; opened != imNoErr) {
        throw ClipFailure("The clip could not be opened again: " + hostkit::resultText(opened) + ".");
    }
    create();
}

AsyncFrames::Arrived AsyncFrames::collect(std::int64_t index) {
    hostkit::AsyncFrameAnswer answer = m_async.get(m_clip.timeOf(index), {m_clip.wanted(m_format)});
    Arrived arrived{std::move(answer.frame), {}};
    if (const auto refused = m_refused.extract(index)) {
        arrived = {hostkit::HostFrame(), refused.mapped()};
    } else if (!arrived.frame) {
        arrived.failure = asyncResultText(answer.result);
    }
    return arrived;
}

void AsyncFrames::run(const std::vector<std::int64_t>& indexes, const std::vector<AsyncStep>& plan,
                      const Deliver& deliver) {
    std::map<std::size_t, Arrived> early;
    std::size_t next = 0;
    for (const AsyncStep& step : plan) {
        if (step.kind == AsyncStep::Kind::Refocus) {
            refocus();
            continue;
        }
        const std::int64_t index = indexes.at(step.position);
        if (step.kind == AsyncStep::Kind::Announce) {
            const csSDK_int32 announced = m_async.announce(m_clip.timeOf(index), {m_clip.wanted(m_format)}).result;
            if (announced != aiNoError) {
                m_refused[index] = "announcing it gave " + asyncResultText(announced);
            }
            continue;
        }
        early.insert_or_assign(step.position, collect(index));
        for (auto arrived = early.extract(next); arrived; arrived = early.extract(++next)) {
            deliver(indexes[next], arrived.mapped().frame, arrived.mapped().failure);
        }
    }
}

}  // namespace importhost
