// An asynchronous importer, as the editor handles it: create, announce, collect, flush, close.
//
// Every call returns the plug-in's raw result with the record as it came back; pointers in a record that came back lead
// nowhere any more. Lists of formats are overwritten as soon as a call returns, because they are the host's again.
// A write to a record, and a frame that does not fit its result, become Host::problems(), and so does an importer that
// was never closed.
//
// All calls may come from many threads at once; only create() and close() must be alone, and the session itself may
// end only when no call runs any more.
#pragma once

#include "hostkit/sessions/ClipSession.h"
#include "sdk/SdkAsyncImporter.h"

#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace hostkit {

// "aiUnknownError (2)"; for a value without a name "unknown (77)".
std::string asyncResultText(csSDK_int32 result);

// One call of the asynchronous entry, in the order in which calls ended.
struct AsyncCall {
    csSDK_int32 selector = 0;
    std::optional<PrTime> time;             // of calls about a frame
    csSDK_int32 result = 0;

    friend bool operator==(const AsyncCall&, const AsyncCall&) = default;
};

struct AsyncFrameAnswer {
    csSDK_int32 result = 0;
    HostFrame frame;                        // empty unless the plug-in delivered one
    HostRecord<imSourceVideoRec> record;
};

class AsyncSession {
public:
    // Both must outlive create(), and the importer's host the session. Creates nothing yet.
    AsyncSession(ImporterSession& session, const ClipSession& clip) : m_session(session), m_clip(clip) {}
    ~AsyncSession();                        // flushes and closes what is still open
    AsyncSession(const AsyncSession&) = delete;
    AsyncSession& operator=(const AsyncSession&) = delete;

    // Asks the clip for an asynchronous importer. Throws std::logic_error while one is open.
    Answer<imAsyncImporterCreationRec> create();
    bool isOpen() const { return m_entry != nullptr; }

    // `time` in host ticks; formats in order of preference. These and the following need an open importer; without
    // one they throw std::logic_error.
    Answer<aiAsyncRequest> announce(PrTime time, const std::vector<imFrameFormat>& formats);
    Answer<aiAsyncRequest> cancel(PrTime time, const std::vector<imFrameFormat>& formats);
    AsyncFrameAnswer get(PrTime time, const std::vector<imFrameFormat>& formats);
    csSDK_int32 flush();

    // Sent once; 0 without a call when nothing is open. The editor always flushes first.
    csSDK_int32 close();

    // One call of the entry as it is. Returns kEscapedException if an exception leaves it.
    csSDK_int32 call(csSDK_int32 selector, void* parameter, std::optional<PrTime> time = std::nullopt);

    std::vector<AsyncCall> calls() const;   // of all importers that this session created

private:
    csSDK_int32 callEntry(csSDK_int32 selector, void* parameter);
    Answer<aiAsyncRequest> request(csSDK_int32 selector, PrTime time, std::vector<imFrameFormat> formats);
    void fill(imSourceVideoRec& record, PrTime time, std::vector<imFrameFormat>& formats, PPixHand* outFrame) const;
    void expectUntouched(const RecordStorage& record, csSDK_int32 selector);

    ImporterSession& m_session;
    const ClipSession& m_clip;
    csSDK_int32 (*m_entry)(csSDK_int32 selector, void* parameter) = nullptr;
    void* m_privateData = nullptr;
    mutable std::mutex m_mutex;
    std::vector<AsyncCall> m_calls;
};

}  // namespace hostkit
