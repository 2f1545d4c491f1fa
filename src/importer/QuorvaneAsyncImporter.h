// Frames ahead of time: the host announces frames, each is read and decoded at once on a thread of its own, and the
// host collects them later. A complete importer with its own file and decoder, independent of the one it was made
// for; the host owns it and ends it through its entry function.
#pragma once

#include "codec/FrameRequest.h"
#include "importer/QuorvaneImporter.h"
#include "sdk/SdkAsyncImporter.h"

#include <atomic>
#include <cstdint>
#include <future>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

class QuorvaneAsyncImporter : public QuorvaneImporter {
public:
    explicit QuorvaneAsyncImporter(const imStdParms* stdParms);

    // Waits for running decodes; frames that were not collected are disposed.
    ~QuorvaneAsyncImporter() override;

    // Opens the file for itself and selects the stream; gives 0 or the failing step's result. A stream index that the
    // selection rejects is no failure.
    csSDK_int32 Initialize(const std::u16string& path, csSDK_int32 streamIndex, csSDK_int32 accessMode);

    // The handlers of the host's asynchronous selectors; each gives an aiResult, and throws std::logic_error when no
    // video stream is selected. Any threads.
    // Starts the frame's decode.
    csSDK_int32 OnInitiateAsyncRead(const imSourceVideoRec& record);
    // Waits for the frame, decoding it now if it was not announced, and hands it to the host. Throws what the decode
    // threw.
    csSDK_int32 OnGetFrame(const imSourceVideoRec& record);
    // Drops every frame that was not collected, once its decode has ended.
    csSDK_int32 OnFlush();

    // A call of the entry function inside an importer.
    class Call;

private:
    // One announced frame and its task. The task's thread is joined by whoever takes the result or destroys the
    // request. std::async would do, but some runtimes run its tasks in a pool, whose thread may still be in this module
    // when the result is there, and a host that unloads the module then would crash.
    class AsyncFrameRequest {
    public:
        AsyncFrameRequest(const imSourceVideoRec& record, const PrSDKPPixSuite* ppixSuite, std::uint32_t index)
            : frame(record, ppixSuite), frameIndex(index) {}
        ~AsyncFrameRequest() { join(); }

        AsyncFrameRequest(const AsyncFrameRequest&) = delete;
        AsyncFrameRequest& operator=(const AsyncFrameRequest&) = delete;

        // Runs the task on a thread of its own. Throws std::system_error when there is none. Once only.
        void start(std::packaged_task<csSDK_int32()> task);

        // Waits for the task; gives its result, or throws what it threw. Once only, after `start`.
        csSDK_int32 takeResult();

        FrameRequest frame;
        const std::uint32_t frameIndex;

    private:
        void join();

        std::future<csSDK_int32> m_result;
        std::thread m_thread;
    };
    using RequestList = std::list<std::unique_ptr<AsyncFrameRequest>>;

    RequestList::iterator addRequest(const imSourceVideoRec& record, std::uint32_t frameIndex);
    csSDK_int32 decode(FrameRequest& frame);

    // The list; held by each handler but while it waits for a decode. So it is held while the host disposes a frame
    // that nobody collected, or is asked again for a suite that it refused: an exception of a host of another compiler,
    // which no destructor of ours sees, would leave this importer locked there.
    std::mutex m_requestMutex;
    std::mutex m_readMutex;      // one task reads from the file
    std::mutex m_decodeMutex;    // one task decodes, and has the host make the frame buffer
    RequestList m_requests;      // in the order of their announcements

    std::atomic<int> m_callsInside{0};   // calls of the entry function that have not returned yet
};

// The entry function that the host gets with the object: an aiResult, or 99 for an exception, which is logged.
csSDK_int32 xAsyncImportEntry(csSDK_int32 selector, void* parameter);
