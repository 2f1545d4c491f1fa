#include "importer/QuorvaneAsyncImporter.h"

#include "host/Vocabulary.h"
#include "log/Log.h"

#include <algorithm>
#include <utility>

QuorvaneAsyncImporter::QuorvaneAsyncImporter(const imStdParms* stdParms) : QuorvaneImporter(stdParms) {
    Log("QuorvaneAsyncImporter::QuorvaneAsyncImporter()");
}

QuorvaneAsyncImporter::~QuorvaneAsyncImporter() {
    Log("QuorvaneAsyncImporter::~QuorvaneAsyncImporter()");
    m_requests.clear();
    FrameMemory::freeUnused();
}

csSDK_int32 QuorvaneAsyncImporter::Initialize(const std::u16string& path, csSDK_int32 streamIndex,
                                              csSDK_int32 accessMode) {
    if (!openFile(path.c_str(), streamIndex, accessMode)) {
        return imBadFile;
    }
    const csSDK_int32 result = selectStream(streamIndex);
    if (!isSelected(result)) {
        return result;
    }
    m_suites.get();
    return imNoErr;
}

csSDK_int32 QuorvaneAsyncImporter::OnInitiateAsyncRead(const imSourceVideoRec& record) {
    const std::lock_guard lock(m_requestMutex);
    Log("----------------------");
    Log("[%s]", "OnInitiateAsyncRead");
    requireVideo();
    const std::uint32_t frameIndex = m_videoInfo->frameIndexAt(record.inFrameTime);
    Log("REQUEST: Adding: %d, frameTime: %lld", static_cast<int>(frameIndex),
        static_cast<long long>(record.inFrameTime));
    addRequest(record, frameIndex);
    Log("    %s: [%s] (%d)", "OnInitiateAsyncRead", AsyncErrorName(aiNoError), aiNoError);
    return aiNoError;
}

csSDK_int32 QuorvaneAsyncImporter::OnGetFrame(const imSourceVideoRec& record) {
    std::unique_lock lock(m_requestMutex);
    Log("----------------------");
    Log("[%s]", "OnGetFrame");
    requireVideo();
    const std::uint32_t frameIndex = m_videoInfo->frameIndexAt(record.inFrameTime);
    Log("REQUEST: Requesting: %d, frameTime: %lld", static_cast<int>(frameIndex),
        static_cast<long long>(record.inFrameTime));
    auto found = std::ranges::find_if(
        m_requests, [&](const auto& candidate) { return candidate->frameIndex == frameIndex; });
    if (found == m_requests.end()) {
        Log("REQUEST: ERROR: Frame not found: %d, frameTime: %lld", static_cast<int>(frameIndex),
            static_cast<long long>(record.inFrameTime));
        found = addRequest(record, frameIndex);
    }
    const std::unique_ptr<AsyncFrameRequest> request = std::move(*found);
    m_requests.erase(found);

    lock.unlock();   // others may announce and collect meanwhile
    const csSDK_int32 decoded = request->takeResult();
    lock.lock();

    csSDK_int32 result = aiUnknownError;
    if (record.outFrame == nullptr) {
        Log("ERROR: the host gave no outFrame");
    } else if (decoded == imNoErr) {
        *record.outFrame = request->frame.takePPix();
        Log("Decoded %d: %s", static_cast<int>(frameIndex),
            PixelFormatName(request->frame.frameFormats().at(0).inPixelFormat));
        result = aiNoError;
    }
    Log("    %s: [%s] (%d), [%s] (%d)", "OnGetFrame", AsyncErrorName(result), result, ErrorName(decoded), decoded);
    return result;
}

csSDK_int32 QuorvaneAsyncImporter::OnFlush() {
    const std::lock_guard lock(m_requestMutex);
    Log("----------------------");
    Log("[%s]", "OnFlush");
    requireVideo();
    RequestList dropped;
    dropped.swap(m_requests);
    dropped.clear();
    FrameMemory::freeUnused();   // the host has stopped
    Log("    %s: [%s] (%d)", "OnFlush", AsyncErrorName(aiNoError), aiNoError);
    return aiNoError;
}

QuorvaneAsyncImporter::RequestList::iterator QuorvaneAsyncImporter::addRequest(const imSourceVideoRec& record,
                                                                               std::uint32_t frameIndex) {
    auto request = std::make_unique<AsyncFrameRequest>(record, m_suites.get().ppix.get(), frameIndex);
    // Started first: a request without a task could only ever fail its collector.
    request->start(std::packaged_task<csSDK_int32()>([this, &frame = request->frame] { return decode(frame); }));
    return m_requests.insert(m_requests.end(), std::move(request));
}

void QuorvaneAsyncImporter::AsyncFrameRequest::start(std::packaged_task<csSDK_int32()> task) {
    m_result = task.get_future();
    m_thread = std::thread(std::move(task));
}

csSDK_int32 QuorvaneAsyncImporter::AsyncFrameRequest::takeResult() {
    join();
    return m_result.get();
}

void QuorvaneAsyncImporter::AsyncFrameRequest::join() {
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

// The body of every task. The reading of one frame overlaps the decoding of another.
csSDK_int32 QuorvaneAsyncImporter::decode(FrameRequest& frame) {
    csSDK_int32 result = m_videoInfo->LocateFrame(frame);
    if (result == imNoErr) {
        const std::lock_guard lock(m_readMutex);
        result = m_videoInfo->ReadFrame(frame);
    }
    if (result == imNoErr) {
        const std::lock_guard lock(m_decodeMutex);
        result = m_videoInfo->DecodeFrame(frame);
    }
    return result;
}
