// An asynchronous importer, as the editor handles it: announce, collect, flush and close through its entry function.
//
// Records are the host's for the length of a call only: lists of formats are overwritten as soon as a call returns. A
// record that the plug-in writes to, and a frame given by a call that failed, become Host::violations().
#pragma once

#include "hostkit/sessions/ClipSession.h"
#include "sdk/SdkAsyncImporter.h"

#include <vector>

class AsyncClip {
public:
    // Takes over what imCreateAsyncImporter gave; the host must outlive the clip.
    AsyncClip(hostkit::Host& host, const imAsyncImporterCreationRec& created)
        : m_host(host), m_entry(created.outAsyncEntry), m_privateData(created.outAsyncPrivateData) {}
    ~AsyncClip() { close(); }
    AsyncClip(const AsyncClip&) = delete;
    AsyncClip& operator=(const AsyncClip&) = delete;

    // Any threads, until close. `time` in host ticks.
    csSDK_int32 announce(PrTime time, const std::vector<imFrameFormat>& formats);
    hostkit::FrameAnswer collect(PrTime time, const std::vector<imFrameFormat>& formats);
    csSDK_int32 flush() { return call(aiFlush, m_privateData); }

    // Sent once, as the editor does; 0 without a call after that.
    csSDK_int32 close();

    // One call of the entry as it is.
    csSDK_int32 call(csSDK_int32 selector, void* parameter) { return m_entry(selector, parameter); }

    void* privateData() const { return m_privateData; }

private:
    void fill(imSourceVideoRec& record, PrTime time, std::vector<imFrameFormat>& formats, PPixHand* outFrame) const;
    void expectUntouched(const hostkit::RecordStorage& record);

    hostkit::Host& m_host;
    csSDK_int32 (*m_entry)(csSDK_int32 selector, void* parameter);
    void* m_privateData;
};
