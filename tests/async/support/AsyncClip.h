// An asynchronous importer, used as the editor does: announce, collect, flush and close through its entry function.
//
// The host's records are valid only during a call: lists of formats are overwritten as soon as it returns. If the
// plug-in writes to a record, or returns a frame from a call that failed, Host::violations() says so.
#pragma once

#include "hostkit/sessions/ClipSession.h"
#include "sdk/SdkAsyncImporter.h"

#include <vector>

class AsyncClip {
public:
    // Takes over the importer that imCreateAsyncImporter created; the host must outlive the clip.
    AsyncClip(hostkit::Host& host, const imAsyncImporterCreationRec& created)
        : m_host(host), m_entry(created.outAsyncEntry), m_privateData(created.outAsyncPrivateData) {}
    ~AsyncClip() { close(); }
    AsyncClip(const AsyncClip&) = delete;
    AsyncClip& operator=(const AsyncClip&) = delete;

    // From any thread, until close. `time` is in host ticks.
    csSDK_int32 announce(PrTime time, const std::vector<imFrameFormat>& formats);
    hostkit::FrameAnswer collect(PrTime time, const std::vector<imFrameFormat>& formats);
    csSDK_int32 flush() { return call(aiFlush, m_privateData); }

    // Calls the entry once, as the editor does; later calls only return 0.
    csSDK_int32 close();

    // Calls the entry directly.
    csSDK_int32 call(csSDK_int32 selector, void* parameter) { return m_entry(selector, parameter); }

    void* privateData() const { return m_privateData; }

private:
    void fill(imSourceVideoRec& record, PrTime time, std::vector<imFrameFormat>& formats, PPixHand* outFrame) const;
    void expectUntouched(const hostkit::RecordStorage& record);

    hostkit::Host& m_host;
    csSDK_int32 (*m_entry)(csSDK_int32 selector, void* parameter);
    void* m_privateData;
};
