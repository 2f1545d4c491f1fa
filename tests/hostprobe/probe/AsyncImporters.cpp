#include "probe/AsyncImporters.h"

#include "probe/CallOrder.h"
#include "probe/Complaints.h"
#include "probe/Fields.h"
#include "probe/FrameMaker.h"
#include "probe/Names.h"
#include "probe/RecordPromises.h"

#include <algorithm>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace hostprobe {

namespace {

struct AsyncImporter {
    explicit AsyncImporter(SPBasicSuite* basic) : frames(std::in_place, basic) {}

    std::optional<FrameMaker> frames;       // until the close
    int running = 0;                        // calls inside, a flush included
    bool isFlushing = false;
    bool isFlushed = false;                 // no call came since
    bool isClosed = false;
};

// Closed ones are kept, so that a late call is known as such.
std::mutex mutex;
std::vector<std::unique_ptr<AsyncImporter>> importers;

// One call for an importer, from its start to its end.
class AsyncCall {
public:
    AsyncCall(csSDK_int32 selector, void* privateData) : m_selector(selector) {
        const std::lock_guard lock(mutex);
        const auto found = std::find_if(importers.begin(), importers.end(), [=](const auto& importer) {
            return importer.get() == privateData;
        });
        if (expect(found != importers.end(), Sentence::AsyncUnknown, {asyncName(selector)}) &&
            expect(!(*found)->isClosed, Sentence::AsyncAfterClose, {asyncName(selector)})) {
            enter(**found);
        }
    }
    ~AsyncCall() {
        const std::lock_guard lock(mutex);
        if (m_importer) {
            --m_importer->running;
            m_importer->isFlushing = m_importer->isFlushing && m_selector != aiFlush;
        }
    }
    AsyncCall(const AsyncCall&) = delete;
    AsyncCall& operator=(const AsyncCall&) = delete;

    AsyncImporter* importer() const { return m_importer; }

private:
    void enter(AsyncImporter& importer) {
        const bool isFlush = m_selector == aiFlush;
        expect(!importer.isFlushing && (!isFlush || importer.running == 0), Sentence::AsyncDuringFlush);
        expect(m_selector != aiClose || importer.isFlushed, Sentence::AsyncNotFlushed);
        importer.isFlushing = importer.isFlushing || isFlush;
        importer.isFlushed = isFlush;
        importer.isClosed = m_selector == aiClose;
        ++importer.running;
        m_importer = &importer;
    }

    csSDK_int32 m_selector;
    AsyncImporter* m_importer = nullptr;
};

csSDK_int32 getFrame(const AsyncImporter& importer, void* record) {
    expectZeros("aiGetFrame", RecordKind::SourceVideo, record, hostVersion());
    switch (importer.frames->deliver("aiGetFrame", record)) {
        case FrameResult::Delivered: return aiNoError;
        case FrameResult::NoSuchFrame: return aiFrameNotFound;
        case FrameResult::Failed: break;
    }
    return aiUnknownError;
}

csSDK_int32 noteRequest(csSDK_int32 selector, const void* record) {
    const std::string call = asyncName(selector);
    const char* video = static_cast<const char*>(record) + kRequestVideo;
    expectZeros(call, RecordKind::AsyncRequest, record, hostVersion());
    expect(pointerAt(video, kVideoPrivateData) == pointerAt(record, kRequestPrivateData), Sentence::AsyncUnknown,
           {call});
    const FrameRequest request(call, video);
    return aiNoError;
}

csSDK_int32 answer(csSDK_int32 selector, AsyncImporter& importer, void* parameter) {
    switch (selector) {
        case aiInitiateAsyncRead:
        case aiCancelAsyncRead:
        case aiContinueToWaitForAsyncIO: return noteRequest(selector, parameter);
        case aiGetFrame: return getFrame(importer, parameter);
        case aiFlush:
            importer.frames->ticksPerSecond();      // suites must work on the flushing thread
            return aiNoError;
        case aiClose: importer.frames.reset(); return aiNoError;
        default: return aiUnsupported;
    }
}

csSDK_int32 asyncEntry(csSDK_int32 selector, void* parameter) {
    const RunningCall running(asyncName(selector));
    if (!running.isAdmitted() ||
        !expect(parameter, Sentence::ParameterMissing, {asyncName(selector), "the parameter"})) {
        return aiUnknownError;
    }
    const bool isPrivateData = selector == aiFlush || selector == aiClose;
    const AsyncCall call(selector, isPrivateData ? parameter : pointerAt(parameter, 0));
    return call.importer() ? answer(selector, *call.importer(), parameter) : aiUnknownError;
}

}  // namespace

void createAsyncImporter(SPBasicSuite* basic, void* record) {
    auto importer = std::make_unique<AsyncImporter>(basic);
    putAt(record, kCreationEntry, &asyncEntry);
    putAt<void*>(record, kCreationAsyncData, importer.get());
    const std::lock_guard lock(mutex);
    importers.push_back(std::move(importer));
}

void dropAsyncImporters() {
    const std::lock_guard lock(mutex);
    for (const auto& importer : importers) {
        importer->frames.reset();
    }
}

bool isAnyAsyncImporterOpen() {
    const std::lock_guard lock(mutex);
    return std::any_of(importers.begin(), importers.end(), [](const auto& importer) { return !importer->isClosed; });
}

}  // namespace hostprobe
